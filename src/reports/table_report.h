// SPDX-License-Identifier: GPL-3.0-or-later
// A table of units as data, and how it is laid out on paper or on a terminal.
#pragma once

#include "calc/millesimi.h"
#include "reports/report_page.h"
#include "text/format_mask.h"

#include <QString>
#include <QStringList>

#include <algorithm>
#include <optional>
#include <vector>

namespace zelto::reports {

/// One column: its heading and where it stands. Texts begin at the position, figures end there.
struct TableColumn
{
    QString head;
    float position = 0;
    float width = 0;   ///< how wide a text may grow before it would run into its neighbour
    int decimals = -1; ///< places of the figures; -1 for texts
    const text::NumberMask* mask = nullptr; ///< of the figures; none where they are laid out apart
    bool isShare = false;                   ///< all shares together are what the total says

    [[nodiscard]] bool isText() const { return decimals < 0; }
};

/// What stands in a column: the text on paper, and the figure that it says.
struct Cell
{
    QString text = {};
    std::optional<double> value = {};
};

/// What the table says of one unit.
struct TableRow
{
    std::vector<Cell> cells; ///< one for every column
    QStringList plain = {};  ///< its line in a text file; none when the table is not about the unit

    /// Whether the table is about the unit.
    [[nodiscard]] bool applies() const
    {
        return std::ranges::any_of(cells, [](const Cell& cell) { return cell.value.has_value(); });
    }
};

/// When a table goes on to the next page.
enum class Paging {
    FullPage,      ///< as many units as the page takes
    FortyFiveUnits ///< units 1, 46, 91 … begin a page
};

/// A table with one row for every unit and a row of totals; empty cells print nothing.
struct TableReport
{
    QString name; ///< short, for a sheet or a file of its own
    QString title;
    QString note = {};       ///< a line below the title
    QString plainTitle = {}; ///< a line above those of its rows in a text file
    std::vector<TableColumn> columns;
    std::vector<TableRow> rows = {};
    std::vector<Cell> totals = {};
    std::vector<calc::Millesimi> shares = {}; ///< of the units, to divide an amount by
    Paging paging = Paging::FullPage;
};

using Tables = std::vector<TableReport>;

/// Where the text that stands in a column must end: before what stands behind it on its row.
[[nodiscard]] float endOfText(const print::PrintEngine& engine,
                              const std::vector<TableColumn>& columns,
                              const std::vector<Cell>& cells, std::size_t column);

/// The headings of the columns, and the printing of whatever stands in them on the page's row.
[[nodiscard]] std::vector<Cell> heads(const TableReport& table);
void printCells(ReportPage& page, const TableReport& table, const std::vector<Cell>& cells);

/// Prints the table from a new page on, its header and headings on every page, and ends the page. A
/// table without units prints nothing.
void printTable(ReportPage& page, const TableReport& table);

/// The table as lines of aligned columns for a terminal, title first, each ended by a line feed.
QString tableAsText(const TableReport& table);

} // namespace zelto::reports

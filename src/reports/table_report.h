// SPDX-License-Identifier: GPL-3.0-or-later
// A table of units as data, and how it is laid out on paper or on a terminal.
#pragma once

#include "reports/report_page.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace zelto::reports {

enum class Side { Left, Right };

/// One column: its heading, where it begins or ends, how wide a left-aligned text may grow before
/// it would run into its neighbour, and the places of the numbers in it.
struct TableColumn
{
    QString head;
    float position = 0;
    Side side = Side::Right;
    float width = 0;
    int decimals = -1; ///< -1 for texts

    /// The number that the cell prints; none in a text, an empty cell and one that does not apply.
    [[nodiscard]] std::optional<double> number(const QString& cell) const;
};

/// A table with one row of cells for every unit and a row of totals; empty cells print nothing.
struct TableReport
{
    QString name; ///< short, for a sheet or a file of its own
    QString title;
    QString note = {}; ///< a line below the title
    float titleWidth = 0;
    std::vector<TableColumn> columns;
    std::vector<QStringList> rows;
    QStringList totals;
};

/// When a table goes on to the next page.
enum class Paging {
    FullPage,      ///< as many units as the page takes
    FortyFiveUnits ///< units 1, 46, 91 … begin a page
};

/// Prints the table from a new page on, its header and headings on every page, and ends the page. A
/// table without units prints nothing.
void printTable(ReportPage& page, const TableReport& table, Paging paging);

/// The table as lines of aligned columns for a terminal, title first, each ended by a line feed.
QString tableAsText(const TableReport& table);

} // namespace zelto::reports

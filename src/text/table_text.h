// SPDX-License-Identifier: GPL-3.0-or-later
// A grid kept in one text: cells separated by TAB, every row ended by CR LF.
#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace zelto::text {

/// A plain table of cells, rows and columns counted from 0. Readers that count from 1 leave row 0
/// and column 0 for headers and numbers, as the grids do.
class CellTable
{
public:
    CellTable(int rows, int columns);

    [[nodiscard]] int rows() const { return m_rows; }
    [[nodiscard]] int columns() const { return m_columns; }

    /// Row and column must lie inside the table.
    [[nodiscard]] const QString& at(int row, int column) const
    {
        return m_cells[index(row, column)];
    }
    [[nodiscard]] QString& at(int row, int column) { return m_cells[index(row, column)]; }

private:
    [[nodiscard]] std::size_t index(int row, int column) const;

    int m_rows;
    int m_columns;
    std::vector<QString> m_cells;
};

/// A block of cells, first and last included.
struct CellRange
{
    int firstRow = 1;
    int lastRow = 1;
    int firstColumn = 1;
    int lastColumn = 1;
};

/// Writes the text's rows and cells into the range of the table; what does not fit is dropped and
/// cells that a line does not reach keep what they held. The range must lie inside the table.
void TextToGrid(QStringView text, CellTable& table, const CellRange& range);

/// The table text of the range. Cells must hold neither TAB nor line breaks.
QString GridToText(const CellTable& table, const CellRange& range);

/// The text as a table of cells (row, column), both counted from 1, of the given size.
CellTable TextToTable(QStringView text, int rows, int columns);

/// Lines of a table text, a last line without CR LF included; at least 1.
int rowCount(QStringView text);

} // namespace zelto::text

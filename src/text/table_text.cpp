// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/table_text.h"

#include <algorithm>

namespace zelto::text {

namespace {

QStringView withoutLeadingBlanks(QStringView text)
{
    while (text.startsWith(u' '))
        text = text.sliced(1);
    return text;
}

/// Writes one line into the cells of a row. Blanks go where they begin a cell other than the first,
/// and around the last one.
void lineToRow(QStringView line, CellTable& table, int row, const CellRange& range)
{
    for (int column = range.firstColumn; column <= range.lastColumn; ++column) {
        const qsizetype tab = line.indexOf(u'\t');
        if (tab >= 0) {
            table.at(row, column) = line.first(tab).toString();
            line = withoutLeadingBlanks(line.sliced(tab + 1));
            continue;
        }
        line = withoutLeadingBlanks(line);
        while (line.endsWith(u' '))
            line.chop(1);
        table.at(row, column) = line.toString();
        return;
    }
}

} // namespace

CellTable::CellTable(int rows, int columns)
    : m_rows(std::max(rows, 0)), m_columns(std::max(columns, 0)),
      m_cells(static_cast<std::size_t>(m_rows) * static_cast<std::size_t>(m_columns))
{}

std::size_t CellTable::index(int row, int column) const
{
    Q_ASSERT(row >= 0 && row < m_rows && column >= 0 && column < m_columns);
    return static_cast<std::size_t>(row) * static_cast<std::size_t>(m_columns) +
           static_cast<std::size_t>(column);
}

void TextToGrid(QStringView text, CellTable& table, const CellRange& range)
{
    for (int row = range.firstRow; row <= range.lastRow && !text.isEmpty(); ++row) {
        const qsizetype lineEnd = text.indexOf(u"\r\n");
        lineToRow(lineEnd < 0 ? text : text.first(lineEnd), table, row, range);
        text = lineEnd < 0 ? QStringView{} : text.sliced(lineEnd + 2);
    }
}

QString GridToText(const CellTable& table, const CellRange& range)
{
    QString text;
    for (int row = range.firstRow; row <= range.lastRow; ++row) {
        for (int column = range.firstColumn; column <= range.lastColumn; ++column) {
            if (column > range.firstColumn)
                text.append(u'\t');
            text.append(table.at(row, column));
        }
        text.append(u"\r\n");
    }
    return text;
}

CellTable TextToTable(QStringView text, int rows, int columns)
{
    CellTable table(rows + 1, columns + 1);
    TextToGrid(text, table,
               {.firstRow = 1, .lastRow = rows, .firstColumn = 1, .lastColumn = columns});
    return table;
}

int rowCount(QStringView text)
{
    const auto closed = text.count(u"\r\n");
    const bool open = !text.isEmpty() && !text.endsWith(u"\r\n");
    return std::max<int>(1, static_cast<int>(closed) + (open ? 1 : 0));
}

} // namespace zelto::text

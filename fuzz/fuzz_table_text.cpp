// SPDX-License-Identifier: GPL-3.0-or-later
// Table texts and the coefficient lists kept in them. Input: rows, columns, length of a reference,
// the reference, table text.
#include "calc/coefficient_list.h"
#include "fuzz_input.h"
#include "text/literals.h"
#include "text/table_text.h"

#include <cmath>

using namespace zelto;
using namespace zelto::fuzz;

namespace {

text::CellRange whole(const text::CellTable& table)
{
    return {.firstRow = 1,
            .lastRow = table.rows() - 1,
            .firstColumn = 1,
            .lastColumn = table.columns() - 1};
}

QString withoutBlanks(QString cell)
{
    while (cell.startsWith(u' '))
        cell.remove(0, 1);
    while (cell.endsWith(u' '))
        cell.chop(1);
    return cell;
}

/// The same cells but for blanks around them, which the last cell of a line loses.
void requireSameCells(const text::CellTable& first, const text::CellTable& second)
{
    for (int row = 0; row < first.rows(); ++row)
        for (int column = 0; column < first.columns(); ++column)
            require(withoutBlanks(first.at(row, column)) == withoutBlanks(second.at(row, column)));
}

void checkRoundTrip(const QString& content, int rows, int columns)
{
    const text::CellTable table = text::TextToTable(content, rows, columns);
    const QString written = text::GridToText(table, whole(table));
    require(text::rowCount(written) == rows);
    const text::CellTable again = text::TextToTable(written, rows, columns);
    requireSameCells(table, again);
    const QString settled = text::GridToText(again, whole(again));
    require(text::GridToText(text::TextToTable(settled, rows, columns), whole(again)) == settled);
}

/// Nothing of the text lies beyond its counted rows.
void checkRowCount(const QString& content)
{
    const int rows = text::rowCount(content);
    require(rows >= 1);
    const text::CellTable table = text::TextToTable(content, rows + 1, 1);
    require(table.at(rows + 1, 1).isEmpty());
}

/// Cells outside the range keep what they held.
void checkRange(const QString& content, int rows, int columns)
{
    text::CellTable table(rows + 2, columns + 2);
    table.at(rows + 1, columns) = table.at(rows, columns + 1) = u"held"_s;
    text::TextToGrid(content, table,
                     {.firstRow = 1, .lastRow = rows, .firstColumn = 1, .lastColumn = columns});
    require(table.at(rows + 1, columns) == u"held" && table.at(rows, columns + 1) == u"held");
    require(table.at(0, 1).isEmpty() && table.at(1, 0).isEmpty());
}

void checkCoefficients(const QString& content, std::string_view reference)
{
    calc::CoefficientList list(content);
    const double first = list.resolve(reference);
    require(std::isfinite(first));
    require(list.resolve(reference) == first);
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string_view rest = bytesOf(data, size);
    const int rows = 1 + takeByte(rest) % 32;
    const int columns = 1 + takeByte(rest) % 6;
    const auto referenceLength = static_cast<std::size_t>(takeByte(rest) % 16);
    const std::string_view reference = take(rest, referenceLength);
    const QString content = textOf(rest);
    checkRoundTrip(content, rows, columns);
    checkRowCount(content);
    checkRange(content, rows, columns);
    checkCoefficients(content, reference);
    return 0;
}

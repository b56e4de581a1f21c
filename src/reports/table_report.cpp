// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/table_report.h"

#include <algorithm>

namespace zelto::reports {

namespace {

constexpr std::size_t UnitsPerPage = 45;
/// Rows that a unit needs below it for the closing rule and the totals.
constexpr float ClosingRows = 4;
constexpr float TitleWidth = 120;

void printPageHead(ReportPage& page, const TableReport& table)
{
    page.header();
    page.nextRow();
    page.nextRow();
    page.title(table.title, TitleWidth);
    page.nextRow();
    page.note(table.note);
    page.rule();
    page.nextRow();
    page.setBold(true);
    printCells(page, table, heads(table));
    page.setBold(false);
    page.rule();
}

bool startsPage(const ReportPage& page, const TableReport& table, std::size_t unit)
{
    if (table.paging == Paging::FortyFiveUnits)
        return unit % UnitsPerPage == 0;
    return unit == 0 || page.row() + ClosingRows > page.lastUsableRow();
}

/// Width of every column in characters.
std::vector<qsizetype> columnWidths(const TableReport& table)
{
    std::vector<qsizetype> widths;
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        qsizetype width = table.columns[i].head.size();
        for (const TableRow& row : table.rows)
            width = std::max(width, row.cells[i].text.trimmed().size());
        widths.push_back(std::max(width, table.totals[i].text.size()));
    }
    return widths;
}

QString textLine(const TableReport& table, const std::vector<qsizetype>& widths,
                 const std::vector<Cell>& cells)
{
    QString line;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const QString cell = cells[i].text.trimmed();
        line += table.columns[i].isText() ? cell.leftJustified(widths[i])
                                          : cell.rightJustified(widths[i]);
        line += u"  "_s;
    }
    while (line.endsWith(u' '))
        line.chop(1);
    return line + u'\n';
}

} // namespace

float endOfText(const print::PrintEngine& engine, const std::vector<TableColumn>& columns,
                const std::vector<Cell>& cells, std::size_t column)
{
    for (std::size_t i = column + 1; i < columns.size(); ++i)
        if (!cells[i].text.isEmpty())
            return endBefore(engine, columns[i].position,
                             columns[i].isText() ? QStringView() : cells[i].text);
    return RightMargin;
}

void printCells(ReportPage& page, const TableReport& table, const std::vector<Cell>& cells)
{
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const TableColumn& column = table.columns[i];
        if (cells[i].text.isEmpty())
            continue;
        if (column.isText())
            page.fitted(column.position, column.width, cells[i].text,
                        [&] { return endOfText(page.engine(), table.columns, cells, i); });
        else
            page.right(column.position, cells[i].text);
    }
}

std::vector<Cell> heads(const TableReport& table)
{
    std::vector<Cell> cells;
    for (const TableColumn& column : table.columns)
        cells.push_back({column.head});
    return cells;
}

void printTable(ReportPage& page, const TableReport& table)
{
    if (table.rows.empty())
        return;
    for (std::size_t unit = 0; unit < table.rows.size(); ++unit) {
        if (startsPage(page, table, unit)) {
            if (unit > 0) {
                page.rule();
                page.finish();
            }
            printPageHead(page, table);
        }
        page.nextRow();
        printCells(page, table, table.rows[unit].cells);
    }
    page.rule();
    page.nextRow();
    printCells(page, table, table.totals);
    page.finish();
}

QString tableAsText(const TableReport& table)
{
    const std::vector<qsizetype> widths = columnWidths(table);
    const QString headLine = textLine(table, widths, heads(table));
    const QString ruleLine = QString(std::max<qsizetype>(headLine.size() - 1, 1), u'-') + u'\n';
    QString text = table.title.trimmed() + u'\n' +
                   (table.note.isEmpty() ? QString() : table.note + u'\n') + ruleLine + headLine +
                   ruleLine;
    for (const TableRow& row : table.rows)
        text += textLine(table, widths, row.cells);
    return text + ruleLine + textLine(table, widths, table.totals);
}

} // namespace zelto::reports

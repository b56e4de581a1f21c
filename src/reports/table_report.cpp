// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/table_report.h"

#include <algorithm>

namespace zelto::reports {

namespace {

constexpr std::size_t UnitsPerPage = 45;
/// Rows that a unit needs below it for the closing rule and the totals.
constexpr float ClosingRows = 4;
constexpr float NoteColumn = 8;

void printCells(ReportPage& page, const TableReport& table, const QStringList& cells)
{
    for (std::size_t i = 0; i < table.columns.size(); ++i) {
        const QString cell = cells.value(static_cast<qsizetype>(i));
        const TableColumn& column = table.columns[i];
        if (cell.isEmpty())
            continue;
        if (column.side == Side::Left)
            page.left(column.position, cell, column.width);
        else
            page.right(column.position, cell);
    }
}

QStringList heads(const TableReport& table)
{
    QStringList cells;
    for (const TableColumn& column : table.columns)
        cells << column.head;
    return cells;
}

void printPageHead(ReportPage& page, const TableReport& table)
{
    page.header();
    page.nextRow();
    page.nextRow();
    page.title(table.title, table.titleWidth);
    page.nextRow();
    if (!table.note.isEmpty())
        page.left(NoteColumn, table.note);
    page.rule();
    page.nextRow();
    page.setBold(true);
    printCells(page, table, heads(table));
    page.setBold(false);
    page.rule();
}

bool startsPage(const ReportPage& page, Paging paging, std::size_t unit)
{
    if (paging == Paging::FortyFiveUnits)
        return unit % UnitsPerPage == 0;
    return unit == 0 || page.row() + ClosingRows > page.lastUsableRow();
}

/// Width of every column in characters.
std::vector<qsizetype> columnWidths(const TableReport& table)
{
    std::vector<qsizetype> widths;
    for (qsizetype i = 0; i < static_cast<qsizetype>(table.columns.size()); ++i) {
        qsizetype width = table.columns[static_cast<std::size_t>(i)].head.size();
        for (const QStringList& row : table.rows)
            width = std::max(width, row.value(i).trimmed().size());
        widths.push_back(std::max(width, table.totals.value(i).size()));
    }
    return widths;
}

QString textLine(const TableReport& table, const std::vector<qsizetype>& widths,
                 const QStringList& cells)
{
    QString line;
    for (std::size_t i = 0; i < widths.size(); ++i) {
        const QString cell = cells.value(static_cast<qsizetype>(i)).trimmed();
        line += table.columns[i].side == Side::Left ? cell.leftJustified(widths[i])
                                                    : cell.rightJustified(widths[i]);
        line += u"  "_s;
    }
    while (line.endsWith(u' '))
        line.chop(1);
    return line + u'\n';
}

} // namespace

std::optional<double> TableColumn::number(const QString& cell) const
{
    if (decimals < 0)
        return std::nullopt;
    const QString digits = QString(cell).remove(u' ').replace(u',', u'.');
    bool isNumber = false;
    const double value = digits.toDouble(&isNumber);
    return isNumber ? std::optional(value) : std::nullopt;
}

void printTable(ReportPage& page, const TableReport& table, Paging paging)
{
    if (table.rows.empty())
        return;
    for (std::size_t unit = 0; unit < table.rows.size(); ++unit) {
        if (startsPage(page, paging, unit)) {
            if (unit > 0) {
                page.rule();
                page.finish();
            }
            printPageHead(page, table);
        }
        page.nextRow();
        printCells(page, table, table.rows[unit]);
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
    for (const QStringList& row : table.rows)
        text += textLine(table, widths, row);
    return text + ruleLine + textLine(table, widths, table.totals);
}

} // namespace zelto::reports

// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/grid_model.h"

#include "text/table_text.h"

#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace zelto::widgets {

GridModel::GridModel(const std::vector<GridColumn>& columns, QObject* parent)
    : QAbstractTableModel(parent), m_columns(columns.begin(), columns.end())
{}

void GridModel::setText(int row, int column, const QString& text)
{
    QString& cell = m_rows[row].cells[column];
    if (cell == text)
        return;
    cell = text;
    emit dataChanged(index(row, column), index(row, column));
}

void GridModel::setHint(int column, const QString& hint, bool unused)
{
    m_columns[column].hint = hint;
    m_columns[column].unused = unused;
    emit headerDataChanged(Qt::Horizontal, column, column);
}

void GridModel::remarksChanged()
{
    emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), {MarkRole});
}

void GridModel::setTableText(const QString& content, int leastRows)
{
    m_tableRows = std::max(leastRows, text::rowCount(content));
    const text::CellTable table = text::TextToTable(content, m_tableRows, columnCount());
    beginResetModel();
    m_rows.clear();
    for (int row = 1; row <= m_tableRows; ++row) {
        GridRow& shown = m_rows.emplace_back(GridRow{.number = QString::number(row)});
        for (int column = 1; column <= columnCount(); ++column)
            shown.cells << table.at(row, column);
    }
    endResetModel();
}

QString GridModel::tableText() const
{
    QString content;
    for (const GridRow& row : m_rows)
        content += row.cells.join(u'\t') + u"\r\n"_s;
    return content;
}

GridRow GridModel::complete(GridRow row) const
{
    row.cells.resize(m_columns.size());
    return row;
}

void GridModel::followRows(std::vector<GridRow> rows)
{
    if (rows.empty())
        rows.emplace_back();
    constexpr int MostPatches = 20; // beyond, views are quicker to look at everything anew
    if (std::abs(rowCount() - static_cast<int>(rows.size())) > MostPatches) {
        beginResetModel();
        m_rows.clear();
        for (const GridRow& row : rows)
            m_rows << complete(row);
        endResetModel();
        return;
    }
    const auto numberAt = [this](int at) { return number(at).toInt(); };
    int at = 0;
    for (const GridRow& wanted : rows) {
        const int next = wanted.number.toInt();
        while (at < rowCount() && numberAt(at) < next)
            takeOut(at);
        if (at == rowCount() || numberAt(at) > next)
            putIn(at, wanted);
        else
            for (int column = 0; column < columnCount(); ++column)
                setText(at, column, wanted.cells.value(column));
        ++at;
    }
    while (rowCount() > at)
        takeOut(rowCount() - 1);
}

int GridModel::rowOf(int number) const
{
    const auto found = std::ranges::find(m_rows, QString::number(number), &GridRow::number);
    return found == m_rows.end() ? -1 : static_cast<int>(found - m_rows.begin());
}

void GridModel::appendRow()
{
    putIn(rowCount(), {.number = QString::number(rowCount() + 1)});
}

void GridModel::insertEmptyRow(int row)
{
    putIn(row, {});
    ++m_tableRows;
    renumber();
}

void GridModel::deleteRows(int first, int last)
{
    for (int row = last; row >= first; --row, --m_tableRows)
        takeOut(row);
    if (m_rows.isEmpty())
        return insertEmptyRow(0);
    renumber();
}

void GridModel::renumber()
{
    for (int row = 0; row < rowCount(); ++row)
        m_rows[row].number = QString::number(row + 1);
    emit headerDataChanged(Qt::Vertical, 0, rowCount() - 1);
}

void GridModel::putIn(int row, const GridRow& content)
{
    beginInsertRows({}, row, row);
    m_rows.insert(row, complete(content));
    endInsertRows();
}

void GridModel::takeOut(int row)
{
    beginRemoveRows({}, row, row);
    m_rows.removeAt(row);
    endRemoveRows();
}

int GridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int GridModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_columns.size());
}

/// Screen readers pass over a cell without a text, so that empty ones say that they are.
QString GridModel::spokenText(int row, int column) const
{
    const QString& content = text(row, column);
    return u"%1, %2 %3"_s
        .arg(content.trimmed().isEmpty() ? u"vuoto"_s : content, m_columns[column].header,
             number(row))
        .trimmed();
}

QString GridModel::remark(int row, int column) const
{
    const auto& remark = m_columns[column].remark;
    return remark ? remark(text(row, column)) : QString();
}

QVariant GridModel::data(const QModelIndex& index, int role) const
{
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return text(index.row(), index.column());
    case Qt::TextAlignmentRole:
        return QVariant(column(index.column()).alignment);
    case Qt::AccessibleTextRole:
        return spokenText(index.row(), index.column());
    case Qt::ToolTipRole:
    case Qt::AccessibleDescriptionRole:
    case MarkRole:
        return remark(index.row(), index.column());
    case UnusedRole:
        return column(index.column()).unused;
    case ShadedRole:
        return index.row() < m_tableRows && index.row() % 2 == 1;
    default:
        return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool rows = orientation == Qt::Vertical;
    if (role == Qt::DisplayRole)
        return rows ? number(section) : column(section).header;
    if (role == Qt::TextAlignmentRole)
        return QVariant(rows ? Qt::AlignRight | Qt::AlignVCenter : Qt::AlignCenter);
    if (rows)
        return {};
    const GridColumn& shown = column(section);
    if (role == Qt::ToolTipRole)
        return shown.hint;
    if (role == Qt::AccessibleTextRole && !shown.hint.isEmpty())
        return u"%1, %2"_s.arg(shown.header, shown.hint);
    if (role == Qt::ForegroundRole && shown.unused)
        return QGuiApplication::palette().brush(QPalette::Disabled, QPalette::ButtonText);
    return {};
}

} // namespace zelto::widgets

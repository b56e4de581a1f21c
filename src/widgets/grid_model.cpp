// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/grid_model.h"

#include <QGuiApplication>
#include <QPalette>

#include <algorithm>
#include <utility>

namespace zelto::widgets {

GridModel::GridModel(QString numberHeader, const std::vector<GridColumn>& columns, QObject* parent)
    : QAbstractTableModel(parent), m_numberHeader(std::move(numberHeader)), m_columns(columns)
{
    m_tags.reserve(columns.size());
    for (const GridColumn& column : columns)
        m_tags.emplace_back(column.tag, column.holds);
}

const GridColumn& GridModel::column(int column) const
{
    return m_columns[static_cast<std::size_t>(column)];
}

const FieldTag& GridModel::tag(int column) const
{
    return m_tags[static_cast<std::size_t>(column)];
}

const QString& GridModel::text(int row, int column) const
{
    return this->row(row).cells[static_cast<std::size_t>(column)];
}

const QString& GridModel::number(int row) const
{
    return this->row(row).number;
}

void GridModel::setText(int row, int column, const QString& text)
{
    QString& cell = this->row(row).cells[static_cast<std::size_t>(column)];
    if (cell == text)
        return;
    cell = text;
    emit dataChanged(index(row, column), index(row, column));
}

void GridModel::setHint(int column, const QString& hint, bool unused)
{
    GridColumn& changed = m_columns[static_cast<std::size_t>(column)];
    changed.hint = hint;
    changed.unused = unused;
    emit headerDataChanged(Qt::Horizontal, column, column);
}

void GridModel::remarksChanged()
{
    emit dataChanged(index(0, 0), index(rowCount() - 1, columnCount() - 1), {MarkRole});
}

void GridModel::setRows(const text::CellTable& table, const text::CellRange& range)
{
    beginResetModel();
    m_rows.clear();
    const int count = range.lastRow - range.firstRow + 1;
    m_rows.reserve(static_cast<std::size_t>(count));
    for (int i = range.firstRow; i <= range.lastRow; ++i) {
        const int number = i - range.firstRow + 1;
        Row row{.number = QString::number(number), .shaded = number % 2 == 0};
        row.cells.reserve(m_columns.size());
        for (int column = range.firstColumn; column <= range.lastColumn; ++column)
            row.cells.push_back(table.at(i, column));
        row.cells.resize(m_columns.size());
        m_rows.push_back(std::move(row));
    }
    endResetModel();
}

QString GridModel::tableText() const
{
    text::CellTable table(rowCount() + 1, columnCount() + 1);
    for (int row = 0; row < rowCount(); ++row)
        for (int column = 0; column < columnCount(); ++column)
            table.at(row + 1, column + 1) = text(row, column);
    return text::GridToText(table, {.lastRow = rowCount(), .lastColumn = columnCount()});
}

GridModel::Row GridModel::newRow(const GridRow& content) const
{
    Row row{.number = content.number};
    row.cells.assign(content.cells.begin(), content.cells.end());
    row.cells.resize(m_columns.size());
    return row;
}

void GridModel::followRows(std::vector<GridRow> rows)
{
    if (rows.empty())
        rows.emplace_back();
    constexpr std::size_t MostPatches = 20; // beyond, views are quicker to look at everything anew
    const auto before = static_cast<std::size_t>(rowCount());
    if (std::max(before, rows.size()) - std::min(before, rows.size()) > MostPatches) {
        beginResetModel();
        m_rows.clear();
        for (const GridRow& row : rows)
            m_rows.push_back(newRow(row));
        endResetModel();
        return;
    }
    const auto numberAt = [this](int at) { return number(at).toInt(); };
    int at = 0;
    for (const GridRow& wanted : rows) {
        const int next = wanted.number.toInt();
        while (at < rowCount() && numberAt(at) < next)
            removeRow(at);
        if (at == rowCount() || numberAt(at) > next)
            insertRow(at, wanted);
        else
            for (int column = 0; column < columnCount(); ++column)
                setText(at, column, wanted.cells.value(column));
        ++at;
    }
    while (rowCount() > at)
        removeRow(rowCount() - 1);
}

int GridModel::rowOf(int number) const
{
    const QString wanted = QString::number(number);
    for (int row = 0; row < rowCount(); ++row)
        if (this->number(row) == wanted)
            return row;
    return -1;
}

void GridModel::insertRow(int row, const GridRow& content)
{
    beginInsertRows({}, row, row);
    m_rows.insert(m_rows.begin() + row, newRow(content));
    endInsertRows();
}

void GridModel::removeRow(int row)
{
    beginRemoveRows({}, row, row);
    m_rows.erase(m_rows.begin() + row);
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

/// A cell without a text would not be heard of at all.
QString GridModel::spokenText(int row, int column) const
{
    const QString& content = text(row, column);
    return u"%1, %2 %3"_s
        .arg(content.trimmed().isEmpty() ? u"vuoto"_s : content, this->column(column).header,
             number(row))
        .trimmed();
}

QString GridModel::remark(int row, int column) const
{
    const GridColumn& kind = this->column(column);
    return kind.remark ? kind.remark(text(row, column)) : QString();
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
        return row(index.row()).shaded;
    default:
        return {};
    }
}

QVariant GridModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    const bool rows = orientation == Qt::Vertical;
    if (role == Qt::DisplayRole)
        return rows ? number(section) : column(section).header;
    if (!rows && role == Qt::ToolTipRole)
        return column(section).hint;
    if (!rows && role == Qt::AccessibleTextRole && !column(section).hint.isEmpty())
        return u"%1, %2"_s.arg(column(section).header, column(section).hint);
    if (!rows && role == Qt::ForegroundRole && column(section).unused)
        return QGuiApplication::palette().brush(QPalette::Disabled, QPalette::ButtonText);
    if (role == Qt::TextAlignmentRole)
        return QVariant(rows ? Qt::AlignRight | Qt::AlignVCenter : Qt::AlignCenter);
    return {};
}

} // namespace zelto::widgets

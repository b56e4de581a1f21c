// SPDX-License-Identifier: GPL-3.0-or-later
// Blocks of cells between a grid and the clipboard.
#include "widgets/grid.h"

#include <QApplication>
#include <QClipboard>

#include <algorithm>

namespace zelto::widgets {

namespace {

/// The first cell of a block that does not fit, as the user finds it in the grid.
QString refusal(const GridModel& model, int row, int column, const QString& cell)
{
    const GridColumn& wanted = model.column(column);
    return QStringLiteral(
               "Niente è stato incollato: alla riga %1 il testo «%2» non può stare nella "
               "colonna «%3»%4.")
        .arg(QString::number(row + 1), cell, wanted.header,
             wanted.maxLength > 0 && cell.size() > wanted.maxLength
                 ? QStringLiteral(", che prende %1 caratteri").arg(wanted.maxLength)
                 : QString());
}

QString tooWide(int cells, int columns)
{
    return QStringLiteral("Niente è stato incollato: una riga ha %1 celle e qui ci sono solo %2 "
                          "colonne.")
        .arg(cells)
        .arg(columns);
}

QString tooLong(int rows, int room)
{
    return QStringLiteral("Niente è stato incollato: le righe sono %1 e qui ce ne stanno solo %2.")
        .arg(rows)
        .arg(room);
}

} // namespace

QModelIndexList Grid::selectedCells() const
{
    QModelIndexList cells = selectionModel()->selectedIndexes();
    if (cells.isEmpty() && currentIndex().isValid())
        cells = {currentIndex()};
    std::sort(cells.begin(), cells.end());
    return cells;
}

/// The smallest rectangle around the selection; cells outside it are empty.
void Grid::copySelection() const
{
    const QModelIndexList cells = selectedCells();
    if (cells.isEmpty())
        return;
    const auto [left, right] = std::minmax_element(
        cells.begin(), cells.end(),
        [](const QModelIndex& a, const QModelIndex& b) { return a.column() < b.column(); });
    const int top = cells.front().row();
    const int width = right->column() - left->column() + 1;
    const int height = cells.back().row() - top + 1;
    CellBlock block(static_cast<std::size_t>(height), QStringList(width, QString()));
    for (const QModelIndex& cell : cells)
        block[static_cast<std::size_t>(cell.row() - top)][cell.column() - left->column()] =
            m_model->text(cell.row(), cell.column());
    QApplication::clipboard()->setText(blockText(block));
}

void Grid::pasteBlock()
{
    commitEditor();
    const QString text = QApplication::clipboard()->text();
    const QModelIndexList cells = selectedCells();
    if (text.isEmpty() || cells.isEmpty())
        return;
    const CellBlock block = readBlock(text);
    if (block.size() == 1 && block.front().size() == 1 && cells.size() > 1)
        fillSelection(block.front().front());
    else
        pasteAt(cells.front(), block);
}

void Grid::fillSelection(const QString& cell)
{
    QList<CellChange> changes;
    for (const QModelIndex& place : selectedCells()) {
        const std::optional<QString> accepted = acceptedCell(*m_model, place.column(), cell);
        if (!accepted) {
            emit pasteRefused(refusal(*m_model, place.row(), place.column(), cell));
            return;
        }
        changes.append({place.row(), place.column(), {}, *accepted});
    }
    apply(changes);
}

void Grid::pasteAt(const QModelIndex& first, const CellBlock& block)
{
    const int room = m_model->rowCount() - first.row();
    const auto rows = static_cast<int>(block.size());
    if (rows > room && m_atEnd == AtEnd::Stays) {
        emit pasteRefused(tooLong(rows, room));
        return;
    }
    const int columns = m_model->columnCount() - first.column();
    QList<CellChange> changes;
    int row = first.row();
    for (const QStringList& cells : block) {
        if (cells.size() > columns) {
            emit pasteRefused(tooWide(static_cast<int>(cells.size()), columns));
            return;
        }
        int column = first.column();
        for (const QString& cell : cells) {
            const std::optional<QString> accepted = acceptedCell(*m_model, column, cell);
            if (!accepted) {
                emit pasteRefused(refusal(*m_model, row, column, cell));
                return;
            }
            changes.append({row, column++, {}, *accepted});
        }
        ++row;
    }
    while (m_model->rowCount() < row)
        appendRow();
    apply(changes);
    const auto last = m_model->index(row - 1, changes.last().column);
    selectionModel()->select({first, last}, QItemSelectionModel::ClearAndSelect);
}

void Grid::emptySelection()
{
    QList<CellChange> changes;
    for (const QModelIndex& cell : selectedCells())
        changes.append({cell.row(), cell.column(), {}, {}});
    apply(changes);
}

/// Only cells whose text becomes another count as changed.
void Grid::apply(const QList<CellChange>& changes)
{
    QList<CellChange> real;
    for (CellChange change : changes) {
        change.before = m_model->text(change.row, change.column);
        if (change.before == change.after)
            continue;
        m_model->setText(change.row, change.column, change.after);
        real.append(change);
    }
    if (!real.isEmpty())
        emit cellsChanged(real);
}

} // namespace zelto::widgets

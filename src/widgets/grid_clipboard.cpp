// SPDX-License-Identifier: GPL-3.0-or-later
// Blocks of cells between a grid and the clipboard.
#include "widgets/grid.h"

#include <QApplication>
#include <QClipboard>

#include <algorithm>
#include <utility>

namespace zelto::widgets {

namespace {

/// The first cell of a block that does not fit, as the user finds it in the grid.
QString refusal(const GridModel& model, int row, int column, const QString& cell)
{
    const GridColumn& wanted = model.column(column);
    return u"Niente è stato incollato: alla riga %1 il testo «%2» non può stare nella "
           u"colonna «%3»%4."_s.arg(QString::number(row + 1), cell, wanted.header,
                                    wanted.maxLength > 0 && cell.size() > wanted.maxLength
                                        ? u", che prende %1 caratteri"_s.arg(wanted.maxLength)
                                        : QString());
}

QString tooWide(int cells, int columns)
{
    return u"Niente è stato incollato: una riga ha %1 celle e qui ci sono solo %2 "
           u"colonne."_s.arg(cells)
               .arg(columns);
}

QString tooLong(int rows, int room)
{
    return u"Niente è stato incollato: le righe sono %1 e qui ce ne stanno solo %2."_s.arg(rows)
        .arg(room);
}

} // namespace

/// In reading order; none when no cell is current.
QModelIndexList Grid::selectedCells() const
{
    if (!currentIndex().isValid())
        return {};
    QModelIndexList cells = selectionModel()->selectedIndexes();
    if (cells.isEmpty())
        cells = {currentIndex()};
    std::sort(cells.begin(), cells.end());
    return cells;
}

void Grid::copySelection() const
{
    CellBlock block;
    for (int row = -1; const QModelIndex& cell : selectedCells()) {
        if (std::exchange(row, cell.row()) != cell.row())
            block.emplace_back();
        block.back() << m_model->text(cell.row(), cell.column());
    }
    if (!block.empty())
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
    const int room = m_mostRows() - first.row();
    const auto rows = static_cast<int>(block.size());
    if (rows > room && rows > m_model->rowCount() - first.row()) {
        emit pasteRefused(tooLong(rows, std::max(room, 0)));
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
    while (m_atEnd == AtEnd::AppendsRow && m_model->rowCount() < row)
        appendRow();
    const int start = first.row();
    const int left = first.column();
    apply(changes);
    // The owner may have added fewer rows.
    selectBlock(m_model->index(std::min(start, m_model->rowCount() - 1), left),
                m_model->index(std::min(row, m_model->rowCount()) - 1, changes.last().column));
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
        const bool listed = change.row < m_model->rowCount();
        if (listed)
            change.before = m_model->text(change.row, change.column);
        if (listed && change.before == change.after)
            continue;
        if (listed)
            m_model->setText(change.row, change.column, change.after);
        real.append(change);
    }
    if (!real.isEmpty())
        emit cellsChanged(real);
}

} // namespace zelto::widgets

// SPDX-License-Identifier: GPL-3.0-or-later
// Blocks of cells between a grid and the clipboard.
#include "widgets/field_rules.h"
#include "widgets/grid.h"

#include <QApplication>
#include <QClipboard>

#include <algorithm>
#include <utility>

namespace zelto::widgets {

namespace {

/// The first cell of a block that does not fit, as the user finds it in the grid.
QString refusal(const GridColumn& wanted, int row, const QString& cell)
{
    return u"Niente è stato incollato: alla riga %1 il testo «%2» non può stare nella "
           u"colonna «%3»%4."_s.arg(QString::number(row + 1), cell, wanted.header,
                                    wanted.maxLength > 0 && cell.size() > wanted.maxLength
                                        ? u", che prende %1 caratteri"_s.arg(wanted.maxLength)
                                        : QString());
}

/// The cell as the column takes it: a figure with a decimal point. Nothing when keys could not have
/// typed it.
std::optional<QString> accepted(const GridColumn& column, const QString& cell)
{
    std::optional<QString> wanted = pasteable(column.kind, cell);
    if (wanted && typeable(column.kind, *wanted, {}, column.maxLength) != *wanted)
        wanted.reset();
    return wanted;
}

QString tooWide(int cells, int columns)
{
    return u"Niente è stato incollato: una riga ha %1 celle e qui ci sono solo %2 "
           u"colonne."_s.arg(cells)
               .arg(columns);
}

QString tooLong(int rows, int most)
{
    return u"Niente è stato incollato: le righe sono %1 e qui ce ne stanno solo %2."_s.arg(rows)
        .arg(most);
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

/// Adds the pasted cell to the changes, or refuses the whole paste because of it.
bool Grid::accept(int row, int column, const QString& cell, QList<CellChange>& changes)
{
    const std::optional<QString> taken = accepted(m_model->column(column), cell);
    if (taken)
        changes.append({row, column, *taken});
    else
        emit pasteRefused(refusal(m_model->column(column), row, cell));
    return taken.has_value();
}

void Grid::fillSelection(const QString& cell)
{
    QList<CellChange> changes;
    for (const QModelIndex& place : selectedCells())
        if (!accept(place.row(), place.column(), cell, changes))
            return;
    apply(changes);
}

void Grid::pasteAt(const QModelIndex& first, const CellBlock& block)
{
    const int most = m_mostRows() - first.row();
    const auto rows = static_cast<int>(block.size());
    if (rows > most && rows > m_model->rowCount() - first.row()) {
        emit pasteRefused(tooLong(rows, std::max(most, 0)));
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
        for (const QString& cell : cells)
            if (!accept(row, column++, cell, changes))
                return;
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
        changes.append({cell.row(), cell.column(), {}});
    apply(changes);
}

} // namespace zelto::widgets

// SPDX-License-Identifier: GPL-3.0-or-later
// Blocks of cells between a grid and the clipboard, in the form in which spreadsheets take and give
// them.
#include "widgets/field_rules.h"
#include "widgets/grid.h"

#include <QApplication>
#include <QClipboard>

#include <algorithm>

namespace zelto::widgets {

namespace {

/// Whether the character stands at the place, which moves behind it then.
bool take(QStringView text, qsizetype& place, QChar expected)
{
    const bool found = text.mid(place).startsWith(expected);
    place += found ? 1 : 0;
    return found;
}

bool endsCell(QStringView text, qsizetype place)
{
    return place >= text.size() || u"\t\r\n"_s.contains(text[place]);
}

/// From behind the opening quote; nothing when the closing one does not end the cell.
std::optional<QString> readQuoted(QStringView text, qsizetype& place)
{
    QString cell;
    while (place < text.size()) {
        const bool quote = take(text, place, u'"');
        if (quote && !text.mid(place).startsWith(u'"'))
            return endsCell(text, place) ? std::optional(cell) : std::nullopt;
        cell += text[place++];
    }
    return std::nullopt;
}

QString readCell(QStringView text, qsizetype& place)
{
    const qsizetype start = place;
    if (take(text, place, u'"'))
        if (const std::optional<QString> quoted = readQuoted(text, place))
            return *quoted;
    place = start; // an ordinary cell, even if it begins with a quote
    while (!endsCell(text, place))
        ++place;
    return text.mid(start, place - start).toString();
}

/// Cells separated by TAB, rows ended by a line break. Cells in double quotes may hold TABs, line
/// breaks and doubled quotes. A text that ends its last row has no empty row behind it.
CellBlock readBlock(const QString& text)
{
    CellBlock block;
    for (qsizetype place = 0; place < text.size();) {
        block.emplace_back(readCell(text, place));
        while (take(text, place, u'\t'))
            block.back() += readCell(text, place);
        take(text, place, u'\r');
        take(text, place, u'\n');
    }
    return block;
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
    QString block;
    for (int row = -1; const QModelIndex& cell : selectedCells()) {
        if (row >= 0)
            block += row == cell.row() ? u'\t' : u'\n';
        block += m_model->text(cell.row(), cell.column());
        row = cell.row();
    }
    if (currentIndex().isValid())
        QApplication::clipboard()->setText(block + u'\n');
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

void Grid::refusePaste(const QString& why)
{
    emit pasteRefused(u"Niente è stato incollato: %1."_s.arg(why));
}

/// Adds the pasted cell to the changes, or refuses the whole paste because of it.
bool Grid::accept(int row, int column, const QString& cell, QList<CellChange>& changes)
{
    const GridColumn& wanted = m_model->column(column);
    const std::optional<QString> taken = accepted(wanted, cell);
    if (taken)
        changes.append({row, column, *taken});
    else
        refusePaste(u"alla riga %1 il testo «%2» non può stare nella colonna «%3»%4"_s.arg(
            QString::number(row + 1), cell, wanted.header,
            wanted.maxLength > 0 && cell.size() > wanted.maxLength
                ? u", che prende %1 caratteri"_s.arg(wanted.maxLength)
                : QString()));
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
        refusePaste(
            u"le righe sono %1 e qui ce ne stanno solo %2"_s.arg(rows).arg(std::max(most, 0)));
        return;
    }
    const int columns = m_model->columnCount() - first.column();
    QList<CellChange> changes;
    int row = first.row();
    for (const QStringList& cells : block) {
        if (cells.size() > columns) {
            refusePaste(u"una riga ha %1 celle e qui ci sono solo %2 colonne"_s.arg(cells.size())
                            .arg(columns));
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
    apply(changes);
    // The owner may have added fewer rows.
    selectBlock(m_model->index(std::min(first.row(), m_model->rowCount() - 1), first.column()),
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

// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/grid.h"

#include "widgets/grid_delegate.h"
#include "widgets/keys.h"
#include "widgets/typed_line.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>

#include <algorithm>

namespace zelto::widgets {

Grid::Grid(const QString& numberHeader, const std::vector<GridColumn>& columns, AtEnd atEnd,
           QWidget* parent)
    : QTableView(parent), m_numberHeader(numberHeader), m_model(new GridModel(columns, this)),
      m_atEnd(atEnd), m_editor(new TypedLine(FieldKind::Words, 0, viewport()))
{
    setModel(m_model);
    setItemDelegate(new GridDelegate(this));
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    setVerticalScrollMode(ScrollPerItem);
    setUpHeaders();
    buildEditor();
}

// The current cell

void Grid::setCurrentCell(int row, int column)
{
    commitEditor();
    m_from = m_model->index(row, column);
    setCurrentIndex(m_from);
}

void Grid::selectBlock(const QModelIndex& first, const QModelIndex& last)
{
    m_from = first;
    setCurrentIndex(first);
    selectionModel()->select({first, last}, QItemSelectionModel::ClearAndSelect);
}

void Grid::selectRows(int first, int last)
{
    selectBlock(m_model->index(first, 0), m_model->index(last, 0));
}

Grid::RowRange Grid::selectedRows() const
{
    const QModelIndexList cells = selectedCells();
    if (cells.isEmpty())
        return {};
    return {cells.front().row(), cells.back().row()};
}

/// Shift and the mouse held down stretch the selection from where it began. Everything else, Ctrl
/// with any key or click included, begins anew.
QItemSelectionModel::SelectionFlags Grid::selectionCommand(const QModelIndex& index,
                                                           const QEvent* event) const
{
    using Selection = QItemSelectionModel;
    const auto type = event != nullptr ? event->type() : QEvent::None;
    if (type == QEvent::MouseButtonRelease || (type != QEvent::None && !index.isValid()))
        return Selection::NoUpdate;
    if (type == QEvent::MouseButtonPress &&
        static_cast<const QMouseEvent*>(event)->button() == Qt::RightButton &&
        selectionModel()->isSelected(index))
        return Selection::NoUpdate; // the menu is about what is selected
    const auto* input = dynamic_cast<const QInputEvent*>(event);
    const bool shift = input != nullptr && input->modifiers().testFlag(Qt::ShiftModifier);
    const bool stretches = shift || type == QEvent::MouseMove;
    // Some versions of Qt ask once more, without an event, while they carry out the first answer.
    if (event != nullptr) {
        if (!stretches || !m_from.isValid())
            m_from = stretches ? currentIndex() : index;
        m_to = index;
    }
    // Cleared in any case, because Qt keeps for good what was selected before a click beside cells.
    return stretches ? Selection::Clear | Selection::SelectCurrent : Selection::ClearAndSelect;
}

void Grid::setSelection(const QRect& rect, QItemSelectionModel::SelectionFlags command)
{
    if (!command.testFlag(QItemSelectionModel::Current) || !m_from.isValid() || !m_to.isValid())
        return QTableView::setSelection(rect, command);
    const auto [top, bottom] = std::minmax({m_from.row(), m_to.row()});
    const auto [left, right] = std::minmax({m_from.column(), m_to.column()});
    const QItemSelection cells(m_model->index(top, left), m_model->index(bottom, right));
    selectionModel()->select(cells, command);
}

void Grid::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    commitEditor();
    QTableView::currentChanged(current, previous);
}

void Grid::step(bool forward)
{
    const int row = currentRow();
    const int last = m_model->columnCount() - 1;
    const int column = currentColumn() + (forward ? 1 : -1);
    if (row < 0)
        return;
    if (column >= 0 && column <= last)
        setCurrentCell(row, column);
    else if (!forward && row > 0)
        setCurrentCell(row - 1, last);
    else if (forward) {
        if (row == m_model->rowCount() - 1 && m_atEnd == AtEnd::AppendsRow)
            appendRow();
        setCurrentCell(std::min(row + 1, m_model->rowCount() - 1), 0);
    }
}

void Grid::appendRow()
{
    m_model->appendRow();
    emit rowAppended();
}

// Keys and mouse

void Grid::keyPressEvent(QKeyEvent* event)
{
    if (isEditing()) {
        event->ignore(); // what the editor had no use for
        return;
    }
    if (command(event))
        return;
    const QString typed = typedBy(*event);
    const bool control = event->modifiers() == Qt::NoModifier &&
                         (event->key() == Qt::Key_Backspace || event->key() == Qt::Key_F2);
    if (typed.isEmpty() && !control)
        QTableView::keyPressEvent(event);
    else
        editByKey(typed);
}

void Grid::editByKey(const QString& typed)
{
    MsFlexGridEdit(typed.left(1));
    if (isEditing())
        emit editorOpenedByKey();
}

/// The keys that do something to the grid itself.
bool Grid::command(QKeyEvent* event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    if (isEnter(*event) && !isChord(*event))
        step(true);
    else if (event->matches(QKeySequence::Copy))
        copySelection();
    else if (event->matches(QKeySequence::Paste))
        pasteBlock();
    else if (event->key() == Qt::Key_Delete && modifiers == Qt::NoModifier)
        emptySelection();
    else
        return false;
    return true;
}

/// Characters that are composed, as accented ones are on some keyboards.
void Grid::inputMethodEvent(QInputMethodEvent* event)
{
    if (!event->commitString().isEmpty())
        editByKey(event->commitString());
}

void Grid::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QModelIndex cell = indexAt(event->pos());
    if (event->button() != Qt::LeftButton || !cell.isValid()) {
        QTableView::mouseDoubleClickEvent(event);
        return;
    }
    setCurrentCell(cell.row(), cell.column());
    MsFlexGridEdit();
}

/// Three rows for each notch, whatever the desktop's own setting.
void Grid::wheelEvent(QWheelEvent* event)
{
    if (event->angleDelta().y() == 0) {
        QTableView::wheelEvent(event);
        return;
    }
    constexpr int TurnPerRow = QWheelEvent::DefaultDeltasPerStep / 3;
    // Fine-grained wheels and touchpads turn by parts of a row.
    m_wheelTurn += event->angleDelta().y();
    const int rows = m_wheelTurn / TurnPerRow;
    m_wheelTurn %= TurnPerRow;
    verticalScrollBar()->setValue(verticalScrollBar()->value() - rows);
    event->accept();
}

bool Grid::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_corner && event->type() == QEvent::Paint) {
        paintCorner();
        return true;
    }
    return watched == m_editor ? filterEditor(event) : QTableView::eventFilter(watched, event);
}

/// Only cells whose text becomes another count as changed.
void Grid::apply(const QList<CellChange>& changes)
{
    QList<CellChange> real;
    for (const CellChange& change : changes) {
        const bool listed = change.row < m_model->rowCount();
        if (listed && m_model->text(change.row, change.column) == change.after)
            continue;
        if (listed)
            m_model->setText(change.row, change.column, change.after);
        real.append(change);
    }
    if (!real.isEmpty())
        emit cellsChanged(real);
}

} // namespace zelto::widgets

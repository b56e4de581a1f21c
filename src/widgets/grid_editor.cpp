// SPDX-License-Identifier: GPL-3.0-or-later
// The editor that a grid lays over its current cell.
#include "widgets/grid.h"
#include "widgets/keys.h"
#include "widgets/typed_line.h"

#include <QKeyEvent>

#include <algorithm>

namespace zelto::widgets {

void Grid::buildEditor()
{
    m_editor->setObjectName(u"TxtEdit"_s);
    m_editor->setOnEntry(TypedLine::OnEntry::Nothing);
    m_editor->setTextMargins(-2, -2, -2, -2); // its frame must fit into a row
    m_editor->hide();
    m_editor->installEventFilter(this);
}

void Grid::MsFlexGridEdit(const QString& typed)
{
    const QModelIndex cell = currentIndex();
    if (!cell.isValid())
        return;
    if (m_model->column(cell.column()).editing == GridColumn::Editing::ByScreen) {
        emit cellRequested(cell.row(), cell.column(), typed);
        return;
    }
    openEditor(typed == u" " ? QString() : typed);
}

/// With what was typed in place of the cell's text, if the column takes it.
void Grid::openEditor(const QString& typed)
{
    const QModelIndex cell = currentIndex();
    const GridColumn& column = m_model->column(cell.column());
    const QString& text = m_model->text(cell.row(), cell.column());
    const QString begun =
        typeable(column.kind, withPoints(column.kind, typed, {}), {}, column.maxLength);
    scrollTo(cell);
    m_edited = cell;
    // A text that is longer than it may be is shown whole, as long as nobody changes it.
    const auto length = static_cast<int>(text.size());
    m_editor->setKind(column.kind, column.maxLength > 0 ? std::max(column.maxLength, length) : 0);
    m_editor->setAlignment((column.alignment & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter);
    m_editor->setText(begun.isEmpty() ? text : begun);
    m_editor->setModified(!begun.isEmpty());
    m_editor->setAccessibleName(u"%1, riga %2"_s.arg(column.header, m_model->number(cell.row())));
    placeEditor();
    m_editor->show();
    m_editor->setFocus(Qt::OtherFocusReason);
    m_editor->end(false);
}

/// Whether the key is one that does something to the grid from within the editor.
bool Grid::EditKeyCode(int key)
{
    const int column = m_edited.column();
    const int neighbour = m_edited.row() + (key == Qt::Key_Down ? 1 : -1);
    switch (key) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        setFocus();
        step(key == Qt::Key_Tab);
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        setFocus();
        return true;
    case Qt::Key_Escape:
        hideEditor();
        return true;
    case Qt::Key_Up:
    case Qt::Key_Down:
        setFocus();
        if (neighbour >= 0 && neighbour < m_model->rowCount())
            setCurrentCell(neighbour, column);
        return true;
    default:
        return false;
    }
}

void Grid::commitEditor()
{
    if (!isEditing())
        return;
    const CellChange change{m_edited.row(), m_edited.column(), m_editor->text()};
    const bool typed = m_editor->isModified();
    hideEditor();
    if (typed)
        apply({change});
}

void Grid::hideEditor()
{
    m_edited = QModelIndex();
    // Hidden with the focus, the editor would pass it on to the next field.
    if (m_editor->hasFocus())
        setFocus();
    m_editor->hide();
}

void Grid::placeEditor()
{
    if (isEditing())
        m_editor->setGeometry(visualRect(m_edited));
}

void Grid::updateGeometries()
{
    QTableView::updateGeometries();
    placeEditor();
}

void Grid::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    placeEditor();
}

void Grid::focusInEvent(QFocusEvent* event)
{
    commitEditor();
    if (currentIndex().isValid()) {
        QTableView::focusInEvent(event);
        return;
    }
    // Qt would make the first cell current. NOLINTNEXTLINE(bugprone-parent-virtual-call)
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void Grid::hideEvent(QHideEvent* event)
{
    commitEditor();
    QTableView::hideEvent(event);
}

bool Grid::filterEditor(QEvent* event)
{
    if (event->type() == QEvent::FocusOut && !isPassing(static_cast<QFocusEvent*>(event)->reason()))
        commitEditor();
    if (event->type() != QEvent::KeyPress)
        return false;
    const auto& key = *static_cast<QKeyEvent*>(event);
    if (!isChord(key))
        return EditKeyCode(key.key());
    event->setAccepted(!isEnter(key)); // Ctrl+Enter is the screen's
    return isEnter(key);
}

} // namespace zelto::widgets

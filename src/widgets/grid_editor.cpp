// SPDX-License-Identifier: GPL-3.0-or-later
// The editor that a grid lays over its current cell.
#include "widgets/field_rules.h"
#include "widgets/grid.h"
#include "widgets/typed_line.h"

#include <QKeyEvent>

#include <algorithm>

namespace zelto::widgets {

void Grid::buildEditor()
{
    m_editor->setObjectName(u"TxtEdit"_s);
    m_editor->setEnter(TypedLine::Enter::IsIgnored);
    m_editor->setOnEntry(TypedLine::OnEntry::Nothing);
    m_editor->setTextMargins(-2, -2, -2, -2); // its frame must fit into a row
    m_editor->hide();
    m_editor->installEventFilter(this);
}

bool Grid::isEditing() const
{
    return m_edited.isValid();
}

void Grid::MsFlexGridEdit(int keyCode)
{
    const QModelIndex cell = currentIndex();
    if (!cell.isValid())
        return;
    if (m_model->column(cell.column()).editing == GridColumn::Editing::ByScreen) {
        emit cellRequested(cell.row(), cell.column(), keyCode);
        return;
    }
    const bool character = keyCode < 0 || keyCode > DoubleClickCode;
    openEditor(character ? QString(QChar(static_cast<char16_t>(keyCode))) : QString());
}

/// With what was typed in place of the cell's text, if a key of the column may begin one.
void Grid::openEditor(const QString& typed)
{
    const QModelIndex cell = currentIndex();
    const GridColumn& column = m_model->column(cell.column());
    const FieldTag& tag = m_model->tag(cell.column());
    const QString& text = m_model->text(cell.row(), cell.column());
    const QString begun = typeable(tag, withPoints(tag, typed, {}), {}, column.maxLength);
    scrollTo(cell);
    m_edited = cell;
    // A text that is longer than it may be is shown whole, as long as nobody changes it.
    const auto length = static_cast<int>(text.size());
    m_editor->setTag(tag, column.maxLength > 0 ? std::max(column.maxLength, length) : 0);
    m_editor->setAlignment((column.alignment & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter);
    m_editor->setText(begun.isEmpty() ? text : begun);
    m_editor->setModified(!begun.isEmpty());
    m_editor->setAccessibleName(u"%1, riga %2"_s.arg(column.header, m_model->number(cell.row())));
    placeEditor();
    m_editor->show();
    m_editor->setFocus(Qt::OtherFocusReason);
    m_editor->end(false);
}

void Grid::EditKeyCode(int key)
{
    const int row = m_edited.row();
    const int column = m_edited.column();
    switch (key) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        setFocus();
        step(key == Qt::Key_Tab);
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        setFocus();
        break;
    case Qt::Key_Escape:
        hideEditor();
        break;
    case Qt::Key_Up:
        setFocus();
        if (row > 0)
            setCurrentCell(row - 1, column);
        break;
    case Qt::Key_Down:
        setFocus();
        if (row < m_model->rowCount() - 1)
            setCurrentCell(row + 1, column);
        break;
    default:
        break;
    }
}

void Grid::commitEditor()
{
    if (!isEditing())
        return;
    const CellChange change{m_edited.row(), m_edited.column(), {}, m_editor->text()};
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
    if (event->type() == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (!isPassing(reason))
            commitEditor();
    }
    if (event->type() != QEvent::KeyPress || isChord(*static_cast<QKeyEvent*>(event)))
        return false;
    switch (const int key = static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
    case Qt::Key_Up:
    case Qt::Key_Down:
        EditKeyCode(key);
        return true;
    default:
        return false;
    }
}

} // namespace zelto::widgets

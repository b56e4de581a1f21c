// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/grid.h"

#include "widgets/field_rules.h"
#include "widgets/grid_delegate.h"
#include "widgets/typed_line.h"
#include "widgets/wheel_scroller.h"

#include <QAbstractButton>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>

namespace zelto::widgets {

namespace {

bool isChord(const QKeyEvent& key)
{
    return key.modifiers().testAnyFlags(Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

} // namespace

Grid::Grid(const QString& numberHeader, const std::vector<GridColumn>& columns, AtEnd atEnd,
           QWidget* parent)
    : QTableView(parent), m_model(new GridModel(numberHeader, columns, this)), m_atEnd(atEnd),
      m_editor(new TypedLine(viewport()))
{
    setModel(m_model);
    setItemDelegate(new GridDelegate(this));
    setEditTriggers(NoEditTriggers);
    setTabKeyNavigation(false);
    setHorizontalScrollMode(ScrollPerPixel);
    new WheelScroller(this);
    setUpHeaders();
    buildEditor();
}

void Grid::buildEditor()
{
    m_editor->setObjectName(QStringLiteral("TxtEdit"));
    m_editor->setEnter(TypedLine::Enter::IsIgnored);
    m_editor->setOnEntry(TypedLine::OnEntry::Nothing);
    m_editor->setTextMargins(-2, -2, -2, -2); // its frame must fit into a row
    m_editor->hide();
    m_editor->installEventFilter(this);
}

// The current cell

void Grid::setCurrentCell(int row, int column)
{
    commitEditor();
    setCurrentIndex(m_model->index(row, column));
}

void Grid::selectBlock(const QModelIndex& first, const QModelIndex& last)
{
    setCurrentIndex(first);
    selectionModel()->select({first, last}, QItemSelectionModel::ClearAndSelect);
}

void Grid::selectRows(int first, int last)
{
    selectBlock(m_model->index(first, 0), m_model->index(last, 0));
}

void Grid::leaveCells()
{
    selectionModel()->clear();
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
    return shift || type == QEvent::MouseMove ? Selection::SelectCurrent
                                              : Selection::ClearAndSelect;
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
    const int row = m_model->rowCount();
    m_model->appendRow(QString::number(row + 1));
    emit rowAppended(row);
}

// The editor

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
    m_editor->setAccessibleName(
        QStringLiteral("%1, riga %2").arg(column.header, m_model->number(cell.row())));
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
    // Qt would make the first cell current.
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void Grid::hideEvent(QHideEvent* event)
{
    commitEditor();
    QTableView::hideEvent(event);
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
    if (typed.isEmpty() && !control) {
        QTableView::keyPressEvent(event);
        return;
    }
    const int code = typed.isEmpty() ? F2Code : typed.front().unicode();
    MsFlexGridEdit(code);
    if (isEditing())
        emit editorOpened(true);
}

/// The keys that do something to the grid itself.
bool Grid::command(QKeyEvent* event)
{
    const Qt::KeyboardModifiers modifiers = event->modifiers() & ~Qt::KeypadModifier;
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && !isChord(*event))
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
    const QString& typed = event->commitString();
    if (typed.isEmpty())
        return;
    MsFlexGridEdit(typed.front().unicode());
    if (isEditing())
        emit editorOpened(true);
}

void Grid::mouseDoubleClickEvent(QMouseEvent* event)
{
    const QModelIndex cell = indexAt(event->pos());
    if (event->button() != Qt::LeftButton || !cell.isValid()) {
        QTableView::mouseDoubleClickEvent(event);
        return;
    }
    setCurrentCell(cell.row(), cell.column());
    MsFlexGridEdit(DoubleClickCode);
    if (isEditing())
        emit editorOpened(false);
}

bool Grid::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_corner && event->type() == QEvent::Paint) {
        paintCorner();
        return true;
    }
    return watched == m_editor ? filterEditor(event) : QTableView::eventFilter(watched, event);
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

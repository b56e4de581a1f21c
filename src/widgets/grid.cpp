// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/grid.h"

#include "widgets/field_rules.h"
#include "widgets/grid_delegate.h"
#include "widgets/twips.h"
#include "widgets/typed_line.h"
#include "widgets/wheel_scroller.h"

#include <QAbstractButton>
#include <QApplication>
#include <QHeaderView>
#include <QKeyEvent>
#include <QStyleOptionHeader>
#include <QStylePainter>

#include <algorithm>

namespace zelto::widgets {

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

void Grid::setUpHeaders()
{
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    fitRows();
    horizontalHeader()->setHighlightSections(false);
    horizontalHeader()->setMinimumSectionSize(1);
    for (int column = 1; column <= m_model->columnCount(); ++column)
        setWidthInTwips(column, m_model->column(column - 1).width);
    // Qt has no caption for the corner between the headers.
    m_corner = findChild<QAbstractButton*>();
    if (m_corner != nullptr) {
        m_corner->installEventFilter(this);
        m_corner->setAccessibleName(QStringLiteral("Seleziona tutto"));
    }
    connect(horizontalHeader(), &QHeaderView::sectionResized, this, &Grid::placeEditor);
    connect(m_model, &QAbstractItemModel::modelReset, this, &Grid::fitNumbers);
    connect(m_model, &QAbstractItemModel::rowsInserted, this, &Grid::fitNumbers);
}

void Grid::fitRows()
{
    constexpr int Margins = 6;
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + Margins);
    fitNumbers();
}

void Grid::buildEditor()
{
    m_editor->setObjectName(QStringLiteral("TxtEdit"));
    m_editor->setEnter(TypedLine::Enter::IsIgnored);
    m_editor->setTextMargins(-2, -2, -2, -2); // its frame must fit into a row
    m_editor->hide();
    m_editor->installEventFilter(this);
}

// The current cell

void Grid::setCurrentCell(int row, int column)
{
    // Whatever modifier keys are held, unlike setCurrentIndex.
    selectionModel()->setCurrentIndex(m_model->index(row, column),
                                      QItemSelectionModel::ClearAndSelect);
}

Grid::RowRange Grid::selectedRows() const
{
    const QModelIndexList cells = selectedCells();
    if (cells.isEmpty())
        return {};
    return {cells.front().row(), cells.back().row()};
}

void Grid::currentChanged(const QModelIndex& current, const QModelIndex& previous)
{
    commitEditor();
    QTableView::currentChanged(current, previous);
}

void Grid::moveByEnter()
{
    const int row = currentRow();
    if (row < 0)
        return;
    if (currentColumn() < m_model->columnCount() - 1) {
        setCurrentCell(row, currentColumn() + 1);
        return;
    }
    const bool last = row == m_model->rowCount() - 1;
    if (last && m_atEnd == AtEnd::AppendsRow)
        appendRow();
    setCurrentCell(std::min(row + 1, m_model->rowCount() - 1), 0);
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

QString Grid::startText(int keyCode) const
{
    const QString& text = m_model->text(currentRow(), currentColumn());
    if (keyCode >= 0 && keyCode <= DoubleClickCode)
        return text;
    const QChar key(static_cast<ushort>(keyCode));
    const bool numeric = m_model->tag(currentColumn()).isNumeric();
    return !numeric || QStringView(u"0123456789-.").contains(key) ? QString(key) : text;
}

void Grid::MsFlexGridEdit(int keyCode)
{
    const QModelIndex cell = currentIndex();
    if (!cell.isValid())
        return;
    const GridColumn& column = m_model->column(cell.column());
    if (column.editing == GridColumn::Editing::ByScreen) {
        emit cellRequested(cell.row(), cell.column(), keyCode);
        return;
    }
    scrollTo(cell);
    m_edited = cell;
    m_editor->setTag(m_model->tag(cell.column()), column.maxLength);
    m_editor->setAlignment((column.alignment & Qt::AlignHorizontal_Mask) | Qt::AlignVCenter);
    m_editor->setText(startText(keyCode));
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
    hideEditor();
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

void Grid::fitNumbers()
{
    verticalHeader()->setFixedWidth(numberWidth());
}

void Grid::scrollContentsBy(int dx, int dy)
{
    QTableView::scrollContentsBy(dx, dy);
    placeEditor();
}

void Grid::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange)
        fitRows();
}

void Grid::focusInEvent(QFocusEvent* event)
{
    commitEditor();
    QTableView::focusInEvent(event);
}

// Keys and mouse

void Grid::keyPressEvent(QKeyEvent* event)
{
    if (command(event))
        return;
    const QString typed = typedBy(*event);
    const bool control = event->key() == Qt::Key_Backspace || event->key() == Qt::Key_F2;
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
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        moveByEnter();
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

void Grid::paintCorner()
{
    QStylePainter painter(m_corner);
    QStyleOptionHeader option;
    option.initFrom(m_corner);
    option.text = m_model->numberHeader();
    option.textAlignment = Qt::AlignCenter;
    painter.drawControl(QStyle::CE_Header, option);
}

bool Grid::filterEditor(QEvent* event)
{
    if (event->type() == QEvent::FocusOut) {
        const auto reason = static_cast<QFocusEvent*>(event)->reason();
        if (reason != Qt::ActiveWindowFocusReason && reason != Qt::PopupFocusReason)
            commitEditor();
    }
    if (event->type() != QEvent::KeyPress)
        return false;
    switch (const int key = static_cast<QKeyEvent*>(event)->key()) {
    case Qt::Key_Tab:
    case Qt::Key_Backtab:
        setFocus();
        return focusNextPrevChild(key == Qt::Key_Tab);
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

// Widths

int Grid::numberWidth() const
{
    constexpr int Margins = 8;
    const int rows = m_model->rowCount();
    const QStringList texts{QStringLiteral("00"), m_model->numberHeader(),
                            rows > 0 ? m_model->number(rows - 1) : QString()};
    int width = m_numberWidth;
    for (const QString& text : texts)
        width = std::max(width, fontMetrics().horizontalAdvance(u' ' + text + u' ') + Margins);
    return width;
}

int Grid::widthInTwips(int column) const
{
    return twipsOf(*this, column == 0 ? verticalHeader()->width() : columnWidth(column - 1));
}

void Grid::setWidthInTwips(int column, int twips)
{
    const int pixels = pixelsOf(*this, twips);
    if (column > 0) {
        setColumnWidth(column - 1, pixels);
        return;
    }
    m_numberWidth = pixels;
    fitNumbers();
}

} // namespace zelto::widgets

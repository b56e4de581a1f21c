// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/typed_line.h"

#include "text/decimal_text.h"
#include "widgets/keys.h"
#include "widgets/marks.h"

#include <QAction>
#include <QApplication>
#include <QContextMenuEvent>
#include <QMenu>
#include <QMimeData>
#include <QPainter>

#include <algorithm>
#include <limits>
#include <utility>

namespace zelto::widgets {

namespace {

/// The menu names its entries by nothing but their caption, to which it adds the shortcut.
QAction* pasteEntry(const QMenu& menu)
{
    const QString caption = QLineEdit::tr("&Paste");
    const QList<QAction*> entries = menu.actions();
    const auto entry = std::ranges::find_if(entries, [&](const QAction* action) {
        return action->text().section(u'\t', 0, 0) == caption;
    });
    return entry == entries.end() ? nullptr : *entry;
}

} // namespace

bool isPassing(Qt::FocusReason reason)
{
    return reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason ||
           reason == Qt::MenuBarFocusReason;
}

TypedLine::TypedLine(FieldKind kind, int maxLength, QWidget* parent) : QLineEdit(parent)
{
    setKind(kind, maxLength);
    // The change of focus under way must first come to its end.
    connect(this, &TypedLine::held, this, &TypedLine::takeFocusBack, Qt::QueuedConnection);
}

void TypedLine::setKind(FieldKind kind, int maxLength)
{
    m_kind = kind;
    m_maxLength = maxLength;
    setMaxLength(maxLength > 0 ? maxLength : std::numeric_limits<int>::max());
}

bool TypedLine::ValidateField()
{
    const std::optional<QString> checked = checkedText(m_kind, text());
    if (checked && *checked != text())
        setText(*checked);
    return checked.has_value();
}

/// Types the text at the caret in place of the selection. Of a figure, a part would be another
/// figure, so it gets in whole or not at all.
void TypedLine::typeIn(const QString& text)
{
    if (isReadOnly())
        return;
    const FieldText field{.text = this->text(),
                          .selectionStart = hasSelectedText() ? selectionStart() : cursorPosition(),
                          .selectionLength = selectionLength()};
    const QString taken = typeable(m_kind, text, field, m_maxLength);
    const bool whole = isNumeric(m_kind) || hasDecimals(m_kind);
    if (!taken.isEmpty() && (taken.size() == text.size() || !whole))
        insert(taken);
    if (taken.size() < text.size())
        refuse(*this);
}

/// Undo and redo are the screen's where the field itself has nothing to take back.
bool TypedLine::event(QEvent* event)
{
    if (event->type() == QEvent::ShortcutOverride) {
        const auto& key = *static_cast<QKeyEvent*>(event);
        if ((key.matches(QKeySequence::Undo) && !isUndoAvailable()) ||
            (key.matches(QKeySequence::Redo) && !isRedoAvailable()))
            return false;
    }
    return QLineEdit::event(event);
}

void TypedLine::keyPressEvent(QKeyEvent* event)
{
    const QString typed = isReadOnly() ? QString() : typedBy(*event);
    if (isEnter(*event)) {
        if (m_kind != FieldKind::RunningText)
            focusNextChild();
    } else if (event->matches(QKeySequence::Paste))
        pasteFrom(event->modifiers().testFlags(Qt::ControlModifier | Qt::ShiftModifier)
                      ? QClipboard::Selection
                      : QClipboard::Clipboard);
    else if (!typed.isEmpty())
        typeIn(withPoints(m_kind, typed, text()));
    else if (isWithAlt(*event))
        event->ignore();
    else
        QLineEdit::keyPressEvent(event);
}

void TypedLine::inputMethodEvent(QInputMethodEvent* event)
{
    if (isReadOnly()) {
        QLineEdit::inputMethodEvent(event);
        return;
    }
    // Composing removes the selection at once; where its outcome may be refused, the text must
    // stay as it is until then.
    if (m_kind != FieldKind::Date && !isNumeric(m_kind)) {
        QInputMethodEvent composing(event->preeditString(), event->attributes());
        QLineEdit::inputMethodEvent(&composing);
    }
    if (event->commitString().isEmpty() && event->replacementLength() == 0)
        return;
    if (event->replacementLength() > 0)
        setSelection(cursorPosition() + event->replacementStart(), event->replacementLength());
    typeIn(withPoints(m_kind, event->commitString(), text()));
}

void TypedLine::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::MiddleButton) {
        QLineEdit::mouseReleaseEvent(event);
        return;
    }
    deselect();
    pasteFrom(QClipboard::Selection);
}

void TypedLine::dropEvent(QDropEvent* event)
{
    QDragLeaveEvent leave;
    QLineEdit::dragLeaveEvent(&leave); // takes the caret of the drag away
    if (isReadOnly() || !event->mimeData()->hasText()) {
        event->ignore();
        return;
    }
    setCursorPosition(cursorPositionAt(event->position().toPoint()));
    event->acceptProposedAction();
    pasteIn(event->mimeData()->text());
}

void TypedLine::contextMenuEvent(QContextMenuEvent* event)
{
    QMenu* menu = createStandardContextMenu();
    menu->setAttribute(Qt::WA_DeleteOnClose);
    if (QAction* paste = pasteEntry(*menu)) {
        paste->disconnect(this);
        connect(paste, &QAction::triggered, this, [this] { pasteFrom(QClipboard::Clipboard); });
    }
    menu->popup(event->globalPos());
}

void TypedLine::focusInEvent(QFocusEvent* event)
{
    QLineEdit::focusInEvent(event);
    if (!m_enteredText || !isPassing(event->reason()))
        enter();
}

void TypedLine::focusOutEvent(QFocusEvent* event)
{
    QLineEdit::focusOutEvent(event);
    if (m_enteredText && !isPassing(event->reason()))
        leave();
}

void TypedLine::pasteFrom(QClipboard::Mode mode)
{
    pasteIn(QApplication::clipboard()->text(mode));
}

void TypedLine::pasteIn(const QString& text)
{
    if (const std::optional<QString> pasted = pasteable(m_kind, text))
        typeIn(*pasted);
    else
        refuse(*this);
}

void TypedLine::enter()
{
    m_enteredText = text();
    if (m_onEntry == OnEntry::Nothing) {
        deselect(); // Qt selects the text of a field that is entered by the Tab key
        return;
    }
    if (isNumeric(m_kind))
        if (const QString turned = text::ToPointDecimal(text()); turned != text())
            setText(turned);
    if (m_kind != FieldKind::RunningText)
        selectAll();
}

void TypedLine::leave()
{
    const QString entered = *std::exchange(m_enteredText, std::nullopt);
    const QWidget* next = QApplication::focusWidget();
    const bool discards = next != nullptr && next->property(LeavesUnchecked).toBool();
    if (ValidateField()) {
        if (text() != entered)
            emit changed();
    } else if (isVisible() && isEnabled() && !discards) {
        refuse(*this);
        emit held();
    }
}

void TypedLine::takeFocusBack()
{
    if (hasFocus() || !isVisible() || !isEnabled())
        return;
    // The field that has the focus for this moment must not check its own text and claim it back.
    if (auto* other = qobject_cast<TypedLine*>(window()->focusWidget()))
        other->m_enteredText.reset();
    setFocus(Qt::OtherFocusReason);
}

void TypedLine::setRemark(const QString& remark)
{
    m_remark = remark;
    setToolTip(remark);
    setAccessibleDescription(remark);
    update();
}

void TypedLine::paintEvent(QPaintEvent* event)
{
    QLineEdit::paintEvent(event);
    if (m_remark.isEmpty())
        return;
    QPainter painter(this);
    drawMark(painter, rect());
}

} // namespace zelto::widgets

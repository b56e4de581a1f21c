// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/typed_line.h"

#include "text/decimal_text.h"
#include "widgets/field_rules.h"
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
    const auto entry = std::find_if(entries.begin(), entries.end(), [&](const QAction* action) {
        return action->text().section(u'\t', 0, 0) == caption;
    });
    return entry == entries.end() ? nullptr : *entry;
}

bool isLeftUnchecked(const QWidget* next)
{
    return next != nullptr && next->property(TypedLine::LeavesUnchecked).toBool();
}

} // namespace

bool isPassing(Qt::FocusReason reason)
{
    return reason == Qt::PopupFocusReason || reason == Qt::ActiveWindowFocusReason ||
           reason == Qt::MenuBarFocusReason;
}

TypedLine::TypedLine(const QString& tag, int maxLength, QWidget* parent) : QLineEdit(parent)
{
    setTag(FieldTag(tag), maxLength);
    // The change of focus under way must first come to its end.
    connect(this, &TypedLine::held, this, &TypedLine::takeFocusBack, Qt::QueuedConnection);
}

void TypedLine::setTag(const FieldTag& tag, int maxLength)
{
    m_tag = tag;
    m_maxLength = maxLength;
    setMaxLength(maxLength > 0 ? maxLength : std::numeric_limits<int>::max());
}

bool TypedLine::ValidateField()
{
    const std::optional<QString> checked = checkedText(m_tag, text(), m_maxLength);
    if (checked && *checked != text())
        setText(*checked);
    return checked.has_value();
}

void TypedLine::typeIn(const QString& text)
{
    typeExactly(withPoints(m_tag, text, this->text()));
}

void TypedLine::typeExactly(const QString& text)
{
    if (isReadOnly())
        return;
    const FieldText field{.text = this->text(),
                          .selectionStart = hasSelectedText() ? selectionStart() : cursorPosition(),
                          .selectionLength = selectionLength()};
    const QString taken = typeable(m_tag, text, field, m_maxLength);
    const bool whole = m_tag.isNumeric() || m_tag.hasDecimals();
    if (!taken.isEmpty() && (taken.size() == text.size() || !whole))
        insert(taken);
    if (taken.size() < text.size())
        refuse();
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
    if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter)
        pressEnter(event);
    else if (event->matches(QKeySequence::Paste))
        pasteFrom(event->modifiers().testFlags(Qt::ControlModifier | Qt::ShiftModifier)
                      ? QClipboard::Selection
                      : QClipboard::Clipboard);
    else if (!typed.isEmpty())
        typeIn(typed);
    else if (isWithAlt(*event))
        event->ignore();
    else
        QLineEdit::keyPressEvent(event);
}

void TypedLine::pressEnter(QKeyEvent* event)
{
    event->setAccepted(m_enter == Enter::MovesOn);
    if (m_enter == Enter::MovesOn && m_tag.kind() != FieldTag::Kind::MultilineText)
        focusNextChild();
}

void TypedLine::inputMethodEvent(QInputMethodEvent* event)
{
    if (isReadOnly()) {
        QLineEdit::inputMethodEvent(event);
        return;
    }
    // Composing removes the selection at once; where its outcome may be refused, the text must
    // stay as it is until then.
    if (m_tag.kind() == FieldTag::Kind::Text || m_tag.kind() == FieldTag::Kind::MultilineText) {
        QInputMethodEvent composing(event->preeditString(), event->attributes());
        QLineEdit::inputMethodEvent(&composing);
    }
    if (event->commitString().isEmpty() && event->replacementLength() == 0)
        return;
    if (event->replacementLength() > 0)
        setSelection(cursorPosition() + event->replacementStart(), event->replacementLength());
    typeIn(event->commitString());
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
    if (const std::optional<QString> pasted = pasteable(m_tag, text))
        typeExactly(*pasted);
    else
        refuse();
}

void TypedLine::enter()
{
    m_enteredText = text();
    if (m_onEntry == OnEntry::Nothing) {
        deselect(); // Qt selects the text of a field that is entered by the Tab key
        return;
    }
    turnCommas();
    if (m_tag.kind() != FieldTag::Kind::MultilineText)
        selectAll();
}

void TypedLine::leave()
{
    const QString entered = *std::exchange(m_enteredText, std::nullopt);
    if (ValidateField()) {
        if (text() != entered)
            emit changed();
        if (m_onEntry == OnEntry::Selects)
            turnCommas();
    } else if (isVisible() && isEnabled() && !isLeftUnchecked(QApplication::focusWidget())) {
        refuse();
        emit held();
    }
}

void TypedLine::takeFocusBack()
{
    if (hasFocus() || !isVisible() || !isEnabled())
        return;
    // A field that the user did not get to must not claim the focus for itself.
    if (auto* other = qobject_cast<TypedLine*>(window()->focusWidget()))
        other->m_enteredText.reset();
    setFocus(Qt::OtherFocusReason);
}

void TypedLine::turnCommas()
{
    if (!m_tag.turnsCommas())
        return;
    const QString turned = text::ToPointDecimal(text());
    if (turned != text())
        setText(turned);
}

void TypedLine::refuse()
{
    widgets::refuse(*this);
    emit refused();
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

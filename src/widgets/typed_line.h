// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/field_tag.h"

#include <QClipboard>
#include <QLineEdit>

#include <optional>

namespace zelto::widgets {

/// Whether the focus only passes to a menu or another window for a while: the user is still in the
/// field that it left.
[[nodiscard]] bool isPassing(Qt::FocusReason reason);

/// A field of one line that takes only what its tag allows, however it comes in: typed, pasted,
/// dropped or composed by an input method. When the focus leaves it with a text that fails the
/// tag's check, it takes the focus back, unless the focus goes to a widget marked LeavesUnchecked
/// or the field is no longer visible or enabled.
class TypedLine : public QLineEdit
{
    Q_OBJECT

public:
    /// What Enter does: moves on to the next field, or is left to the owner of an in-grid editor.
    enum class Enter { MovesOn, IsIgnored };

    /// The dynamic property that a button which discards all fields is given (as true).
    static constexpr const char* LeavesUnchecked = "leavesUnchecked";

    explicit TypedLine(QWidget* parent = nullptr) : TypedLine({}, 0, parent) {}
    /// maxLength in characters, 0 for any.
    TypedLine(const QString& tag, int maxLength, QWidget* parent = nullptr);

    [[nodiscard]] const FieldTag& tag() const { return m_tag; }
    void setTag(const FieldTag& tag, int maxLength);
    void setEnter(Enter enter) { m_enter = enter; }

    /// Checks the text and writes it in its checked form; false when it must not stay.
    [[nodiscard]] bool ValidateField();

    /// What happens to the text when the field is entered: it is selected, with a decimal point for
    /// its comma, or nothing.
    enum class OnEntry { Selects, Nothing };
    void setOnEntry(OnEntry onEntry) { m_onEntry = onEntry; }

    /// What is odd about the text, shown by a mark in the corner and to who rests the mouse on the
    /// field; empty for nothing.
    void setRemark(const QString& remark);

    /// Types the text at the caret in place of the selection; what the keys could not have typed
    /// does not get in. Where decimals are, a comma is the decimal point; of a figure, a part would
    /// be another figure, so it gets in whole or not at all.
    void typeIn(const QString& text);

signals:
    /// A key, a part of a pasted text or the whole text on leaving was refused; the beep has
    /// sounded.
    void refused();
    /// The text failed its check on leaving; the focus is about to come back.
    void held();
    /// The focus has left, the text passed its check and differs from the one that was entered.
    void changed();

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void typeExactly(const QString& text);
    void pressEnter(QKeyEvent* event);
    void pasteFrom(QClipboard::Mode mode);
    void pasteIn(const QString& text);
    void enter();
    void leave();
    void takeFocusBack();
    void turnCommas();
    void refuse();

    FieldTag m_tag;
    int m_maxLength = 0;
    Enter m_enter = Enter::MovesOn;
    OnEntry m_onEntry = OnEntry::Selects;
    QString m_remark;
    std::optional<QString> m_enteredText; // while the user is in the field
};

} // namespace zelto::widgets

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "widgets/field_rules.h"

#include <QClipboard>
#include <QLineEdit>

#include <optional>

namespace zelto::widgets {

/// Whether the focus only passes to a menu or another window for a while: the user is still in the
/// field that it left.
[[nodiscard]] bool isPassing(Qt::FocusReason reason);

/// A field of one line that takes only what its kind allows, however it comes in: typed, pasted,
/// dropped or composed by an input method. What does not get in is refused with a beep. When the
/// focus leaves it with a text that must not stay, it takes the focus back, unless the focus goes
/// to a widget marked LeavesUnchecked or the field is no longer visible or enabled.
class TypedLine : public QLineEdit
{
    Q_OBJECT

public:
    /// The dynamic property that a button which discards all fields is given (as true).
    static constexpr const char* LeavesUnchecked = "leavesUnchecked";

    /// maxLength in characters, 0 for any.
    TypedLine(FieldKind kind, int maxLength, QWidget* parent = nullptr);

    void setKind(FieldKind kind, int maxLength);

    /// Checks the text and writes it in its checked form; false when it must not stay.
    [[nodiscard]] bool ValidateField();

    /// What happens to the text when the field is entered: it is selected, with a decimal point for
    /// its comma, or nothing.
    enum class OnEntry { Selects, Nothing };
    void setOnEntry(OnEntry onEntry) { m_onEntry = onEntry; }

    /// What is odd about the text, shown by a mark in the corner and as tool tip; empty for
    /// nothing.
    void setRemark(const QString& remark);

signals:
    /// The text must not stay, but the focus left; it is about to come back.
    void held();
    /// The focus has left, and the text may stay and differs from the one that was entered.
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
    void typeIn(const QString& text);
    void pasteFrom(QClipboard::Mode mode);
    void pasteIn(const QString& text);
    void enter();
    void leave();
    void takeFocusBack();

    FieldKind m_kind = FieldKind::Words;
    int m_maxLength = 0;
    OnEntry m_onEntry = OnEntry::Selects;
    QString m_remark;
    std::optional<QString> m_enteredText; // while the user is in the field
};

} // namespace zelto::widgets

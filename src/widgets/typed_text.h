// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPlainTextEdit>

namespace zelto::widgets {

/// A field of several lines, whose text is stored with CR LF between them. It takes every key;
/// what would make the stored text too long is refused with a beep.
class TypedText : public QPlainTextEdit
{
    Q_OBJECT

public:
    /// maxLength in characters of the stored text, a line break being two; 0 for any.
    explicit TypedText(int maxLength, QWidget* parent = nullptr);

    /// Shows the text as the one that nobody has changed yet.
    void setStoredText(const QString& text);
    /// The text exactly as set while the user has not changed it, else its lines with CR LF
    /// between them.
    [[nodiscard]] QString storedText() const;

signals:
    /// The user changed the text.
    void edited();

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    [[nodiscard]] bool canInsertFromMimeData(const QMimeData* source) const override;
    void insertFromMimeData(const QMimeData* source) override;

private:
    void typeIn(const QString& text);
    [[nodiscard]] qsizetype lengthLeft() const;

    int m_maxLength;
    QString m_stored;
};

} // namespace zelto::widgets

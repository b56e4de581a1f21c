// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/typed_text.h"

#include "text/literals.h"
#include "widgets/keys.h"
#include "widgets/marks.h"

#include <QKeyEvent>
#include <QMimeData>
#include <QSignalBlocker>

#include <algorithm>
#include <limits>

namespace zelto::widgets {

namespace {

bool isLineBreak(QChar c)
{
    return c == u'\n' || c == QChar::ParagraphSeparator || c == QChar::LineSeparator;
}

qsizetype storedLength(QStringView text)
{
    return text.size() + std::ranges::count_if(text, isLineBreak);
}

/// One character for each line break, as the Enter key types it.
QString withSingleLineBreaks(QString text)
{
    return text.replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n');
}

QString withoutControls(QString text)
{
    return text.removeIf(
        [](QChar c) { return c.category() == QChar::Other_Control && c != u'\n' && c != u'\t'; });
}

/// As much of the beginning as fits, never half a character.
QString beginning(const QString& text, qsizetype length)
{
    qsizetype end = 0;
    while (end < text.size() && (length -= isLineBreak(text[end]) ? 2 : 1) >= 0)
        ++end;
    if (end > 0 && end < text.size() && text[end - 1].isHighSurrogate())
        --end;
    return text.left(end);
}

} // namespace

TypedText::TypedText(int maxLength, QWidget* parent)
    : QPlainTextEdit(parent), m_maxLength(maxLength)
{
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::textChanged, this, [this] {
        if (document()->isModified()) // not while a dead key waits for its letter
            emit edited();
    });
}

void TypedText::setStoredText(const QString& text)
{
    const QSignalBlocker blocker(this);
    m_stored = text;
    setPlainText(text);
}

QString TypedText::storedText() const
{
    if (!document()->isModified())
        return m_stored;
    // toPlainText() would turn no-break spaces into blanks.
    QString text = document()->toRawText();
    text.replace(QChar::ParagraphSeparator, u"\r\n"_s).replace(QChar::LineSeparator, u"\r\n"_s);
    return text;
}

/// At the caret in place of the selection, as much of it as fits.
void TypedText::typeIn(const QString& text)
{
    const QString typed = withSingleLineBreaks(text);
    const QString taken = beginning(withoutControls(typed), lengthLeft());
    if (!taken.isEmpty())
        insertPlainText(taken);
    ensureCursorVisible();
    if (taken.size() < typed.size())
        refuse(*this);
}

void TypedText::keyPressEvent(QKeyEvent* event)
{
    const QString typed = isEnter(*event) ? u"\n"_s : typedBy(*event);
    if (!typed.isEmpty())
        typeIn(typed);
    else if (isWithAlt(*event))
        event->ignore();
    else
        QPlainTextEdit::keyPressEvent(event);
}

void TypedText::inputMethodEvent(QInputMethodEvent* event)
{
    QInputMethodEvent composing(event->preeditString(), event->attributes());
    QPlainTextEdit::inputMethodEvent(&composing);
    if (event->replacementLength() > 0) {
        QTextCursor cursor = textCursor();
        cursor.setPosition(cursor.position() + event->replacementStart());
        cursor.movePosition(QTextCursor::NextCharacter, QTextCursor::KeepAnchor,
                            event->replacementLength());
        setTextCursor(cursor);
    }
    if (!event->commitString().isEmpty())
        typeIn(event->commitString());
}

bool TypedText::canInsertFromMimeData(const QMimeData* source) const
{
    return source->hasText();
}

void TypedText::insertFromMimeData(const QMimeData* source)
{
    typeIn(source->text());
}

qsizetype TypedText::lengthLeft() const
{
    if (m_maxLength == 0)
        return std::numeric_limits<qsizetype>::max();
    return m_maxLength - storedLength(document()->toRawText()) +
           storedLength(textCursor().selectedText());
}

} // namespace zelto::widgets

// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/paragraph.h"

#include <algorithm>

namespace zelto::print {

namespace {

/// How much of a text is measured at first. A word may be as long as a memo: a line measures as
/// much of it as it could hold, and not all that follows.
constexpr qsizetype FirstPiece = 256;

qsizetype skipBlanks(QStringView text, qsizetype from)
{
    while (from < text.size() && text[from] == u' ')
        ++from;
    return from;
}

qsizetype skipWord(QStringView text, qsizetype from)
{
    while (from < text.size() && text[from] != u' ')
        ++from;
    return from;
}

QStringView withoutTrailingBlanks(QStringView text)
{
    while (text.endsWith(u' '))
        text.chop(1);
    return text;
}

} // namespace

QStringView takeParagraph(QStringView& text)
{
    const auto isBreak = [](QChar c) { return c == u'\r' || c == u'\n'; };
    const qsizetype length = std::find_if(text.begin(), text.end(), isBreak) - text.begin();
    const QStringView paragraph = text.first(length);
    text = text.sliced(length);
    if (text.startsWith(u"\r\n"))
        text = text.sliced(2);
    else if (!text.isEmpty())
        text = text.sliced(1);
    return paragraph;
}

ParagraphLine LineBreaker::takeLine(QStringView& paragraph) const
{
    paragraph = withoutTrailingBlanks(paragraph);
    qsizetype length = wordsThatFit(paragraph);
    if (length == 0)
        length = charactersThatFit(paragraph);
    const QStringView line = paragraph.first(length);
    paragraph = paragraph.sliced(skipBlanks(paragraph, length));
    return {.text = line, .last = paragraph.isEmpty()};
}

/// Length of the whole words, blanks before them included, that stay below the width.
qsizetype LineBreaker::wordsThatFit(QStringView paragraph) const
{
    double used = 0;
    qsizetype length = 0;
    while (length < paragraph.size()) {
        const qsizetype wordEnd = endOfWord(paragraph, length, m_width - used);
        if (wordEnd < 0)
            break;
        used += m_measure.width(paragraph.sliced(length, wordEnd - length));
        if (used >= m_width)
            break;
        length = wordEnd;
    }
    return length;
}

/// Where the word that begins behind the place ends; negative when it is at least as wide as the
/// limit and not measured to its end.
qsizetype LineBreaker::endOfWord(QStringView paragraph, qsizetype from, double limit) const
{
    for (qsizetype piece = FirstPiece;; piece *= 2) {
        const QStringView seen = paragraph.first(std::min(from + piece, paragraph.size()));
        const qsizetype end = skipWord(seen, skipBlanks(seen, from));
        if (end < seen.size() || seen.size() == paragraph.size())
            return end;
        if (m_measure.width(seen.sliced(from)) >= limit)
            return -1;
    }
}

/// As much of the first word as fits, but at least one character.
qsizetype LineBreaker::charactersThatFit(QStringView paragraph) const
{
    for (qsizetype piece = FirstPiece;; piece *= 2) {
        const QStringView seen = paragraph.first(std::min(piece, paragraph.size()));
        const QStringView word = seen.first(skipWord(seen, skipBlanks(seen, 0)));
        const qsizetype fits = m_measure.fittingLength(word, m_width);
        if (fits == word.size() && word.size() < paragraph.size() && word.size() == seen.size())
            continue;
        const bool pair = word.size() > 1 && word[0].isHighSurrogate() && word[1].isLowSurrogate();
        return std::max(std::min<qsizetype>(pair ? 2 : 1, word.size()), fits);
    }
}

JustifiedLine justify(QStringView line, qsizetype extraBlanks)
{
    const qsizetype lastBlank = line.lastIndexOf(u' ');
    const QStringView head = withoutTrailingBlanks(line.first(std::max<qsizetype>(lastBlank, 0)));
    if (head.isEmpty())
        return {.head = line.toString(), .lastWord = {}};

    qsizetype gaps = 1; // the one before the last word
    const qsizetype indent = skipBlanks(head, 0);
    for (qsizetype i = skipWord(head, indent); i < head.size();
         i = skipWord(head, skipBlanks(head, i)))
        ++gaps;

    JustifiedLine result{.head = {}, .lastWord = line.sliced(lastBlank + 1).toString()};
    qsizetype wordStart = 0;
    qsizetype wordEnd = skipWord(head, indent);
    for (qsizetype gap = 0; wordStart < head.size(); ++gap) {
        result.head += head.sliced(wordStart, wordEnd - wordStart);
        wordStart = wordEnd;
        wordEnd = skipWord(head, skipBlanks(head, wordStart));
        if (wordStart < head.size())
            result.head += QString((gap + 1) * extraBlanks / gaps - gap * extraBlanks / gaps, u' ');
    }
    return result;
}

} // namespace zelto::print

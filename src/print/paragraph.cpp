// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/paragraph.h"

#include <algorithm>
#include <vector>

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

ParagraphLine RunningText::takeLine()
{
    if (m_paragraph.isEmpty())
        takeParagraph();
    m_paragraph = withoutTrailingBlanks(m_paragraph);
    qsizetype length = wordsThatFit();
    if (length == 0)
        length = charactersThatFit();
    const QStringView line = m_paragraph.first(length);
    m_paragraph = m_paragraph.sliced(skipBlanks(m_paragraph, length));
    return {.text = line, .last = m_paragraph.isEmpty()};
}

QString RunningText::rest() const
{
    return m_paragraph.isEmpty() ? m_rest.toString()
                                 : m_paragraph.toString() + u"\r\n"_s + m_rest.toString();
}

void RunningText::takeParagraph()
{
    const auto isBreak = [](QChar c) { return c == u'\r' || c == u'\n'; };
    const qsizetype length = std::ranges::find_if(m_rest, isBreak) - m_rest.begin();
    m_paragraph = m_rest.first(length);
    m_rest = m_rest.sliced(length);
    const qsizetype breakLength = m_rest.startsWith(u"\r\n") ? 2 : 1;
    m_rest = m_rest.sliced(std::min(breakLength, m_rest.size()));
}

/// Length of the whole words, blanks before them included, that stay below the width.
qsizetype RunningText::wordsThatFit() const
{
    double used = 0;
    qsizetype length = 0;
    while (length < m_paragraph.size()) {
        const qsizetype wordEnd = endOfWord(length, m_width - used);
        if (wordEnd < 0)
            break;
        used += m_measure.width(m_paragraph.sliced(length, wordEnd - length));
        if (used >= m_width)
            break;
        length = wordEnd;
    }
    return length;
}

/// Where the word that begins behind the place ends; negative when it is at least as wide as the
/// limit and not measured to its end.
qsizetype RunningText::endOfWord(qsizetype from, double limit) const
{
    for (qsizetype piece = FirstPiece;; piece *= 2) {
        const QStringView seen = m_paragraph.first(std::min(from + piece, m_paragraph.size()));
        const qsizetype end = skipWord(seen, skipBlanks(seen, from));
        if (end < seen.size() || seen.size() == m_paragraph.size())
            return end;
        if (m_measure.width(seen.sliced(from)) >= limit)
            return -1;
    }
}

/// As much of the first word as fits, but at least one character.
qsizetype RunningText::charactersThatFit() const
{
    for (qsizetype piece = FirstPiece;; piece *= 2) {
        const QStringView seen = m_paragraph.first(std::min(piece, m_paragraph.size()));
        const QStringView word = seen.first(skipWord(seen, skipBlanks(seen, 0)));
        const qsizetype fits = m_measure.fittingLength(word, m_width);
        if (fits == word.size() && word.size() < m_paragraph.size() && word.size() == seen.size())
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

    std::vector<qsizetype> gaps; // where they begin; the last one is that before the last word
    while (gaps.empty() || gaps.back() < head.size())
        gaps.push_back(skipWord(head, skipBlanks(head, gaps.empty() ? 0 : gaps.back())));
    const auto blanksUpTo = [&](std::size_t gap) {
        return static_cast<qsizetype>(gap) * extraBlanks / static_cast<qsizetype>(gaps.size());
    };
    JustifiedLine result{.head = head.toString(),
                         .lastWord = line.sliced(lastBlank + 1).toString()};
    for (std::size_t gap = gaps.size() - 1; gap > 0; --gap) // the places before stay good
        result.head.insert(gaps[gap - 1], QString(blanksUpTo(gap) - blanksUpTo(gap - 1), u' '));
    return result;
}

} // namespace zelto::print

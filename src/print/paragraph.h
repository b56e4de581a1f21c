// SPDX-License-Identifier: GPL-3.0-or-later
// Running text broken into paragraphs, lines and the blanks that widen a line.
#pragma once

#include "print/text_measure.h"

#include <QString>
#include <QStringView>

namespace zelto::print {

/// Takes the first paragraph, up to CR LF, CR or LF, off the front of the text.
[[nodiscard]] QStringView takeParagraph(QStringView& text);

/// One line of a paragraph.
struct ParagraphLine
{
    QStringView text;
    bool last = false; ///< nothing of the paragraph is left
};

/// Breaks paragraphs at blanks into lines narrower than a width. A single word that is too wide is
/// broken between characters; the blanks at a break belong to neither line.
class LineBreaker
{
public:
    /// Width in twips; the measure outlives the breaker.
    LineBreaker(const TextMeasure& measure, double width) : m_measure(measure), m_width(width) {}

    /// Takes the next line off the front of the paragraph. An empty paragraph is one empty line.
    [[nodiscard]] ParagraphLine takeLine(QStringView& paragraph) const;

private:
    [[nodiscard]] qsizetype wordsThatFit(QStringView paragraph) const;
    [[nodiscard]] qsizetype endOfWord(QStringView paragraph, qsizetype from, double limit) const;
    [[nodiscard]] qsizetype charactersThatFit(QStringView paragraph) const;

    const TextMeasure& m_measure;
    double m_width;
};

/// A line to be set flush on both sides: the head from the left edge, the last word ending at the
/// right one. Without a gap between words everything is in the head.
struct JustifiedLine
{
    QString head;
    QString lastWord;
};

/// Spreads the extra blanks evenly over the line's gaps between words.
[[nodiscard]] JustifiedLine justify(QStringView line, qsizetype extraBlanks);

} // namespace zelto::print

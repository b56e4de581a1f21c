// SPDX-License-Identifier: GPL-3.0-or-later
// Running text broken into lines, and the blanks that widen a line.
#pragma once

#include "print/font_metrics.h"

namespace zelto::print {

struct ParagraphLine
{
    QStringView text;
    bool last = false; ///< of its paragraph
};

/// A text of paragraphs, which end at CR LF, CR or LF, taken off line by line. Lines break at
/// blanks and are narrower than a width. A single word that is too wide is broken between
/// characters; the blanks at a break belong to neither line.
class RunningText
{
public:
    /// Width in twips. Text and measure outlive it.
    RunningText(QStringView text, const TextMeasure& measure, double width)
        : m_rest(text), m_measure(measure), m_width(width)
    {}

    [[nodiscard]] bool isEmpty() const { return m_paragraph.isEmpty() && m_rest.isEmpty(); }

    /// An empty paragraph is one empty line.
    ParagraphLine takeLine();

    /// What has not been taken.
    [[nodiscard]] QString rest() const;

private:
    void takeParagraph();
    [[nodiscard]] qsizetype wordsThatFit() const;
    [[nodiscard]] qsizetype endOfWord(qsizetype from, double limit) const;
    [[nodiscard]] qsizetype charactersThatFit() const;

    QStringView m_paragraph; ///< what is left of the current one
    QStringView m_rest;      ///< the paragraphs behind it
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

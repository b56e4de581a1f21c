// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/print_engine.h"

namespace zelto::print {

void PrintEngine::PrintParagraph(float column, float width, float& row, float lastRow,
                                 QString& text, Alignment alignment)
{
    const auto font = m_fonts.find(m_font);
    const LineBreaker breaker(*font, static_cast<double>(width) * static_cast<double>(m_charWidth));
    QStringView rest = text;
    QStringView paragraph;
    bool full = false;
    while (!full && !rest.isEmpty()) {
        paragraph = takeParagraph(rest);
        bool last = false;
        while (!full && !last) {
            const ParagraphLine line = breaker.takeLine(paragraph);
            printLine(row, column, width, line, alignment);
            row += 1;
            full = row >= lastRow;
            last = line.last;
        }
    }
    text =
        paragraph.isEmpty() ? rest.toString() : paragraph.toString() + u"\r\n"_s + rest.toString();
}

void PrintEngine::CountWrappedLines(float width, QString& text, int& count) const
{
    const auto font = m_fonts.find(m_font);
    const LineBreaker breaker(*font, static_cast<double>(width) * static_cast<double>(m_charWidth));
    count = 0;
    QStringView rest = text;
    while (!rest.isEmpty()) {
        QStringView paragraph = takeParagraph(rest);
        do
            ++count;
        while (!breaker.takeLine(paragraph).last);
    }
    text.clear();
}

void PrintEngine::printLine(float row, float column, float width, const ParagraphLine& line,
                            Alignment alignment)
{
    if (line.text.isEmpty())
        return;
    if (alignment == Alignment::Right)
        PrintRight(row, column + width - 1, 0, line.text.toString());
    else if (alignment == Alignment::Centred)
        PrintCentred(row, column + width / 2, 0, line.text.toString());
    else if (alignment == Alignment::Justified && !line.last)
        printJustified(row, column, width, line.text);
    else
        PrintText(row, column, 0, line.text.toString());
}

void PrintEngine::printJustified(float row, float column, float width, QStringView line)
{
    const double blank = metrics().width(u" ");
    const double room =
        static_cast<double>(width) * static_cast<double>(m_charWidth) - metrics().width(line);
    const auto extraBlanks = room > 0 && blank > 0 ? static_cast<qsizetype>(room / blank) : 0;
    const JustifiedLine justified = justify(line, extraBlanks);
    PrintText(row, column, 0, justified.head);
    if (!justified.lastWord.isEmpty())
        PrintRight(row, column + width, 0, justified.lastWord);
}

} // namespace zelto::print

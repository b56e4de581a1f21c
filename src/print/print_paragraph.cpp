// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/print_engine.h"

namespace zelto::print {

void PrintEngine::PrintParagraph(float column, float width, float& row, float lastRow,
                                 QString& text, Alignment alignment)
{
    RunningText rest(text, metrics(), widthInTwips(width));
    for (bool full = false; !full && !rest.isEmpty(); full = row >= lastRow) {
        printLine(row, column, width, rest.takeLine(), alignment);
        row += 1;
    }
    text = rest.rest();
}

void PrintEngine::CountWrappedLines(float width, QString& text, int& count) const
{
    RunningText rest(text, metrics(), widthInTwips(width));
    for (count = 0; !rest.isEmpty(); ++count)
        rest.takeLine();
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
    const double spare = widthInTwips(width) - metrics().width(line);
    const auto extraBlanks = spare > 0 && blank > 0 ? static_cast<qsizetype>(spare / blank) : 0;
    const JustifiedLine justified = justify(line, extraBlanks);
    PrintText(row, column, 0, justified.head);
    if (!justified.lastWord.isEmpty())
        PrintRight(row, column + width, 0, justified.lastWord);
}

} // namespace zelto::print

// SPDX-License-Identifier: GPL-3.0-or-later
// Texts in the room that they have on paper. Places and widths are columns of the engine.
#pragma once

#include "print/print_engine.h"

namespace zelto::reports {

/// Has a text printed that has so much room: in the size in force, else smaller on the same
/// baseline, so many rows lower, at last with an ellipsis at its end.
template <typename Print>
void printFitted(print::PrintEngine& engine, const QString& text, float width, const Print& print)
{
    const float size = engine.FontSize();
    const print::FittedText shown = engine.fitted(text, width);
    if (shown.size == size)
        return print(shown.text, 0.0F);
    engine.SetFontSize(shown.size);
    print(shown.text, static_cast<float>(shown.drop) / engine.LineHeight());
    engine.SetFontSize(size);
}

/// How wide the text is on paper: blanks at its end leave no ink.
[[nodiscard]] inline float inkWidth(const print::PrintEngine& engine, QStringView text)
{
    while (text.endsWith(u' '))
        text.chop(1);
    return engine.textWidth(text) / engine.CharWidth();
}

/// Where a text must end that has a figure behind it which ends at the column.
[[nodiscard]] inline float endBefore(const print::PrintEngine& engine, float column,
                                     QStringView figure)
{
    constexpr float Gap = 1;
    while (figure.startsWith(u' '))
        figure = figure.sliced(1);
    return column - Gap - engine.textWidth(figure) / engine.CharWidth();
}

} // namespace zelto::reports

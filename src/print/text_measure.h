// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QStringView>

namespace zelto::print {

/// Measures texts in one font, in twips.
class TextMeasure
{
public:
    virtual ~TextMeasure() = default;

    [[nodiscard]] virtual double width(QStringView text) const = 0;

    /// Length of the longest front part of the text that is not wider than the limit; a character
    /// of two UTF-16 units is never cut in half.
    [[nodiscard]] virtual qsizetype fittingLength(QStringView text, double limit) const = 0;
};

} // namespace zelto::print

// SPDX-License-Identifier: GPL-3.0-or-later
// Figures and texts laid out in fixed-width fields described by a mask.
#pragma once

#include "text/error.h"

#include <QString>
#include <QStringView>

#include <concepts>
#include <string>
#include <string_view>
#include <utility>

namespace zelto::text {

/// More than MaxMaskValues values or fields: a fault of the caller's mask.
class MaskError : public Error
{
public:
    explicit MaskError(const QString& description) : Error(OutOfRange, description) {}

    /// The number of every failure of this kind in the error report.
    static constexpr int OutOfRange = 9;
};

/// As many values and fields as one mask takes.
inline constexpr int MaxMaskValues = 30;

/// One numeric field of a mask, such as "####0.000": "0" a digit always shown, "#" a digit shown
/// only when significant, the first "." the decimal point, "-" and "+" shown as they stand.
class NumberMask
{
public:
    /// The view must outlive the mask.
    constexpr explicit NumberMask(std::string_view field) : m_field(field)
    {
        m_point = field.find('.');
        if (m_point == std::string_view::npos)
            m_point = field.size();
        for (std::size_t i = 0; i < field.size(); ++i)
            count(i, field[i]);
    }

    [[nodiscard]] constexpr std::size_t width() const { return m_field.size(); }

    /// The number rounded to the mask's places on its text of fifteen significant digits (a single:
    /// of seven), halves away from zero; right-aligned in width() characters, of a longer text the
    /// last ones.
    template <std::floating_point Real>
    void format(Real number, std::string& out) const;

    /// The number that format() shows, where it fits.
    template <std::floating_point Real>
    [[nodiscard]] double shown(Real number) const;

    /// Whether format() shows the whole number: finite, and neither a digit nor the sign is lost.
    template <std::floating_point Real>
    [[nodiscard]] bool fits(Real number) const;

    /// The same as a new text.
    template <std::floating_point Real>
    [[nodiscard]] QString format(Real number) const
    {
        std::string out;
        format(number, out);
        return QString::fromLatin1(out.data(), static_cast<qsizetype>(out.size()));
    }

private:
    constexpr void count(std::size_t i, char c)
    {
        const bool digit = c == '#' || c == '0';
        if (i < m_point && digit) {
            ++m_integerPlaces;
            m_integerLimit *= 10;
            if (c == '0' || m_minInteger > 0)
                ++m_minInteger;
        } else if (digit) {
            ++m_places;
            if (c == '0')
                m_minPlaces = m_places;
        }
    }
    class BackWriter;
    void putInteger(std::string_view digits, BackWriter& out) const;
    void putDecimals(std::string_view digits, BackWriter& out) const;

    std::string_view m_field;
    std::size_t m_point = 0;
    int m_integerPlaces = 0;
    double m_integerLimit = 1; ///< more than the integer places hold
    int m_minInteger = 0;
    int m_places = 0;
    int m_minPlaces = 0;
};

/// The mask with its fields filled from the values (separated by TAB, at most 30), trailing blanks
/// removed. Numeric fields ("0", "#", "."), text fields (framed by backslashes, both counting to
/// the width) and one-character fields ("!") take the values in their order; a missing value is
/// empty and reads as 0. The point of a figure is "." and both separators are read, so the
/// result does not depend on the machine. Throws MaskError beyond thirty values or fields.
QString FormatMask(QStringView mask, QStringView values);

/// The number of the text with two decimals, decimal comma and a blank between groups of three
/// digits ("1 234,50"); empty when the number is 0, and for modes 1 and 2, whose masks are empty.
QString FormatGroupedComma(const QString& text, int mode = 0);

/// As FormatGroupedComma, with a decimal point.
QString FormatGroupedPoint(const QString& text, int mode = 0);

/// Exchanges two values.
template <typename T>
void SwapValues(T& first, T& second)
{
    std::swap(first, second);
}

} // namespace zelto::text

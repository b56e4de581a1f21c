// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/format_mask.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <type_traits>

namespace zelto::text {

namespace {

/// Enough for the largest double and any field the system prints.
constexpr std::size_t MaxDigits = 400;

/// The decimal digits of a non-negative number rounded to a number of places.
struct RoundedDigits
{
    std::array<char, MaxDigits> digits; ///< integer digits without leading zeros, then the places
    std::size_t size = 0;
    std::size_t integerDigits = 0;
};

/// Adds one unit in the last place; the digit that this may put in front was reserved at [0].
void increment(const char* first, char* last)
{
    while (last != first) {
        --last;
        if (*last != '9') {
            ++*last;
            return;
        }
        *last = '0';
    }
}

/// A positive number as the digits of its text and the power of ten of the first.
template <typename Real>
struct Significant
{
    static constexpr int Count = std::is_same_v<Real, float> ? 7 : 15; ///< that the text keeps

    explicit Significant(Real magnitude)
    {
        digits[0] = '0'; // spare, for a carry
        if (std::is_same_v<Real, float> && magnitude < 1e7F && double{magnitude} >= 0.01)
            readProduct(double{magnitude});
        else
            readText(magnitude);
    }

    /// The digits of a single of usual size are a product that double precision holds exactly: 24
    /// bits of the single and at most 19 of a power of five.
    void readProduct(double magnitude)
    {
        double scale = 1;
        for (exponent = Count - 1; magnitude * scale < 1e6; --exponent)
            scale *= 10;
        std::to_chars(&digits[1], digits.data() + digits.size(), std::lrint(magnitude * scale));
    }

    void readText(Real magnitude)
    {
        // "d.dddddde±xx": the digits go without the point.
        std::array<char, 32> text{};
        const auto written = std::to_chars(text.data(), text.data() + text.size(), magnitude,
                                           std::chars_format::scientific, Count - 1);
        digits[1] = text[0];
        std::copy_n(&text[2], Count - 1, &digits[2]);
        const char* power = &text[Count + 2];
        std::from_chars(power + (*power == '+' ? 1 : 0), written.ptr, exponent);
    }

    /// Cuts behind the given decimal place, a half goes up.
    void round(int places)
    {
        kept = std::clamp(exponent + 1 + places, -1, Count) + 1; // counted with the spare digit
        if (kept >= 1 && kept <= Count && digits[static_cast<std::size_t>(kept)] >= '5')
            increment(digits.data(), digits.data() + kept);
    }

    /// The digit worth ten to that power.
    [[nodiscard]] char at(int power) const
    {
        const int index = exponent - power + 1;
        return index >= 0 && index < kept ? digits[static_cast<std::size_t>(index)] : '0';
    }

    std::array<char, Count + 1> digits{};
    int exponent = 0;
    int kept = Count + 1;
};

/// Rounds on the decimal text: 0.0005 is a half and goes up although its binary value may lie
/// below.
template <typename Real>
RoundedDigits roundDigits(Real magnitude, int places)
{
    Significant<Real> significant{magnitude};
    significant.round(places);
    int integerDigits = std::max(significant.exponent + 2, 0);
    while (integerDigits > 0 && significant.at(integerDigits - 1) == '0')
        --integerDigits;
    RoundedDigits result;
    for (int power = integerDigits - 1; power >= -places && result.size < MaxDigits; --power)
        result.digits[result.size++] = significant.at(power);
    result.integerDigits = static_cast<std::size_t>(integerDigits);
    return result;
}

} // namespace

/// Fills a text from its end; what it has no room for at the front is dropped.
class NumberMask::BackWriter
{
public:
    explicit BackWriter(std::string& text) : m_text(text), m_left(text.size()) {}

    void put(char c)
    {
        if (m_left > 0)
            m_text[--m_left] = c;
    }

private:
    std::string& m_text;
    std::size_t m_left;
};

void NumberMask::putDecimals(std::string_view digits, BackWriter& out) const
{
    if (m_point == m_field.size())
        return;
    std::size_t shown = digits.size();
    while (shown > static_cast<std::size_t>(m_minPlaces) && digits[shown - 1] == '0')
        --shown;
    auto place = static_cast<std::size_t>(m_places);
    for (std::size_t i = m_field.size(); --i > m_point;) {
        if (m_field[i] != '#' && m_field[i] != '0')
            out.put(m_field[i]);
        else if (--place < shown)
            out.put(digits[place]);
    }
    out.put('.');
}

void NumberMask::putInteger(std::string_view digits, BackWriter& out) const
{
    int place = 0; // counted from the units
    const auto last = static_cast<int>(digits.size()) - 1;
    for (std::size_t i = m_point; i-- > 0;) {
        if (m_field[i] != '#' && m_field[i] != '0') {
            out.put(m_field[i]);
            continue;
        }
        if (place <= last)
            out.put(digits[static_cast<std::size_t>(last - place)]);
        else if (place < m_minInteger)
            out.put('0');
        ++place;
        // The first place also takes the digits for which the field has none.
        for (; place >= m_integerPlaces && place <= last; ++place)
            out.put(digits[static_cast<std::size_t>(last - place)]);
    }
}

template <std::floating_point Real>
void NumberMask::format(Real number, std::string& out) const
{
    const RoundedDigits rounded =
        roundDigits(std::isfinite(number) ? std::abs(number) : Real{0}, m_places);
    const std::string_view digits{rounded.digits.data(), rounded.size};
    out.assign(width(), ' ');
    BackWriter writer(out);
    putDecimals(digits.substr(rounded.integerDigits), writer);
    putInteger(digits.substr(0, rounded.integerDigits), writer);
    if (number < 0)
        writer.put('-');
}

template <std::floating_point Real>
double NumberMask::shown(Real number) const
{
    const RoundedDigits rounded = roundDigits(std::abs(number), m_places);
    double whole = 0;
    for (std::size_t i = 0; i < rounded.size; ++i)
        whole = whole * 10 + (rounded.digits[i] - '0');
    return std::copysign(whole / std::pow(10.0, m_places), double{number});
}

template <std::floating_point Real>
bool NumberMask::fits(Real number) const
{
    if (number >= 0 && double{number} < m_integerLimit - 1) // whatever rounding adds
        return true;
    if (!std::isfinite(number))
        return false;
    const std::size_t digits = std::max(roundDigits(std::abs(number), m_places).integerDigits,
                                        static_cast<std::size_t>(m_minInteger));
    return digits + (number < 0 ? 1 : 0) <= m_point;
}

template void NumberMask::format(double, std::string&) const;
template void NumberMask::format(float, std::string&) const;
template double NumberMask::shown(double) const;
template double NumberMask::shown(float) const;
template bool NumberMask::fits(double) const;
template bool NumberMask::fits(float) const;

} // namespace zelto::text

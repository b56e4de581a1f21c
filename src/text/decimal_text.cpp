// SPDX-License-Identifier: GPL-3.0-or-later
#include "text/decimal_text.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <limits>

namespace zelto::text {

namespace {

constexpr bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

std::size_t skipDigits(std::string_view text, std::size_t from)
{
    while (from < text.size() && isDigit(text[from]))
        ++from;
    return from;
}

/// Length of the exponent that starts at `from`, 0 when what stands there is none.
std::size_t exponentLength(std::string_view text, std::size_t from)
{
    if (from >= text.size() || (text[from] != 'E' && text[from] != 'e'))
        return 0;
    std::size_t digits = from + 1;
    if (digits < text.size() && (text[digits] == '+' || text[digits] == '-'))
        ++digits;
    const std::size_t end = skipDigits(text, digits);
    return end > digits ? end - from : 0;
}

/// Length of the number without sign that the text begins with, 0 when it begins with none.
std::size_t unsignedLength(std::string_view text)
{
    const std::size_t integerEnd = skipDigits(text, 0);
    std::size_t end = integerEnd;
    if (end < text.size() && text[end] == '.')
        end = skipDigits(text, end + 1);
    if (integerEnd == 0 && end < 2)
        return 0;
    return end + exponentLength(text, end);
}

/// from_chars leaves the value alone beyond the range: the largest number stands for too large a
/// one, 0 for too small a one. The power of ten of the first digit tells which of both it is.
double outOfRange(std::string_view number, bool negative)
{
    const std::size_t mantissaEnd = std::min(number.find_first_of("eE"), number.size());
    const auto first = static_cast<std::ptrdiff_t>(number.find_first_of("123456789"));
    const auto point = static_cast<std::ptrdiff_t>(std::min(number.find('.'), mantissaEnd));
    double exponent = 0; // as a double, since it may have any number of digits itself
    if (mantissaEnd < number.size())
        exponent = leadingNumber(number.substr(mantissaEnd + 1));
    if (static_cast<double>(point - first) + exponent < 0)
        return 0;
    const double largest = std::numeric_limits<double>::max();
    return negative ? -largest : largest;
}

template <typename Real, int Digits>
std::string_view writeGeneral(Real number, std::span<char, DecimalTextSize> buffer)
{
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number,
                                            std::chars_format::general, Digits);
    return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
}

} // namespace

DecimalSeparators DecimalSeparators::detect(const QLocale& locale)
{
    if (locale.toString(1.5, 'f', 1).mid(1, 1) == u",")
        return {.LocalDecimalSeparator = u',', .ForeignDecimalSeparator = u'.'};
    return {.LocalDecimalSeparator = u'.', .ForeignDecimalSeparator = u','};
}

void StripBlanks(QString& text)
{
    text.remove(u' ');
}

QString ToPointDecimal(QString text)
{
    ToLocalDecimalInPlace(text, {});
    return text;
}

QString ToLocalDecimal(QString text, const DecimalSeparators& separators)
{
    ToLocalDecimalInPlace(text, separators);
    if (text.startsWith(separators.LocalDecimalSeparator))
        text.prepend(u'0');
    return text;
}

void ToLocalDecimalInPlace(QString& text, const DecimalSeparators& separators)
{
    const qsizetype foreign = text.indexOf(separators.ForeignDecimalSeparator);
    if (foreign >= 0)
        text[foreign] = separators.LocalDecimalSeparator;
    StripBlanks(text);
}

double leadingNumber(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+'))
        text.remove_prefix(1);

    const std::string_view number = text.substr(0, unsignedLength(text));
    if (number.empty())
        return 0;
    double value = 0;
    const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
    if (result.ec == std::errc::result_out_of_range)
        return outOfRange(number, negative);
    return negative ? -value : value;
}

double leadingNumber(QStringView text)
{
    // Digits, signs and points are ASCII: the first other character ends every number.
    std::string ascii;
    ascii.reserve(static_cast<std::size_t>(text.size()));
    for (const QChar c : text) {
        if (c.unicode() == 0 || c.unicode() > 127)
            break;
        ascii.push_back(static_cast<char>(c.unicode()));
    }
    return leadingNumber(std::string_view{ascii});
}

bool isNumber(std::string_view text)
{
    text.remove_prefix(std::min(text.find_first_not_of(' '), text.size()));
    text = text.substr(0, text.find_last_not_of(' ') + 1);
    if (text.starts_with('-') || text.starts_with('+'))
        text.remove_prefix(1);
    return !text.empty() && unsignedLength(text) == text.size();
}

bool isNumber(QStringView text)
{
    return isNumber(std::string_view{text.toLatin1().toStdString()});
}

double readNumber(const QString& text)
{
    return leadingNumber(QStringView{ToPointDecimal(text)});
}

std::string_view decimalText(float number, std::span<char, DecimalTextSize> buffer)
{
    return writeGeneral<float, std::numeric_limits<float>::digits10 + 1>(number, buffer);
}

QString decimalText(float number)
{
    std::array<char, DecimalTextSize> buffer{};
    return QString::fromLatin1(decimalText(number, buffer));
}

QString decimalText(double number)
{
    std::array<char, DecimalTextSize> buffer{};
    return QString::fromLatin1(
        writeGeneral<double, std::numeric_limits<double>::digits10>(number, buffer));
}

} // namespace zelto::text

// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers kept as text: normalising, reading and writing them on any machine.
#pragma once

#include <QLocale>
#include <QString>

#include <span>
#include <string_view>

namespace zelto::text {

/// The decimal separator of the machine's number formatting and the other one of "," and ".".
struct DecimalSeparators
{
    QChar LocalDecimalSeparator = u'.';
    QChar ForeignDecimalSeparator = u',';

    /// The pair for a machine that formats three halves with "," or with anything else.
    static DecimalSeparators detect(const QLocale& locale = QLocale::system());
};

/// The text without blanks and with its first "," turned into ".".
QString ToPointDecimal(QString text);

/// The text with its first foreign separator turned into the local one, without blanks, and with
/// "0" in front when it would begin with the separator.
QString ToLocalDecimal(QString text, const DecimalSeparators& separators);

/// As ToLocalDecimal on the text itself, but never puts "0" in front.
void ToLocalDecimalInPlace(QString& text, const DecimalSeparators& separators);

/// Removes every blank.
void StripBlanks(QString& text);

/// The number that the text begins with: leading blanks, sign, digits, one ".", digits, exponent.
/// The rest is ignored and a text without a number reads as 0. Numbers too large for a double read
/// as the largest double of their sign, so the result is always finite.
double leadingNumber(std::string_view text);
double leadingNumber(QStringView text);

/// Whether leadingNumber reads the whole text, blanks around it aside.
bool isNumber(std::string_view text);
bool isNumber(QStringView text);

/// leadingNumber of the text after ToPointDecimal, for figures that may hold either separator.
double readNumber(const QString& text);

/// The text of the number at seven significant digits (float) or fifteen (double), with
/// "." as decimal point and an exponent beyond that many integer digits.
QString decimalText(float number);
QString decimalText(double number);

/// Room enough for any decimalText, and the same text written into it.
inline constexpr std::size_t DecimalTextSize = 32;
std::string_view decimalText(float number, std::span<char, DecimalTextSize> buffer);

} // namespace zelto::text

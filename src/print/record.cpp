// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/record.h"

#include "text/decimal_text.h"

#include <QStringEncoder>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <span>

namespace zelto::print {

namespace {

constexpr char Tab = '\t';
constexpr char TabInText = 27;

/// Digits and sign of any int.
constexpr std::ptrdiff_t MaxIntegerLength = 11;

/// A character of a text as a record can hold it.
constexpr char fieldCharacter(char c)
{
    if (c == Tab)
        return TabInText;
    return c == '\r' || c == '\n' ? ' ' : c;
}

/// The number in thousandths when it is a whole count of them of at most seven digits, as nearly
/// all coordinates are; else 0.
int wholeThousandths(float number)
{
    const double thousandths = static_cast<double>(number) * 1000;
    if (!(std::abs(thousandths) < 1e7) || thousandths != std::trunc(thousandths))
        return 0;
    return static_cast<int>(thousandths);
}

/// Digits of a positive number of thousandths, without trailing zeros behind the point.
std::string_view writeThousandths(int thousandths, std::span<char, text::DecimalTextSize> buffer)
{
    char* end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), thousandths / 1000).ptr;
    int decimals = thousandths % 1000;
    if (decimals != 0)
        *end++ = '.';
    for (int place = 100; decimals != 0; place /= 10) {
        *end++ = static_cast<char>('0' + decimals / place);
        decimals %= place;
    }
    return {buffer.data(), static_cast<std::size_t>(end - buffer.data())};
}

/// The number of a field: blanks do not count, and either separator is the decimal point. A second
/// one ends the number.
double readNumber(std::string_view field)
{
    std::array<char, 64> normal{};
    std::size_t length = 0;
    for (const char c : field) {
        if (c == ' ')
            continue;
        if (length == normal.size())
            break;
        normal[length++] = c == ',' ? '.' : c;
    }
    return text::leadingNumber(std::string_view{normal.data(), length});
}

} // namespace

void RecordBuffer::grow()
{
    const std::size_t used = size();
    m_block.resize(used + 4 * MaxRecordLength);
    m_end = m_block.data() + used;
}

void RecordBuffer::appendField(float number)
{
    if (!std::isfinite(number))
        return appendField(0);
    if (std::abs(number) < 1e7F && number == static_cast<float>(static_cast<int>(number)))
        return appendField(static_cast<int>(number));
    std::array<char, text::DecimalTextSize> buffer{};
    const int thousandths = wholeThousandths(std::abs(number));
    const std::string_view digits = thousandths > 0 ? writeThousandths(thousandths, buffer)
                                                    : text::decimalText(std::abs(number), buffer);
    *m_end++ = number < 0 ? '-' : ' ';
    for (const char c : digits)
        *m_end++ = c == '.' ? m_separator : c;
    *m_end++ = ' ';
}

void RecordBuffer::appendField(int number)
{
    if (number >= 0)
        *m_end++ = ' ';
    m_end = std::to_chars(m_end, m_end + MaxIntegerLength, number).ptr;
    *m_end++ = ' ';
}

void RecordBuffer::appendField(QStringView text)
{
    text = text.first(std::min(text.size(), MaxRecordText));
    char* const start = m_end;
    for (const QChar c : text) {
        if (c.unicode() >= 0x80) { // rare, and then the whole field is left to the converter
            QStringEncoder encoder(QStringEncoder::Utf8, QStringEncoder::Flag::Stateless);
            m_end = encoder.appendToBuffer(start, text);
            std::transform(start, m_end, start, fieldCharacter);
            return;
        }
        *m_end++ = fieldCharacter(static_cast<char>(c.unicode()));
    }
}

RecordFields::RecordFields(std::string_view line)
{
    for (std::string_view& field : m_fields) {
        ++m_count;
        const std::size_t end = line.find(Tab);
        field = line.substr(0, end);
        if (end == std::string_view::npos)
            return;
        line.remove_prefix(end + 1);
    }
}

Opcode RecordFields::opcode() const
{
    const std::string_view digits = m_fields[0];
    const std::size_t first = digits.find_first_not_of(' ');
    if (first == std::string_view::npos || digits[first] < '0' || digits[first] > '9')
        return Opcode{-1};
    const float value = number(0);
    return value == std::trunc(value) ? Opcode{static_cast<int>(value)} : Opcode{-1};
}

float RecordFields::number(std::size_t field) const
{
    constexpr double Limit = 1e9;
    return static_cast<float>(std::clamp(readNumber(m_fields.at(field)), -Limit, Limit));
}

QString RecordFields::text(std::size_t field) const
{
    const std::string_view bytes = m_fields.at(field);
    QString text = QString::fromUtf8(bytes.data(), static_cast<qsizetype>(bytes.size()));
    return text.replace(QLatin1Char{TabInText}, QLatin1Char{Tab});
}

} // namespace zelto::print

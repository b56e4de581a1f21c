// SPDX-License-Identifier: GPL-3.0-or-later
// The records of a page file: one line each, fields separated by TAB, the first one the opcode.
#pragma once

#include <QString>
#include <QStringView>

#include <algorithm>
#include <array>
#include <string_view>
#include <type_traits>
#include <vector>

namespace zelto::print {

/// What a record does when its page is replayed.
enum class Opcode : int {
    State = 0,
    FontName = 10,
    FontSize = 11,
    FontBold = 12,
    FontUnderline = 13,
    Colours = 14,
    Field = 20,
    Text = 21,
    Right = 22,
    Centred = 23,
    Number = 24,
    Box = 30,
    HLine = 31,
    VLine = 32,
    Picture = 90,
};

/// As many UTF-16 units as a text field takes: more than any page can show on one line.
inline constexpr qsizetype MaxRecordText = 16'384;

/// No record is longer than this in bytes; readers drop what a damaged line holds beyond it.
inline constexpr std::size_t MaxRecordLength = 65'536;

/// Appends records to one growing block of bytes.
class RecordBuffer
{
public:
    /// Numbers are written with the separator ("," or ".").
    explicit RecordBuffer(char decimalSeparator) : m_separator(decimalSeparator) {}
    RecordBuffer(const RecordBuffer&) = delete;
    RecordBuffer& operator=(const RecordBuffer&) = delete;

    /// One whole record. Fields are float, int, bool (true is -1) or texts, one of them long.
    template <typename... Fields>
    void append(Opcode opcode, const Fields&... fields)
    {
        reserve();
        appendField(static_cast<int>(opcode));
        ((*m_end++ = '\t', appendField(fields)), ...);
        *m_end++ = '\r';
        *m_end++ = '\n';
    }

    [[nodiscard]] std::string_view bytes() const { return {m_block.data(), size()}; }
    [[nodiscard]] std::size_t size() const
    {
        return static_cast<std::size_t>(m_end - m_block.data());
    }
    void clear() { m_end = m_block.data(); }

private:
    /// Space for a whole record, so that its fields need not ask.
    void reserve()
    {
        if (m_block.size() - size() < MaxRecordLength)
            grow();
    }
    void grow();
    void appendField(float number);
    void appendField(int number);
    void appendField(bool flag) { appendField(flag ? -1 : 0); }
    void appendField(QStringView text);
    void appendField(const QString& text) { appendField(QStringView{text}); }
    /// Of ASCII alone, as masks write figures.
    void appendField(std::string_view figure)
    {
        m_end = std::copy(figure.begin(), figure.end(), m_end);
    }

    char m_separator;
    std::vector<char> m_block;
    char* m_end = m_block.data();
};

/// The fields of one line read from a page file. Nothing in a line makes reading it fail: what is
/// no number reads as 0, a missing field as empty.
class RecordFields
{
public:
    /// The line, without its end, must outlive the fields.
    explicit RecordFields(std::string_view line);

    [[nodiscard]] int count() const { return m_count; }

    /// The number of field 0, or -1 when it is none.
    [[nodiscard]] Opcode opcode() const;

    /// Between -1e9 and 1e9; either decimal separator is read.
    [[nodiscard]] float number(std::size_t field) const;

    /// The text with its TABs put back.
    [[nodiscard]] QString text(std::size_t field) const;

    /// The field as a value of the type that was written.
    template <typename Value>
    [[nodiscard]] Value value(std::size_t field) const
    {
        if constexpr (std::is_same_v<Value, QString>)
            return text(field);
        else if constexpr (std::is_same_v<Value, bool>)
            return static_cast<int>(number(field)) != 0;
        else
            return static_cast<Value>(number(field));
    }

private:
    static constexpr std::size_t MaxFields = 11;

    std::array<std::string_view, MaxFields> m_fields;
    int m_count = 0;
};

} // namespace zelto::print

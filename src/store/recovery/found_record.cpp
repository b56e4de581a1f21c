// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/recovery/found_record.h"

#include <QStringDecoder>

#include <array>

namespace zelto::store {

namespace {

/// Far more than any table of a job has.
constexpr std::size_t MaxFields = 100;

// What a field is, by its number in the record's header; between Null and Real are the whole
// numbers. From FirstBlob on bytes and texts take turns.
constexpr std::uint64_t Null = 0;
constexpr std::uint64_t Real = 7;
constexpr std::uint64_t Zero = 8;
constexpr std::uint64_t One = 9;
constexpr std::uint64_t FirstBlob = 12;

/// How many bytes such a field takes; none for the two numbers that no record has.
std::optional<std::uint64_t> sizeOf(std::uint64_t type)
{
    constexpr std::array<std::uint64_t, One + 1> Sizes{0, 1, 2, 3, 4, 6, 8, 8, 0, 0};
    if (type < Sizes.size())
        return Sizes.at(type);
    if (type < FirstBlob)
        return std::nullopt;
    return (type - FirstBlob) / 2;
}

struct Header
{
    std::size_t size = 0;
    std::vector<std::uint64_t> types{};
};

/// None unless it describes a record of that length.
std::optional<Header> readHeader(Bytes payload, std::uint64_t length)
{
    const std::optional<Varint> size = varintAt(payload, 0);
    if (!size || size->value > payload.size())
        return std::nullopt;
    Header header{.size = size->value};
    std::uint64_t described = header.size;
    for (std::size_t at = size->length; at < header.size;) {
        const std::optional<Varint> type = varintAt(payload.first(header.size), at);
        const std::optional<std::uint64_t> field = type ? sizeOf(type->value) : std::nullopt;
        if (!field || header.types.size() == MaxFields)
            return std::nullopt;
        at += type->length;
        described += *field;
        header.types.push_back(type->value);
    }
    return described == length ? std::optional(header) : std::nullopt;
}

qint64 signedNumber(Bytes bytes)
{
    const std::uint64_t number = numberAt(bytes, 0, bytes.size()).value_or(0);
    const auto unused = static_cast<unsigned int>(8 * (8 - bytes.size()));
    return static_cast<qint64>(number << unused) >> unused;
}

QString decoded(Bytes bytes, QStringConverter::Encoding encoding)
{
    // A mark at the beginning is part of the text.
    QStringDecoder decode(encoding, QStringConverter::Flag::ConvertInitialBom);
    return decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

/// None for a content that no field of a job has.
std::optional<Value> fieldValue(std::uint64_t type, Bytes bytes,
                                QStringConverter::Encoding encoding)
{
    if (type == Null)
        return Value();
    if (type < Real)
        return Value(signedNumber(bytes));
    if (type == Zero || type == One)
        return Value(type - Zero);
    if (type > FirstBlob && type % 2 == 1)
        return Value(decoded(bytes, encoding));
    return std::nullopt;
}

} // namespace

std::optional<Varint> varintAt(Bytes bytes, std::size_t offset)
{
    constexpr std::size_t Longest = 9;
    Varint number;
    while (number.length < Longest) {
        const std::optional<std::uint64_t> byte = numberAt(bytes, offset + number.length, 1);
        if (!byte)
            return std::nullopt;
        ++number.length;
        // The last of nine bytes counts whole.
        if (number.length == Longest)
            number.value = number.value << 8U | *byte;
        else
            number.value = number.value << 7U | (*byte & 0x7fU);
        if (*byte < 0x80U)
            break;
    }
    return number;
}

bool describesRecord(Bytes payload, std::uint64_t length)
{
    return readHeader(payload, length).has_value();
}

std::optional<FoundRecord> readRecord(Bytes payload, std::uint64_t length,
                                      QStringConverter::Encoding encoding)
{
    const std::optional<Header> header = readHeader(payload, length);
    if (!header)
        return std::nullopt;
    FoundRecord record;
    std::uint64_t at = header->size;
    for (const std::uint64_t type : header->types) {
        const std::uint64_t size = sizeOf(type).value_or(0);
        std::optional<Value> value;
        if (at <= payload.size() && size <= payload.size() - at)
            value = fieldValue(type, payload.subspan(at, size), encoding);
        record.whole = record.whole && value.has_value();
        record.values.push_back(value.value_or(Value()));
        at += size;
    }
    return record;
}

} // namespace zelto::store

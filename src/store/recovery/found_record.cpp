// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/recovery/found_record.h"

#include <QStringDecoder>

#include <array>

namespace zelto::store {

namespace {

/// Far more than any table of a job has.
constexpr std::size_t MaxFields = 100;

/// How a field is stored: its serial type in the record's header.
struct FieldType
{
    enum class Kind { Null, Integer, Constant, Text, Other };

    Kind kind = Kind::Null;
    std::uint64_t size = 0;
    int constant = 0;
};

/// None for the two types that no record has.
std::optional<FieldType> fieldType(std::uint64_t serial)
{
    using Kind = FieldType::Kind;
    constexpr std::array<std::uint64_t, 7> IntegerSizes{0, 1, 2, 3, 4, 6, 8};
    constexpr std::uint64_t Real = 7;
    constexpr std::uint64_t FirstBlob = 12;
    if (serial == 0)
        return FieldType{};
    if (serial < IntegerSizes.size())
        return FieldType{.kind = Kind::Integer, .size = IntegerSizes[serial]};
    if (serial == Real)
        return FieldType{.kind = Kind::Other, .size = 8};
    if (serial == 8 || serial == 9)
        return FieldType{.kind = Kind::Constant, .constant = static_cast<int>(serial - 8)};
    if (serial < FirstBlob)
        return std::nullopt;
    return FieldType{.kind = serial % 2 == 1 ? Kind::Text : Kind::Other,
                     .size = (serial - FirstBlob) / 2};
}

struct Header
{
    std::vector<FieldType> types{};
    std::uint64_t recordLength = 0;
};

std::optional<Header> readHeader(Bytes payload)
{
    const std::optional<Varint> headerSize = varintAt(payload, 0);
    if (!headerSize || headerSize->value > payload.size())
        return std::nullopt;
    Header header{.recordLength = headerSize->value};
    const Bytes serials = payload.first(headerSize->value);
    for (std::size_t at = headerSize->length; at < serials.size();) {
        const std::optional<Varint> serial = varintAt(serials, at);
        const std::optional<FieldType> type = serial ? fieldType(serial->value) : std::nullopt;
        if (!type || header.types.size() == MaxFields)
            return std::nullopt;
        at += serial->length;
        header.recordLength += type->size;
        header.types.push_back(*type);
    }
    return header;
}

qint64 signedNumber(Bytes bytes)
{
    const std::uint64_t number = numberAt(bytes, 0, bytes.size()).value_or(0);
    const auto unused = static_cast<unsigned int>(8 * (8 - bytes.size()));
    return static_cast<qint64>(number << unused) >> unused;
}

QString decoded(Bytes bytes, TextEncoding encoding)
{
    constexpr std::array Encodings{QStringConverter::Utf8, QStringConverter::Utf16LE,
                                   QStringConverter::Utf16BE};
    // A mark at the beginning is part of the text.
    QStringDecoder decode(Encodings.at(static_cast<std::size_t>(encoding)),
                          QStringConverter::Flag::ConvertInitialBom);
    return decode(QByteArrayView(bytes.data(), static_cast<qsizetype>(bytes.size())));
}

/// None for a content that no field of a job has.
std::optional<Value> fieldValue(const FieldType& type, Bytes bytes, TextEncoding encoding)
{
    switch (type.kind) {
    case FieldType::Kind::Null:
        return Value();
    case FieldType::Kind::Constant:
        return Value(type.constant);
    case FieldType::Kind::Integer:
        return Value(signedNumber(bytes));
    case FieldType::Kind::Text:
        return Value(decoded(bytes, encoding));
    case FieldType::Kind::Other:
        break;
    }
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

bool describesRecord(Bytes payload, std::uint64_t payloadLength)
{
    const std::optional<Header> header = readHeader(payload);
    return header && header->recordLength == payloadLength;
}

std::optional<RecordFields> readFields(Bytes payload, std::uint64_t payloadLength,
                                       TextEncoding encoding)
{
    const std::optional<Header> header = readHeader(payload);
    if (!header || header->recordLength != payloadLength)
        return std::nullopt;
    RecordFields fields;
    std::uint64_t at = varintAt(payload, 0)->value;
    for (const FieldType& type : header->types) {
        std::optional<Value> value;
        if (at <= payload.size() && type.size <= payload.size() - at)
            value = fieldValue(type, payload.subspan(at, type.size), encoding);
        fields.whole = fields.whole && value.has_value();
        fields.values.push_back(value.value_or(Value()));
        at += type.size;
    }
    return fields;
}

} // namespace zelto::store

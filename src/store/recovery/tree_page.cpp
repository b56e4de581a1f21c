// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/recovery/tree_page.h"

#include "store/file_check.h"
#include "store/recovery/page_image.h"

#include <QStringDecoder>

#include <array>
#include <optional>
#include <utility>

namespace zelto::store {

namespace {

/// A number of variable length, and how many bytes it takes.
struct Varint
{
    std::uint64_t value = 0;
    std::size_t length = 0;
};

/// None when it does not end within the bytes.
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

/// None unless what the payload begins with describes a record of that length.
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

/// Reads the fields of a record of which the payload is all, or the beginning, of that many bytes.
/// None when it contradicts itself.
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

// Kinds of pages, by their first byte.
constexpr std::uint64_t KeyedInner = 2;
constexpr std::uint64_t NumberedInner = 5;
constexpr std::uint64_t KeyedLeaf = 10;
constexpr std::uint64_t NumberedLeaf = 13;

// Places in a page's header.
constexpr std::size_t CellCountAt = 3;
constexpr std::size_t ContentAt = 5;
constexpr std::size_t LastChildAt = 8;

constexpr std::size_t ChildSize = 4;
constexpr std::size_t PointerSize = 2;

/// As much as the program lets into a record.
constexpr std::uint64_t LongestPayload = 16 << 20;

/// The bytes of a page, where its header starts, and of what kind it says to be.
struct RawPage
{
    Bytes bytes;
    std::size_t start = 0;
    std::uint64_t kind = numberAt(bytes, start, 1).value_or(0);

    [[nodiscard]] bool isInner() const { return kind == KeyedInner || kind == NumberedInner; }
    [[nodiscard]] bool isKeyed() const { return kind == KeyedInner || kind == KeyedLeaf; }
};

/// The offsets of the cells, as far as the header can be believed.
std::vector<std::size_t> cellsOf(const RawPage& page)
{
    const std::uint64_t count = numberAt(page.bytes, page.start + CellCountAt, 2).value_or(0);
    std::size_t at = page.start + (page.isInner() ? 12 : 8);
    // The content of the cells begins behind their pointers.
    std::uint64_t end = numberAt(page.bytes, page.start + ContentAt, 2).value_or(0);
    if (end < at || end > page.bytes.size())
        end = page.bytes.size();
    std::vector<std::size_t> cells;
    for (; cells.size() < count && at + PointerSize <= end; at += PointerSize)
        cells.push_back(numberAt(page.bytes, at, PointerSize).value_or(0));
    return cells;
}

/// How much of a payload stands on the page itself; the rest is on overflow pages.
std::uint64_t localLength(std::uint64_t length, std::size_t usable, bool keyed)
{
    const std::uint64_t most = keyed ? (usable - 12) * 64 / 255 - 23 : usable - 35;
    if (length <= most)
        return length;
    const std::uint64_t least = (usable - 12) * 32 / 255 - 23;
    const std::uint64_t fitting = least + (length - least) % (usable - 4);
    return fitting <= most ? fitting : least;
}

/// The payload that begins on the page, as far as it can be read.
std::vector<std::uint8_t> payloadAt(const RawPage& page, std::size_t offset, std::uint64_t length,
                                    PageImage& image)
{
    const std::uint64_t local = localLength(length, image.usableSize(), page.isKeyed());
    if (offset > page.bytes.size() || local > page.bytes.size() - offset)
        return {};
    const Bytes first = page.bytes.subspan(offset, local);
    std::vector<std::uint8_t> payload(first.begin(), first.end());
    if (local < length && readHeader(first, length))
        image.appendOverflow(payload, length, numberAt(page.bytes, offset + local, 4).value_or(0));
    return payload;
}

std::optional<FoundRecord> recordAt(const RawPage& page, std::size_t offset, PageImage& image)
{
    const std::optional<Varint> length = varintAt(page.bytes, offset);
    if (!length || length->value > LongestPayload)
        return std::nullopt;
    offset += length->length;
    const std::optional<Varint> rowNumber =
        page.isKeyed() ? Varint{} : varintAt(page.bytes, offset);
    if (!rowNumber)
        return std::nullopt;
    offset += rowNumber->length;
    std::optional<FoundRecord> record =
        readRecord(payloadAt(page, offset, length->value, image), length->value, image.encoding());
    if (record) {
        record->keyed = page.isKeyed();
        record->rowNumber = static_cast<qint64>(rowNumber->value);
    }
    return record;
}

void readChildren(const RawPage& page, TreePage& result)
{
    std::vector<std::size_t> places = cellsOf(page);
    places.push_back(page.start + LastChildAt);
    for (const std::size_t place : places)
        if (const std::optional<std::uint64_t> child = numberAt(page.bytes, place, ChildSize))
            result.children.push_back(static_cast<std::uint32_t>(*child));
}

void readRecords(const RawPage& page, PageImage& image, TreePage& result)
{
    for (const std::size_t cell : cellsOf(page)) {
        const std::size_t offset = cell + (page.isInner() ? ChildSize : 0);
        if (std::optional<FoundRecord> record = recordAt(page, offset, image))
            result.records.push_back(std::move(*record));
        else
            ++result.broken;
    }
    // The page contradicts itself, and how many records it had is anybody's guess.
    if (result.broken > static_cast<int>(result.records.size()))
        result.broken = 1;
}

} // namespace

TreePage readTreePage(std::uint32_t number, PageImage& image)
{
    const std::size_t start = number == 1 ? static_cast<std::size_t>(HeaderSize) : 0;
    const RawPage page{.bytes = image.page(number), .start = start};
    TreePage result;
    if (page.isInner())
        readChildren(page, result);
    if (page.isKeyed() || page.kind == NumberedLeaf)
        readRecords(page, image, result);
    return result;
}

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/recovery/tree_page.h"

#include "store/file_check.h"
#include "store/recovery/page_image.h"

#include <utility>

namespace zelto::store {

namespace {

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
    if (local < length && describesRecord(first, length))
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

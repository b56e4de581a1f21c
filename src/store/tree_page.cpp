// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/tree_page.h"

#include "store/found_record.h"

#include <algorithm>
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

bool isInner(std::uint64_t kind)
{
    return kind == KeyedInner || kind == NumberedInner;
}

std::size_t headerSize(std::uint64_t kind)
{
    return isInner(kind) ? 12 : 8;
}

/// Where the content of the cells begins, behind their pointers; none when that cannot be.
std::optional<std::uint64_t> contentOffset(Bytes page, std::size_t start, std::uint64_t kind)
{
    const std::optional<std::uint64_t> content = numberAt(page, start + ContentAt, 2);
    if (!content || *content < start + headerSize(kind) || *content > page.size())
        return std::nullopt;
    return content;
}

/// The offsets of the cells, as far as the header can be believed.
std::vector<std::size_t> cellsOf(Bytes page, std::size_t start, std::uint64_t kind)
{
    const std::uint64_t count = numberAt(page, start + CellCountAt, 2).value_or(0);
    const std::uint64_t end = contentOffset(page, start, kind).value_or(page.size());
    std::vector<std::size_t> cells;
    std::size_t at = start + headerSize(kind);
    while (cells.size() < count && at + PointerSize <= end) {
        cells.push_back(numberAt(page, at, PointerSize).value_or(0));
        at += PointerSize;
    }
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

/// The payload that begins on the page, as far as its overflow pages can be followed.
std::vector<std::uint8_t> payloadAt(const PageImage& image, Bytes page, std::size_t offset,
                                    std::uint64_t length, bool keyed)
{
    const std::uint64_t local = localLength(length, image.usableSize(), keyed);
    if (offset > page.size() || local > page.size() - offset)
        return {};
    const Bytes first = page.subspan(offset, local);
    std::vector<std::uint8_t> payload(first.begin(), first.end());
    std::uint64_t next = numberAt(page, offset + local, 4).value_or(0);
    // The length bounds the loop even when the pages form a circle.
    while (payload.size() < length) {
        const Bytes overflow = image.page(next);
        if (overflow.size() <= 4)
            break;
        const Bytes content = overflow.subspan(4);
        const auto piece = content.first(std::min(content.size(), length - payload.size()));
        payload.insert(payload.end(), piece.begin(), piece.end());
        next = numberAt(overflow, 0, 4).value_or(0);
    }
    return payload;
}

} // namespace

TreePage::TreePage(const PageImage& image, std::uint32_t number)
{
    const Bytes page = image.page(number);
    const std::size_t start = number == 1 ? PageImage::HeaderSize : 0;
    m_kind = numberAt(page, start, 1).value_or(0);
    if (isInner(m_kind))
        readInner(page, start);
    if (m_kind == KeyedInner || m_kind == KeyedLeaf || m_kind == NumberedLeaf)
        readCells(image, page, start);
}

void TreePage::readInner(Bytes page, std::size_t start)
{
    const auto add = [&](std::size_t offset) {
        if (const std::optional<std::uint64_t> child = numberAt(page, offset, ChildSize))
            m_children.push_back(static_cast<std::uint32_t>(*child));
    };
    for (const std::size_t cell : cellsOf(page, start, m_kind))
        add(cell);
    add(start + LastChildAt);
}

void TreePage::readCells(const PageImage& image, Bytes page, std::size_t start)
{
    for (const std::size_t cell : cellsOf(page, start, m_kind))
        readCell(image, page, cell + (m_kind == KeyedInner ? ChildSize : 0));
    // The page contradicts itself, and how many records it had is anybody's guess.
    if (m_broken > static_cast<int>(m_records.size()))
        m_broken = 1;
}

void TreePage::readCell(const PageImage& image, Bytes page, std::size_t offset)
{
    const bool keyed = m_kind != NumberedLeaf;
    const std::optional<Varint> length = varintAt(page, offset);
    const std::optional<Varint> rowNumber = keyed    ? Varint{}
                                            : length ? varintAt(page, offset + length->length)
                                                     : std::nullopt;
    std::optional<RecordFields> fields;
    if (length && rowNumber && length->value <= LongestPayload) {
        const std::size_t begin = offset + length->length + rowNumber->length;
        fields = readFields(payloadAt(image, page, begin, length->value, keyed), length->value,
                            image.encoding());
    }
    if (!fields) {
        ++m_broken;
        return;
    }
    m_records.push_back({.keyed = keyed,
                         .rowNumber = static_cast<qint64>(rowNumber->value),
                         .values = std::move(fields->values),
                         .whole = fields->whole});
}

} // namespace zelto::store

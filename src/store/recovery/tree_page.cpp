// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/recovery/tree_page.h"

#include "store/recovery/found_record.h"
#include "store/recovery/overflow_reader.h"

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

} // namespace

TreePage::TreePage(std::uint32_t number, OverflowReader& overflow)
{
    const Bytes page = overflow.image().page(number);
    const std::size_t start = number == 1 ? PageImage::HeaderSize : 0;
    m_kind = numberAt(page, start, 1).value_or(0);
    if (isInner(m_kind))
        readInner(page, start);
    if (isKeyed() || m_kind == NumberedLeaf)
        readCells(page, start, overflow);
}

bool TreePage::isKeyed() const
{
    return m_kind == KeyedInner || m_kind == KeyedLeaf;
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

void TreePage::readCells(Bytes page, std::size_t start, OverflowReader& overflow)
{
    for (const std::size_t cell : cellsOf(page, start, m_kind))
        readCell(page, cell + (m_kind == KeyedInner ? ChildSize : 0), overflow);
    // The page contradicts itself, and how many records it had is anybody's guess.
    if (m_broken > static_cast<int>(m_records.size()))
        m_broken = 1;
}

void TreePage::readCell(Bytes page, std::size_t offset, OverflowReader& overflow)
{
    const std::optional<Varint> length = varintAt(page, offset);
    std::optional<Varint> rowNumber = Varint{};
    if (length && !isKeyed())
        rowNumber = varintAt(page, offset + length->length);
    std::optional<RecordFields> fields;
    if (length && rowNumber && length->value <= LongestPayload) {
        const std::size_t begin = offset + length->length + rowNumber->length;
        fields = readFields(payloadAt(page, begin, length->value, overflow), length->value,
                            overflow.image().encoding());
    }
    if (!fields) {
        ++m_broken;
        return;
    }
    m_records.push_back({.keyed = isKeyed(),
                         .rowNumber = static_cast<qint64>(rowNumber->value),
                         .values = std::move(fields->values),
                         .whole = fields->whole});
}

/// The payload that begins on the page, as far as it can be read.
std::vector<std::uint8_t> TreePage::payloadAt(Bytes page, std::size_t offset, std::uint64_t length,
                                              OverflowReader& overflow) const
{
    const std::uint64_t local = localLength(length, overflow.image().usableSize(), isKeyed());
    if (offset > page.size() || local > page.size() - offset)
        return {};
    const Bytes first = page.subspan(offset, local);
    std::vector<std::uint8_t> payload(first.begin(), first.end());
    if (local < length && describesRecord(first, length))
        overflow.complete(payload, length, numberAt(page, offset + local, 4).value_or(0));
    return payload;
}

} // namespace zelto::store

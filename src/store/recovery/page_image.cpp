// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/recovery/page_image.h"

#include <algorithm>
#include <bit>
#include <utility>

namespace zelto::store {

namespace {

// Places in the file's header.
constexpr std::size_t PageSizeAt = 16;
constexpr std::size_t ReservedAt = 20;
constexpr std::size_t FirstFreeAt = 32;
constexpr std::size_t FreeCountAt = 36;
constexpr std::size_t EncodingAt = 56;

constexpr std::size_t SmallestPage = 512;
constexpr std::size_t LargestPage = 65536;
constexpr std::size_t SmallestUsable = 480;

bool isPageSize(std::uint64_t size)
{
    return std::has_single_bit(size) && size >= SmallestPage && size <= LargestPage;
}

} // namespace

std::optional<std::uint64_t> numberAt(Bytes bytes, std::size_t offset, std::size_t length)
{
    if (offset > bytes.size() || length > bytes.size() - offset)
        return std::nullopt;
    std::uint64_t number = 0;
    for (const std::uint8_t byte : bytes.subspan(offset, length))
        number = number << 8U | byte;
    return number;
}

PageImage::PageImage(QByteArray bytes, Reading reading) : m_bytes(std::move(bytes))
{
    if (reading == Reading::ByHeader)
        readHeader();
}

Bytes PageImage::all() const
{
    return {reinterpret_cast<const std::uint8_t*>(m_bytes.constData()),
            static_cast<std::size_t>(m_bytes.size())};
}

/// Every field is taken by itself, whatever the others have become.
void PageImage::readHeader()
{
    const std::uint64_t stored = numberAt(all(), PageSizeAt, 2).value_or(0);
    const std::uint64_t size = stored == 1 ? LargestPage : stored;
    if (isPageSize(size))
        m_pageSize = size;
    const std::uint64_t reserved = numberAt(all(), ReservedAt, 1).value_or(0);
    if (m_pageSize - reserved >= SmallestUsable)
        m_reserved = reserved;
    const std::uint64_t encoding = numberAt(all(), EncodingAt, 4).value_or(0);
    if (encoding == 2)
        m_encoding = TextEncoding::Utf16LittleEndian;
    else if (encoding == 3)
        m_encoding = TextEncoding::Utf16BigEndian;
}

std::uint32_t PageImage::pageCount() const
{
    return static_cast<std::uint32_t>((all().size() + m_pageSize - 1) / m_pageSize);
}

Bytes PageImage::page(std::uint64_t number) const
{
    if (number == 0 || number > pageCount())
        return {};
    const Bytes rest = all().subspan((number - 1) * m_pageSize);
    return rest.first(std::min(rest.size(), usableSize()));
}

std::set<std::uint32_t> PageImage::freePages() const
{
    std::set<std::uint32_t> pages;
    std::uint64_t trunk = numberAt(page(1), FirstFreeAt, 4).value_or(0);
    while (trunk != 0) {
        if (!addTrunk(trunk, pages))
            return {};
        trunk = numberAt(page(trunk), 0, 4).value_or(0);
    }
    const bool whole = numberAt(page(1), FreeCountAt, 4) == pages.size();
    return whole ? pages : std::set<std::uint32_t>();
}

/// A page of the list and those that it names; false when one is none or was named before.
bool PageImage::addTrunk(std::uint64_t trunk, std::set<std::uint32_t>& pages) const
{
    const auto add = [&](std::uint64_t number) {
        return number > 1 && number <= pageCount() &&
               pages.insert(static_cast<std::uint32_t>(number)).second;
    };
    const Bytes list = page(trunk);
    const std::uint64_t count = numberAt(list, 4, 4).value_or(0);
    if (!add(trunk) || count > list.size() / 4)
        return false;
    for (std::uint64_t i = 0; i < count; ++i)
        if (!add(numberAt(list, 8 + 4 * i, 4).value_or(0)))
            return false;
    return true;
}

} // namespace zelto::store

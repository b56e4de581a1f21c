// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/recovery/page_image.h"

#include <algorithm>
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

PageImage::PageImage(QByteArray bytes, Reading reading) : m_bytes(std::move(bytes))
{
    constexpr std::uint64_t TimesTheFile = 4;
    if (reading == Reading::ByHeader)
        readHeader();
    m_overflowAllowance = TimesTheFile * pageCount() * usableSize();
}

/// Every field is taken by itself, whatever the others have become.
void PageImage::readHeader()
{
    const Bytes all = viewOf(m_bytes);
    const std::uint64_t stored = numberAt(all, PageSizeAt, 2).value_or(0);
    const std::uint64_t size = stored == 1 ? LargestPage : stored;
    if (isPageSize(size))
        m_pageSize = size;
    const std::uint64_t reserved = numberAt(all, ReservedAt, 1).value_or(0);
    if (m_pageSize - reserved >= SmallestUsable)
        m_reserved = reserved;
    const std::uint64_t encoding = numberAt(all, EncodingAt, 4).value_or(0);
    if (encoding == 2)
        m_encoding = QStringConverter::Utf16LE;
    else if (encoding == 3)
        m_encoding = QStringConverter::Utf16BE;
}

std::uint32_t PageImage::pageCount() const
{
    return static_cast<std::uint32_t>((viewOf(m_bytes).size() + m_pageSize - 1) / m_pageSize);
}

Bytes PageImage::page(std::uint64_t number) const
{
    if (number == 0 || number > pageCount())
        return {};
    const Bytes rest = viewOf(m_bytes).subspan((number - 1) * m_pageSize);
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

void PageImage::appendOverflow(std::vector<std::uint8_t>& payload, std::uint64_t length,
                               std::uint64_t page)
{
    constexpr std::size_t NextPageSize = 4;
    while (payload.size() < length) {
        const Bytes bytes = this->page(page);
        if (bytes.size() <= NextPageSize || bytes.size() > m_overflowAllowance)
            return;
        m_overflowAllowance -= bytes.size();
        const Bytes content = bytes.subspan(NextPageSize);
        const Bytes piece = content.first(std::min(content.size(), length - payload.size()));
        payload.insert(payload.end(), piece.begin(), piece.end());
        page = numberAt(bytes, 0, NextPageSize).value_or(0);
    }
}

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/recovery/overflow_reader.h"

#include <algorithm>

namespace zelto::store {

namespace {

constexpr std::uint64_t TimesTheFile = 4;
constexpr std::size_t NextPageSize = 4;

} // namespace

OverflowReader::OverflowReader(const PageImage& image)
    : m_image(image), m_allowance(TimesTheFile * image.pageCount() * image.usableSize())
{}

void OverflowReader::complete(std::vector<std::uint8_t>& payload, std::uint64_t length,
                              std::uint64_t page)
{
    while (payload.size() < length) {
        const Bytes bytes = m_image.page(page);
        if (bytes.size() <= NextPageSize || bytes.size() > m_allowance)
            return;
        m_allowance -= bytes.size();
        const Bytes content = bytes.subspan(NextPageSize);
        const Bytes piece = content.first(std::min(content.size(), length - payload.size()));
        payload.insert(payload.end(), piece.begin(), piece.end());
        page = numberAt(bytes, 0, NextPageSize).value_or(0);
    }
}

} // namespace zelto::store

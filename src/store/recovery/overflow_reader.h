// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/recovery/page_image.h"

#include <cstdint>
#include <vector>

namespace zelto::store {

/// Follows long records onto the pages that take what does not fit on their own. All together it
/// reads no more than a few times the file: one made to that end could lead over the same pages
/// again and again.
class OverflowReader
{
public:
    explicit OverflowReader(const PageImage& image);

    [[nodiscard]] const PageImage& image() const { return m_image; }

    /// Appends what is on the page and on those after it, until the payload has its length or the
    /// pages cannot be followed any further.
    void complete(std::vector<std::uint8_t>& payload, std::uint64_t length, std::uint64_t page);

private:
    const PageImage& m_image;
    std::uint64_t m_allowance;
};

} // namespace zelto::store

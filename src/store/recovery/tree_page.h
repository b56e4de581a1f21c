// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/recovery/found_record.h"

namespace zelto::store {

class PageImage;

/// What a page of the tree that holds a table has.
struct TreePage
{
    std::vector<FoundRecord> records{};
    std::vector<std::uint32_t> children{}; ///< the pages below it
    int broken = 0; ///< records that are known to be there but cannot be read
};

/// Reads a page of a damaged file so. Nothing is on one that is no tree's.
[[nodiscard]] TreePage readTreePage(std::uint32_t number, PageImage& image);

} // namespace zelto::store

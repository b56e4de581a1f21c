// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/value.h"

#include <cstdint>

namespace zelto::store {

class PageImage;

/// A record as it was found.
struct FoundRecord
{
    bool keyed = false; ///< of a table in the order of its key; the others number their records
    qint64 rowNumber = 0;
    Record values{};   ///< Null in place of what could not be read
    bool whole = true; ///< whether every field could be read
};

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

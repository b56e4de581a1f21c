// SPDX-License-Identifier: GPL-3.0-or-later
// One page of a damaged file, read as a page of the tree that holds a table.
#pragma once

#include "store/recovery/page_image.h"
#include "store/value.h"

#include <cstdint>
#include <vector>

namespace zelto::store {

class OverflowReader;

/// A record as it was found.
struct FoundRecord
{
    /// Of a table in the order of its key; the others number their records.
    bool keyed = false;
    qint64 rowNumber = 0;
    /// Null in place of what could not be read.
    std::vector<Value> values;
    /// Whether every field could be read.
    bool whole = true;
};

/// The records of a page and the pages below it.
class TreePage
{
public:
    /// Nothing is on a page that is no tree's.
    TreePage(std::uint32_t number, OverflowReader& overflow);

    [[nodiscard]] const std::vector<FoundRecord>& records() const { return m_records; }
    [[nodiscard]] const std::vector<std::uint32_t>& children() const { return m_children; }

    /// How many records are known to be there but cannot be read.
    [[nodiscard]] int brokenRecords() const { return m_broken; }

private:
    void readInner(Bytes page, std::size_t start);
    void readCells(Bytes page, std::size_t start, OverflowReader& overflow);
    void readCell(Bytes page, std::size_t offset, OverflowReader& overflow);
    [[nodiscard]] std::vector<std::uint8_t>
    payloadAt(Bytes page, std::size_t offset, std::uint64_t length, OverflowReader& overflow) const;
    [[nodiscard]] bool isKeyed() const;

    std::uint64_t m_kind = 0;
    std::vector<FoundRecord> m_records;
    std::vector<std::uint32_t> m_children;
    int m_broken = 0;
};

} // namespace zelto::store

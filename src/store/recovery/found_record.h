// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/recovery/page_image.h"
#include "store/value.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace zelto::store {

/// A number of variable length, and how many bytes it takes.
struct Varint
{
    std::uint64_t value = 0;
    std::size_t length = 0;
};

/// None when it does not end within the bytes.
[[nodiscard]] std::optional<Varint> varintAt(Bytes bytes, std::size_t offset);

/// The fields of a record; Null in place of those that cannot be read.
struct RecordFields
{
    std::vector<Value> values;
    bool whole = true;
};

/// Whether what the payload begins with describes a record of that length.
[[nodiscard]] bool describesRecord(Bytes payload, std::uint64_t payloadLength);

/// Reads a record of which the payload is all, or the beginning, of payloadLength bytes. None when
/// it contradicts itself.
[[nodiscard]] std::optional<RecordFields> readFields(Bytes payload, std::uint64_t payloadLength,
                                                     TextEncoding encoding);

} // namespace zelto::store

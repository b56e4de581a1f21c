// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/big_endian.h"
#include "store/value.h"

#include <QStringConverter>

namespace zelto::store {

/// A number of variable length, and how many bytes it takes.
struct Varint
{
    std::uint64_t value = 0;
    std::size_t length = 0;
};

/// None when it does not end within the bytes.
[[nodiscard]] std::optional<Varint> varintAt(Bytes bytes, std::size_t offset);

/// A record as it was found.
struct FoundRecord
{
    bool keyed = false; ///< of a table in the order of its key; the others number their records
    qint64 rowNumber = 0;
    Record values{};   ///< Null in place of what could not be read
    bool whole = true; ///< whether every field could be read
};

/// Whether what the payload begins with describes a record of that length.
[[nodiscard]] bool describesRecord(Bytes payload, std::uint64_t length);

/// Reads the fields of a record of which the payload is all, or the beginning, of that many bytes.
/// None when it contradicts itself.
[[nodiscard]] std::optional<FoundRecord> readRecord(Bytes payload, std::uint64_t length,
                                                    QStringConverter::Encoding encoding);

} // namespace zelto::store

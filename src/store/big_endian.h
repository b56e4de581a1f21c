// SPDX-License-Identifier: GPL-3.0-or-later
// Bytes of files, and the numbers in them as the engine writes them.
#pragma once

#include <QByteArrayView>

#include <cstdint>
#include <optional>
#include <span>

namespace zelto::store {

using Bytes = std::span<const std::uint8_t>;

[[nodiscard]] inline Bytes viewOf(QByteArrayView bytes)
{
    return {reinterpret_cast<const std::uint8_t*>(bytes.data()),
            static_cast<std::size_t>(bytes.size())};
}

/// Big-endian number of one to eight bytes at the offset; none when it does not lie within.
[[nodiscard]] inline std::optional<std::uint64_t> numberAt(Bytes bytes, std::size_t offset,
                                                           std::size_t length)
{
    if (offset > bytes.size() || length > bytes.size() - offset)
        return std::nullopt;
    std::uint64_t number = 0;
    for (const std::uint8_t byte : bytes.subspan(offset, length))
        number = number << 8U | byte;
    return number;
}

} // namespace zelto::store

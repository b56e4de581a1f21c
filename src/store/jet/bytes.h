// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/big_endian.h"

#include <QByteArray>

#include <algorithm>
#include <bit>
#include <cstring>
#include <stdexcept>

namespace zelto::store::jet {

/// What a damaged file says cannot be so.
class BadBytes : public std::runtime_error
{
public:
    using std::runtime_error::runtime_error;
};

/// Bytes of the file. Every read of a number goes through part(), which refuses what does not lie
/// within.
class ByteView
{
public:
    ByteView() = default;
    explicit ByteView(Bytes bytes) : m_bytes(bytes) {}
    explicit ByteView(const QByteArray& bytes) : m_bytes(viewOf(bytes)) {}

    [[nodiscard]] std::size_t size() const { return m_bytes.size(); }
    [[nodiscard]] Bytes all() const { return m_bytes; }
    [[nodiscard]] const std::uint8_t* data() const { return m_bytes.data(); }
    [[nodiscard]] QByteArray copy() const
    {
        return {reinterpret_cast<const char*>(data()), static_cast<qsizetype>(size())};
    }

    /// Throws BadBytes.
    [[nodiscard]] ByteView part(std::size_t offset, std::size_t length) const
    {
        if (offset > m_bytes.size() || length > m_bytes.size() - offset)
            throw BadBytes("bytes beyond the end");
        return ByteView(m_bytes.subspan(offset, length));
    }
    [[nodiscard]] ByteView from(std::size_t offset) const
    {
        return part(offset, m_bytes.size() - std::min(offset, m_bytes.size()));
    }

    /// Little-endian; throws BadBytes.
    template <typename Number>
    [[nodiscard]] Number number(std::size_t offset) const
    {
        static_assert(std::endian::native == std::endian::little);
        Number value = {};
        std::memcpy(&value, part(offset, sizeof value).data(), sizeof value);
        return value;
    }
    [[nodiscard]] unsigned byte(std::size_t offset) const { return number<std::uint8_t>(offset); }
    [[nodiscard]] unsigned word(std::size_t offset) const { return number<std::uint16_t>(offset); }
    [[nodiscard]] std::uint32_t dword(std::size_t offset) const
    {
        return number<std::uint32_t>(offset);
    }

private:
    Bytes m_bytes;
};

} // namespace zelto::store::jet

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

#include <cstdint>
#include <optional>
#include <set>
#include <span>

namespace zelto::store {

using Bytes = std::span<const std::uint8_t>;

/// Big-endian number of one to eight bytes at the offset; none when it does not lie within.
[[nodiscard]] std::optional<std::uint64_t> numberAt(Bytes bytes, std::size_t offset,
                                                    std::size_t length);

enum class TextEncoding { Utf8, Utf16LittleEndian, Utf16BigEndian };

/// The bytes of a damaged database file as pages numbered from 1. Nothing in it is trusted, and
/// no access leaves the bytes.
class PageImage
{
public:
    /// How long the file's header takes; it stands on the first page.
    static constexpr std::size_t HeaderSize = 100;

    /// How the bytes are divided: as the file's header tells, or, should that be damaged, as in
    /// every file that the program makes.
    enum class Reading { ByHeader, AsMadeHere };

    PageImage(QByteArray bytes, Reading reading);

    [[nodiscard]] std::uint32_t pageCount() const;

    /// What the engine uses of a page; empty for a number that is none.
    [[nodiscard]] Bytes page(std::uint64_t number) const;

    [[nodiscard]] std::size_t usableSize() const { return m_pageSize - m_reserved; }
    [[nodiscard]] TextEncoding encoding() const { return m_encoding; }

    /// The pages that are in no use; what they hold was deleted. None when their list is damaged.
    [[nodiscard]] std::set<std::uint32_t> freePages() const;

private:
    [[nodiscard]] Bytes all() const;
    void readHeader();
    bool addTrunk(std::uint64_t trunk, std::set<std::uint32_t>& pages) const;

    QByteArray m_bytes;
    std::size_t m_pageSize = 4096;
    std::size_t m_reserved = 0;
    TextEncoding m_encoding = TextEncoding::Utf8;
};

} // namespace zelto::store

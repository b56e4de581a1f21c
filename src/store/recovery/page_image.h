// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/big_endian.h"

#include <QByteArray>
#include <QStringConverter>

#include <set>
#include <vector>

namespace zelto::store {

/// The bytes of a damaged database file as pages numbered from 1. Nothing in it is trusted, and
/// no access leaves the bytes.
class PageImage
{
public:
    /// How the bytes are divided: as the file's header tells, or, should that be damaged, as in
    /// every file that the program makes.
    enum class Reading { ByHeader, AsMadeHere };

    PageImage(QByteArray bytes, Reading reading);

    [[nodiscard]] std::uint32_t pageCount() const;

    /// What the engine uses of a page; empty for a number that is none.
    [[nodiscard]] Bytes page(std::uint64_t number) const;

    [[nodiscard]] std::size_t usableSize() const { return m_pageSize - m_reserved; }
    [[nodiscard]] QStringConverter::Encoding encoding() const { return m_encoding; }

    /// The pages that are in no use; what they hold was deleted. None when their list is damaged.
    [[nodiscard]] std::set<std::uint32_t> freePages() const;

    /// Appends what is on an overflow page and on those after it, until the payload has its length
    /// or they cannot be followed any further. All calls together read no more than a few times the
    /// file: one made to that end could lead over the same pages again and again.
    void appendOverflow(std::vector<std::uint8_t>& payload, std::uint64_t length,
                        std::uint64_t page);

private:
    void readHeader();
    bool addTrunk(std::uint64_t trunk, std::set<std::uint32_t>& pages) const;

    QByteArray m_bytes;
    std::size_t m_pageSize = 4096;
    std::size_t m_reserved = 0;
    QStringConverter::Encoding m_encoding = QStringConverter::Utf8;
    std::uint64_t m_overflowAllowance = 0;
};

} // namespace zelto::store

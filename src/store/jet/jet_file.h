// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/jet/bytes.h"

#include <QByteArray>
#include <QString>

namespace zelto::store::jet {

/// The first byte of a page that holds rows.
inline constexpr unsigned DataPage = 1;

/// Whether the file calls itself a database of the Windows edition's engine; false for one that
/// cannot be read.
[[nodiscard]] bool isJetFile(const QString& path);

/// The pages of such a file, decoded, and the rows on them. The file is read once and not touched.
class JetFile
{
public:
    /// Throws DatabaseError: FileNotFound, CannotOpen, NotADatabase for another file, Damaged for
    /// one without whole pages or larger than a job may be.
    explicit JetFile(const QString& path);

    /// Of the older of the engine's two formats.
    [[nodiscard]] bool isJet3() const { return m_isJet3; }
    [[nodiscard]] std::uint32_t pageCount() const;

    /// Throws BadBytes when there is no such page.
    [[nodiscard]] ByteView page(std::uint32_t number) const;

    /// How many rows a data page says it has, at most what it has slots for.
    [[nodiscard]] unsigned rowCount(const ByteView& page) const;

    /// A row of a table; empty when it was deleted. One that moved is followed to where it is.
    /// Throws BadBytes.
    [[nodiscard]] ByteView row(std::uint32_t page, unsigned row) const;

    /// What a pointer, page << 8 | row, leads to, whatever its marks say.
    [[nodiscard]] ByteView pointedAt(std::uint32_t pointer) const;

    /// Text of the header's code page in Jet 3, of UTF-16, perhaps compressed, in Jet 4.
    [[nodiscard]] QString text(const ByteView& bytes) const;

    /// Counts work against what a file of this size may cause; throws BadBytes when it is too much,
    /// as with pointers that lead to the same long memo over and over.
    void charge(std::size_t bytes) const;

private:
    struct Slot
    {
        ByteView bytes;
        unsigned marks = 0;
    };
    [[nodiscard]] Slot slot(std::uint32_t page, unsigned row) const;
    [[nodiscard]] std::size_t firstSlot() const { return m_isJet3 ? 10 : 14; }

    QByteArray m_bytes;
    bool m_isJet3 = false;
    std::size_t m_pageSize = 0;
    mutable std::size_t m_budget = 0;
};

} // namespace zelto::store::jet

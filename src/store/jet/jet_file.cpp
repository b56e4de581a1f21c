// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/jet/jet_file.h"

#include "store/engine_file.h"
#include "store/files/database_error.h"
#include "store/files/file_names.h"

#include <algorithm>
#include <array>
#include <numeric>
#include <utility>

namespace zelto::store::jet {

namespace {

constexpr unsigned Deleted = 0x8000;
constexpr unsigned Moved = 0x4000;
constexpr unsigned SlotOffset = 0x1FFF;
constexpr std::size_t EncodedFrom = 0x18;
constexpr std::size_t PageKeyAt = 0x3E;

/// The stream cipher RC4 over the bytes, in place.
void rc4(std::span<std::uint8_t> bytes, const std::array<std::uint8_t, 4>& key)
{
    std::array<std::uint8_t, 256> state{};
    std::iota(state.begin(), state.end(), std::uint8_t{0});
    for (unsigned i = 0, j = 0; i < state.size(); ++i) {
        j = (j + state.at(i) + key.at(i % key.size())) & 0xFFU;
        std::swap(state.at(i), state.at(j));
    }
    unsigned i = 0;
    unsigned j = 0;
    for (std::uint8_t& byte : bytes) {
        i = (i + 1) & 0xFFU;
        j = (j + state.at(i)) & 0xFFU;
        std::swap(state.at(i), state.at(j));
        byte ^= state.at((state.at(i) + state.at(j)) & 0xFFU);
    }
}

std::span<std::uint8_t> writable(QByteArray& bytes)
{
    return {reinterpret_cast<std::uint8_t*>(bytes.data()), static_cast<std::size_t>(bytes.size())};
}

bool hasJetHeader(const QByteArray& bytes)
{
    return bytes.startsWith('\0') && bytes.mid(4, 15) == "Standard Jet DB" && bytes.size() > 0x14 &&
           static_cast<unsigned char>(bytes[0x14]) <= 1;
}

/// Windows code page 1252. Its five undefined bytes stay what they are, as controls.
QString fromCodePage(const ByteView& bytes)
{
    static constexpr std::array<char16_t, 32> Upper{
        0x20AC, 0x81,   0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
        0x2039, 0x0152, 0x8D,   0x017D, 0x8F,   0x90,   0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
        0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x9D,   0x017E, 0x0178};
    QString text(static_cast<qsizetype>(bytes.size()), Qt::Uninitialized);
    std::ranges::transform(bytes.all(), text.begin(), [](std::uint8_t byte) {
        return QChar(byte >= 0x80 && byte < 0xA0 ? Upper.at(byte - 0x80U) : char16_t{byte});
    });
    return text;
}

QString fromUtf16(const ByteView& bytes)
{
    QString text(static_cast<qsizetype>(bytes.size() / 2), Qt::Uninitialized);
    for (qsizetype i = 0; i < text.size(); ++i)
        text[i] = QChar(bytes.number<char16_t>(static_cast<std::size_t>(i) * 2));
    return text;
}

/// A zero byte switches between one byte and two for a character.
QString fromCompressed(const ByteView& bytes)
{
    QString text;
    bool compressed = true;
    std::size_t i = 0;
    while (i < bytes.size()) {
        if (bytes.byte(i) == 0) {
            compressed = !compressed;
            ++i;
        } else if (compressed) {
            text += QChar(static_cast<char16_t>(bytes.byte(i++)));
        } else {
            text += QChar(bytes.number<char16_t>(i));
            i += 2;
        }
    }
    return text;
}

} // namespace

bool isJetFile(const QString& path)
{
    constexpr qint64 HeaderBytes = 0x20;
    try {
        return hasJetHeader(EngineFile(realPath(path), path).read(0, HeaderBytes));
    } catch (const DatabaseError&) {
        return false;
    }
}

JetFile::JetFile(const QString& path)
{
    m_bytes = EngineFile(realPath(path), path).readAll();
    if (!hasJetHeader(m_bytes))
        throw DatabaseError(ErrorNumber::NotADatabase,
                            u"Il file «%1» non è un database di Zelto per Windows."_s.arg(path));
    m_isJet3 = m_bytes[0x14] == 0;
    m_pageSize = isJet3() ? 2048 : 4096;
    if (pageCount() == 0)
        throw DatabaseError(ErrorNumber::Damaged, u"Il file «%1» è incompleto."_s.arg(path));
    rc4(writable(m_bytes).subspan(EncodedFrom, m_isJet3 ? 126 : 128), {0xC7, 0xDA, 0x39, 0x6B});
    if (const std::uint32_t key = ByteView(m_bytes).dword(PageKeyAt); key != 0)
        for (std::uint32_t number = 1; number < pageCount(); ++number)
            rc4(writable(m_bytes).subspan(number * m_pageSize, m_pageSize),
                std::bit_cast<std::array<std::uint8_t, 4>>(key ^ number));
    constexpr std::size_t LeastBudget = std::size_t{1} << 24;
    m_budget = LeastBudget + 16 * static_cast<std::size_t>(m_bytes.size());
}

std::uint32_t JetFile::pageCount() const
{
    return static_cast<std::uint32_t>(static_cast<std::size_t>(m_bytes.size()) / m_pageSize);
}

ByteView JetFile::page(std::uint32_t number) const
{
    if (number >= pageCount())
        throw BadBytes("page beyond the end");
    return ByteView(m_bytes).part(number * m_pageSize, m_pageSize);
}

unsigned JetFile::rowCount(const ByteView& page) const
{
    return std::min(page.word(firstSlot() - 2),
                    static_cast<unsigned>((m_pageSize - firstSlot()) / 2));
}

/// A row ends where the one before it begins.
JetFile::Slot JetFile::slot(std::uint32_t page, unsigned row) const
{
    const ByteView bytes = this->page(page);
    if (bytes.byte(0) != DataPage || row >= rowCount(bytes))
        throw BadBytes("no such row");
    const std::size_t place = firstSlot() + std::size_t{2} * row;
    const unsigned mark = bytes.word(place);
    const std::size_t begin = mark & SlotOffset;
    const std::size_t end = row == 0 ? m_pageSize : bytes.word(place - 2) & SlotOffset;
    if (end < begin)
        throw BadBytes("row of negative length");
    charge(end - begin);
    return {.bytes = bytes.part(begin, end - begin), .marks = mark & ~SlotOffset};
}

ByteView JetFile::row(std::uint32_t page, unsigned row) const
{
    const Slot found = slot(page, row);
    if ((found.marks & Deleted) != 0)
        return {};
    return (found.marks & Moved) == 0 ? found.bytes : pointedAt(found.bytes.dword(0));
}

ByteView JetFile::pointedAt(std::uint32_t pointer) const
{
    // Rows move once, seldom twice; more is a loop.
    constexpr int MostMoves = 8;
    for (int moves = 0; moves <= MostMoves; ++moves) {
        const Slot found = slot(pointer >> 8, pointer & 0xFFU);
        if ((found.marks & Moved) == 0)
            return found.bytes;
        pointer = found.bytes.dword(0);
    }
    throw BadBytes("row that moves in a circle");
}

QString JetFile::text(const ByteView& bytes) const
{
    if (isJet3())
        return fromCodePage(bytes);
    const bool compressed = bytes.size() >= 2 && bytes.word(0) == 0xFEFF;
    return compressed ? fromCompressed(bytes.from(2)) : fromUtf16(bytes);
}

void JetFile::charge(std::size_t bytes) const
{
    constexpr std::size_t Overhead = 16;
    const std::size_t cost = bytes + Overhead;
    if (cost > m_budget)
        throw BadBytes("more rows than the file can hold");
    m_budget -= cost;
}

} // namespace zelto::store::jet

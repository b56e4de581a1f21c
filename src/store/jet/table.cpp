// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/jet/table.h"

#include <QSet>

#include <algorithm>
#include <array>

namespace zelto::store::jet {

namespace {

constexpr unsigned DefinitionPage = 2;
constexpr unsigned MapPage = 5;
constexpr std::uint32_t CatalogueDefinition = 2;
constexpr unsigned MostColumns = 255;

/// Where the parts of a definition lie.
struct DefinitionLayout
{
    std::size_t rowCount, columnCount, indexCount, ownedMap, columns;
    std::size_t indexSize, columnSize;
    std::size_t id, variableIndex, order, flags, fixedOffset, size;
};

constexpr DefinitionLayout Jet3Layout{12, 25, 31, 35, 43, 8, 18, 1, 3, 5, 13, 14, 16};
constexpr DefinitionLayout Jet4Layout{16, 45, 51, 55, 63, 12, 25, 5, 7, 9, 15, 21, 23};

/// Appends the numbers of the pages whose bits are set; the first bit stands for the first page.
void addBits(const ByteView& bitmap, std::uint64_t first, std::uint32_t pageCount,
             std::vector<std::uint32_t>& pages)
{
    for (std::size_t byte = 0; byte < bitmap.size(); ++byte)
        for (unsigned bit = 0; bit < 8; ++bit)
            if ((bitmap.byte(byte) >> bit & 1U) != 0 && first + byte * 8 + bit < pageCount)
                pages.push_back(static_cast<std::uint32_t>(first + byte * 8 + bit));
}

} // namespace

/// The parts of a row's bytes.
class Table::Row
{
public:
    Row(const ByteView& bytes, bool jet3) : m_bytes(bytes), m_jet3(jet3)
    {
        m_columns = jet3 ? bytes.byte(0) : bytes.word(0);
        const std::size_t mask = (m_columns + 7) / 8;
        m_mask = bytes.part(bytes.size() - std::min(bytes.size(), mask), mask);
        if (jet3)
            readJet3Offsets(bytes.size() - mask);
        else
            readJet4Offsets(bytes.size() - mask);
    }

    [[nodiscard]] bool isPresent(const Column& column) const
    {
        return column.id < m_columns && (m_mask.byte(column.id / 8) >> column.id % 8 & 1U) != 0;
    }

    /// Empty for a column that came to the table after the row.
    [[nodiscard]] std::optional<ByteView> bytesOf(const Column& column) const
    {
        if (column.isFixed)
            return m_bytes.part((m_jet3 ? 1U : 2U) + column.fixedOffset,
                                static_cast<std::size_t>(column.size));
        if (column.variableIndex >= m_variable)
            return std::nullopt;
        const std::size_t begin = m_offsets.at(column.variableIndex);
        const std::size_t end = m_offsets.at(column.variableIndex + 1);
        if (end < begin)
            throw BadBytes("field of negative length");
        return m_bytes.part(begin, end - begin);
    }

private:
    /// Before the mask stand, from back to front: the number of fields; for each full 256 bytes of
    /// the row the first field whose offset is 256 more than its byte says; the offsets, a byte
    /// each.
    void readJet3Offsets(std::size_t end)
    {
        m_variable = m_bytes.byte(end - 1);
        std::size_t jumps = (m_bytes.size() - 1) / 256;
        const std::size_t first = end - 1 - jumps - 1;
        // The last one may be there although no offset is as large.
        if (jumps > 0 && first < m_variable + jumps * 256)
            --jumps;
        std::size_t passed = 0;
        for (unsigned i = 0; i <= m_variable; ++i) {
            while (passed < jumps && m_bytes.byte(end - 2 - passed) == i)
                ++passed;
            m_offsets.at(i) = m_bytes.byte(first - i) + passed * 256;
        }
    }

    void readJet4Offsets(std::size_t end)
    {
        m_variable = m_bytes.word(end - 2);
        if (m_variable > MostColumns)
            throw BadBytes("too many fields");
        for (std::size_t i = 0; i <= m_variable; ++i)
            m_offsets.at(i) = m_bytes.word(end - 4 - 2 * i);
    }

    ByteView m_bytes;
    ByteView m_mask;
    bool m_jet3;
    unsigned m_columns = 0;
    unsigned m_variable = 0;
    std::array<std::size_t, MostColumns + 1> m_offsets{};
};

Table::Table(const JetFile& file, std::uint32_t definitionPage)
    : m_file(file), m_definitionPage(definitionPage)
{
    const QByteArray definition = wholeDefinition();
    readColumns(ByteView(definition));
}

std::optional<std::size_t> Table::placeOf(QStringView field) const
{
    const auto column = std::ranges::find_if(m_columns, [&](const Column& candidate) {
        return candidate.name.compare(field, Qt::CaseInsensitive) == 0;
    });
    if (column == m_columns.end())
        return std::nullopt;
    return static_cast<std::size_t>(column - m_columns.begin());
}

/// The first page and what stands on those that it goes on with.
QByteArray Table::wholeDefinition() const
{
    constexpr std::size_t HeadOfNext = 8;
    QSet<std::uint32_t> seen;
    QByteArray whole;
    for (std::uint32_t number = m_definitionPage; number != 0 || seen.isEmpty();) {
        const ByteView page = m_file.page(number);
        if (page.byte(0) != DefinitionPage || seen.contains(number))
            throw BadBytes("no table definition");
        m_file.charge(page.size());
        whole += (seen.isEmpty() ? page : page.from(HeadOfNext)).copy();
        seen.insert(number);
        number = page.dword(4);
    }
    return whole;
}

void Table::readColumns(const ByteView& definition)
{
    const DefinitionLayout& at = m_file.isJet3() ? Jet3Layout : Jet4Layout;
    m_statedRows = definition.dword(at.rowCount);
    m_ownedMap = definition.dword(at.ownedMap);
    const unsigned count = definition.word(at.columnCount);
    if (count > MostColumns)
        throw BadBytes("too many columns");
    std::size_t place = at.columns + at.indexSize * std::size_t{definition.dword(at.indexCount)};
    for (unsigned i = 0; i < count; ++i, place += at.columnSize) {
        const ByteView bytes = definition.part(place, at.columnSize);
        m_columns.push_back({.name = {},
                             .type = static_cast<Type>(bytes.byte(0)),
                             .size = static_cast<int>(bytes.word(at.size)),
                             .id = bytes.word(at.id),
                             .variableIndex = bytes.word(at.variableIndex),
                             .order = bytes.word(at.order),
                             .fixedOffset = bytes.word(at.fixedOffset),
                             .isFixed = (bytes.byte(at.flags) & 1U) != 0});
    }
    for (Column& column : m_columns) {
        const unsigned length = m_file.isJet3() ? definition.byte(place) : definition.word(place);
        place += m_file.isJet3() ? 1 : 2;
        column.name = m_file.text(definition.part(place, length));
        place += length;
    }
    std::ranges::stable_sort(m_columns, {}, &Column::order);
}

std::vector<std::uint32_t> Table::ownedPages() const
{
    const ByteView map = m_file.pointedAt(m_ownedMap);
    std::vector<std::uint32_t> pages;
    if (map.byte(0) == 0) {
        addBits(map.from(5), map.dword(1), m_file.pageCount(), pages);
        return pages;
    }
    constexpr std::size_t HeadOfMap = 4;
    std::uint64_t first = 0;
    for (std::size_t place = 1; place + 4 <= map.size(); place += 4) {
        if (const std::uint32_t number = map.dword(place); number != 0) {
            const ByteView page = m_file.page(number);
            if (page.byte(0) != MapPage)
                throw BadBytes("no usage map");
            m_file.charge(page.size());
            addBits(page.from(HeadOfMap), first, m_file.pageCount(), pages);
        }
        first += (m_file.page(0).size() - HeadOfMap) * 8;
    }
    return pages;
}

RowCounts Table::forEachRow(const std::function<void(const std::vector<Field>&)>& visit) const
{
    // Thousands of damaged rows are no table any more, and take their time.
    constexpr std::size_t CostOfDamage = 4096;
    RowCounts counts;
    std::vector<Field> fields(m_columns.size());
    for (const std::uint32_t number : ownedPages()) {
        const ByteView page = m_file.page(number);
        // A map may name pages that were given to another table since.
        if (page.byte(0) != DataPage || page.dword(4) != m_definitionPage)
            continue;
        for (unsigned row = 0; row < m_file.rowCount(page); ++row) {
            try {
                const ByteView bytes = m_file.row(number, row);
                if (bytes.size() == 0)
                    continue;
                readRow(bytes, fields);
            } catch (const BadBytes&) {
                ++counts.unreadable;
                m_file.charge(CostOfDamage);
                continue;
            }
            ++counts.read;
            visit(fields);
        }
    }
    return counts;
}

void Table::readRow(const ByteView& bytes, std::vector<Field>& fields) const
{
    const Row row(bytes, m_file.isJet3());
    for (std::size_t i = 0; i < m_columns.size(); ++i) {
        const Column& column = m_columns[i];
        fields[i] = Field();
        if (column.type == Type::Boolean)
            fields[i] = row.isPresent(column);
        else if (row.isPresent(column))
            if (const std::optional<ByteView> found = row.bytesOf(column))
                fields[i] = fieldOf(column, *found);
    }
}

Field Table::fieldOf(const Column& column, const ByteView& bytes) const
{
    switch (column.type) {
    case Type::Byte:
        return qint64{bytes.byte(0)};
    case Type::Integer:
        return qint64{bytes.number<std::int16_t>(0)};
    case Type::Long:
        return qint64{bytes.number<std::int32_t>(0)};
    case Type::Money:
        return Money{bytes.number<qint64>(0)};
    case Type::Single:
        return double{bytes.number<float>(0)};
    case Type::Double:
        return bytes.number<double>(0);
    case Type::Date:
        return Date{bytes.number<double>(0)};
    case Type::Text:
        return m_file.text(bytes);
    case Type::Memo:
        return m_file.text(ByteView(longValue(bytes)));
    case Type::Binary:
        return longValue(bytes);
    default:
        return bytes.copy();
    }
}

/// A memo lies behind its head, in one other row, or in a chain of rows.
QByteArray Table::longValue(const ByteView& head) const
{
    constexpr std::size_t HeadSize = 12;
    constexpr std::uint32_t Inline = 0x80000000;
    constexpr std::uint32_t OneRow = 0x40000000;
    const std::uint32_t word = head.dword(0);
    const std::uint32_t length = word & ~(Inline | OneRow);
    if ((word & Inline) != 0)
        return head.part(HeadSize, length).copy();
    std::uint32_t pointer = head.dword(4);
    if ((word & OneRow) != 0)
        return m_file.pointedAt(pointer).part(0, length).copy();
    QByteArray value;
    while (static_cast<std::uint32_t>(value.size()) < length && pointer != 0) {
        // Every row costs, so that a chain that is a circle comes to its end.
        const ByteView piece = m_file.pointedAt(pointer);
        value += piece.from(4).copy();
        pointer = piece.dword(0);
    }
    if (static_cast<std::uint32_t>(value.size()) < length)
        throw BadBytes("memo that ends early");
    value.truncate(length);
    return value;
}

std::vector<TableEntry> userTables(const JetFile& file)
{
    const Table catalogue(file, CatalogueDefinition);
    const auto place = [&](QStringView name) {
        if (const std::optional<std::size_t> found = catalogue.placeOf(name))
            return *found;
        throw BadBytes("no catalogue");
    };
    const std::size_t id = place(u"Id");
    const std::size_t name = place(u"Name");
    const std::size_t type = place(u"Type");
    const std::size_t flags = place(u"Flags");
    constexpr qint64 TableType = 1;
    constexpr qint64 System = 0x80000002;
    std::vector<TableEntry> tables;
    catalogue.forEachRow([&](const std::vector<Field>& row) {
        const auto number = [&](std::size_t field) {
            const auto* const value = std::get_if<qint64>(&row[field]);
            return value == nullptr ? 0 : *value;
        };
        const auto* const text = std::get_if<QString>(&row[name]);
        if (text != nullptr && (number(type) & 0x7F) == TableType && (number(flags) & System) == 0)
            tables.push_back({.name = *text,
                              .definitionPage = static_cast<std::uint32_t>(number(id) & 0xFFFFFF)});
    });
    return tables;
}

} // namespace zelto::store::jet

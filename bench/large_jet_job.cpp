// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/large_jet_job.h"

#include "bench/large_job.h"
#include "store/jet/table.h"
#include "store/schema.h"

#include <QFile>

#include <algorithm>
#include <functional>
#include <stdexcept>

namespace zelto::bench {

using namespace store::jet;

namespace {

constexpr qsizetype PageSize = 2048;
constexpr qsizetype FirstSlot = 10;
constexpr qsizetype RowCountOfDefinition = 12;
constexpr qsizetype MapOfDefinition = 35;

/// A row as it lies in the file, and the key in it.
struct Sample
{
    QByteArray bytes;
    QByteArray key;
};

void put(QByteArray& bytes, qsizetype place, quint64 number, int size)
{
    for (int i = 0; i < size; ++i)
        bytes[place + i] = static_cast<char>(number >> 8 * i & 0xFFU);
}

std::vector<Sample> samplesOf(const JetFile& file, const TableEntry& entry)
{
    std::vector<Sample> samples;
    for (std::uint32_t number = 1; number < file.pageCount(); ++number) {
        const ByteView page = file.page(number);
        if (page.byte(0) != 1 || page.dword(4) != entry.definitionPage)
            continue;
        for (unsigned row = 0; row < file.rowCount(page); ++row)
            if (const ByteView bytes = file.row(number, row); bytes.size() > 0)
                samples.push_back({.bytes = {reinterpret_cast<const char*>(bytes.data()),
                                             static_cast<qsizetype>(bytes.size())},
                                   .key = {}});
    }
    std::size_t next = 0;
    Table(file, entry.definitionPage).forEachRow([&](const std::vector<Field>& fields) {
        samples.at(next++).key = std::get<QString>(fields.front()).toLatin1();
    });
    return samples;
}

/// The pages of one table, filled from their ends.
class PageWriter
{
public:
    explicit PageWriter(std::uint32_t owner) : m_owner(owner) {}

    void add(const QByteArray& row)
    {
        const qsizetype slot = FirstSlot + 2 * m_rows;
        if (m_page.isEmpty() || m_begin - row.size() < slot + 2)
            startPage();
        m_begin -= row.size();
        m_page.replace(m_begin, row.size(), row);
        put(m_page, FirstSlot + 2 * m_rows, static_cast<quint64>(m_begin), 2);
        put(m_page, 8, static_cast<quint64>(++m_rows), 2);
    }
    [[nodiscard]] QByteArray pages() { return m_pages + m_page; }

private:
    void startPage()
    {
        m_pages += m_page;
        m_page = QByteArray(PageSize, '\0');
        put(m_page, 0, 0x0101, 2);
        put(m_page, 4, m_owner, 4);
        m_begin = PageSize;
        m_rows = 0;
    }

    std::uint32_t m_owner;
    QByteArray m_pages;
    QByteArray m_page;
    qsizetype m_begin = 0;
    qsizetype m_rows = 0;
};

/// What one record more is to hold.
struct Numbers
{
    QByteArray key;
    int unit = 0;
    int position = 0;
};

QByteArray rowOf(Sample sample, const std::vector<Column>& columns, const Numbers& numbers)
{
    sample.bytes.replace(sample.bytes.indexOf(sample.key), sample.key.size(), numbers.key);
    for (const Column& column : columns)
        if (column.isFixed)
            put(sample.bytes, 1 + column.fixedOffset,
                static_cast<quint64>(column.name == u"Posizione" ? numbers.position : numbers.unit),
                2);
    return sample.bytes;
}

/// Gives the table these records in place of its own.
void replaceRows(QByteArray& bytes, const JetFile& file, const TableEntry& entry, int count,
                 const std::function<Numbers(int)>& numbersOf)
{
    const std::vector<Sample> samples = samplesOf(file, entry);
    const std::vector<Column> columns = Table(file, entry.definitionPage).columns();
    PageWriter writer(entry.definitionPage);
    for (int i = 0; i < count; ++i)
        writer.add(
            rowOf(samples.at(static_cast<std::size_t>(i) % samples.size()), columns, numbersOf(i)));
    const QByteArray pages = writer.pages();
    const qsizetype definition = entry.definitionPage * PageSize;
    put(bytes, definition + RowCountOfDefinition, static_cast<quint64>(count), 4);
    const std::uint32_t pointer = file.page(entry.definitionPage).dword(MapOfDefinition);
    const ByteView map = file.pointedAt(pointer);
    const auto place = static_cast<qsizetype>(map.data() - file.page(0).data());
    const qsizetype pageCount = pages.size() / PageSize;
    if (map.byte(0) != 0 || pageCount > static_cast<qsizetype>(map.size() - 5) * 8)
        throw std::runtime_error("the map has no room for the pages");
    put(bytes, place + 1, static_cast<quint64>(bytes.size() / PageSize), 4);
    for (qsizetype i = 0; i < static_cast<qsizetype>(map.size() - 5); ++i)
        bytes[place + 5 + i] =
            static_cast<char>((1 << std::clamp<qsizetype>(pageCount - 8 * i, 0, 8)) - 1);
    bytes += pages;
}

} // namespace

void writeLargeJetJob(const QString& smallJob, const QString& path)
{
    const JetFile file(smallJob);
    QFile original(smallJob);
    if (!original.open(QIODevice::ReadOnly))
        throw std::runtime_error("the small job cannot be read");
    QByteArray bytes = original.readAll();
    for (const TableEntry& entry : userTables(file)) {
        if (entry.name == store::TabellaUnita)
            replaceRows(bytes, file, entry, Units, [](int i) {
                return Numbers{.key = store::unitKey(i + 1).toLatin1(), .unit = i + 1};
            });
        if (entry.name == store::TabellaVani)
            replaceRows(bytes, file, entry, Units * RoomsOfUnit, [](int i) {
                const int unit = i / RoomsOfUnit + 1;
                const int position = i % RoomsOfUnit + 1;
                return Numbers{.key = store::roomKey(unit, position).toLatin1(),
                               .unit = unit,
                               .position = position};
            });
    }
    QFile large(path);
    if (!large.open(QIODevice::WriteOnly) || large.write(bytes) != bytes.size())
        throw std::runtime_error("the large job cannot be written");
}

} // namespace zelto::bench

// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/recovery/job_salvage.h"

#include "store/job_limits.h"
#include "store/recovery/page_image.h"
#include "store/recovery/tree_page.h"
#include "store/schema.h"
#include "text/decimal_text.h"

#include <set>
#include <utility>

namespace zelto::store {

namespace {

constexpr qsizetype UnitKeyLength = 5;

bool hasFieldsOf(QStringView table, const FoundRecord& found)
{
    return found.values.size() == jobTable(table).fields.size();
}

/// A unit number or position; none when the value cannot be one.
std::optional<int> positiveNumber(const Value& value)
{
    if (!value.isInteger() || value.integer() < 1 || value.integer() > MostRecords)
        return std::nullopt;
    return static_cast<int>(value.integer());
}

/// The number of a unit key, or of either half of a room key.
std::optional<int> keyNumber(QStringView key)
{
    bool isNumber = false;
    const int number = key.trimmed().toInt(&isNumber);
    if (!isNumber || number < 1 || unitKey(number) != key)
        return std::nullopt;
    return number;
}

/// The number that the key tells, or the one that stands beside it should the key be damaged.
std::optional<int> numberOf(QStringView key, const Value& stored)
{
    const std::optional<int> number = keyNumber(key);
    return number ? number : positiveNumber(stored);
}

std::optional<Record> unit(const FoundRecord& found)
{
    const std::optional<int> number = numberOf(found.values[0].text(), found.values[1]);
    if (!number || !found.whole)
        return std::nullopt;
    Record record = found.values;
    record[0] = unitKey(*number);
    record[1] = *number;
    return record;
}

std::optional<Record> room(const FoundRecord& found)
{
    const QString key = found.values[0].text();
    const std::optional<int> number = numberOf(key.left(UnitKeyLength), found.values[1]);
    const std::optional<int> position = numberOf(key.mid(UnitKeyLength), found.values[2]);
    if (!number || !position || !found.whole)
        return std::nullopt;
    Record record = found.values;
    record[0] = roomKey(*number, *position);
    record[1] = *number;
    record[2] = *position;
    return record;
}

/// Whether it has the form of a unit or a room, be it readable or not.
bool isListed(const FoundRecord& found)
{
    // Tables that another program made may number the records of units too.
    return hasFieldsOf(TabellaVani, found) ||
           (hasFieldsOf(TabellaUnita, found) && (found.keyed || found.values[1].isInteger()));
}

/// The table of a job to which a record belongs by its kind and its number of fields; empty when it
/// is no record of a job.
QStringView tableOf(const FoundRecord& found)
{
    if (isListed(found))
        return hasFieldsOf(TabellaVani, found) ? TabellaVani : TabellaUnita;
    for (const QStringView table : {TabellaVariabili, TabellaDatiGenerali, TabellaZelto})
        if (!found.keyed && hasFieldsOf(table, found))
            return table;
    return {};
}

/// The record of a page as that table takes it; none when its key is lost, or the marker is of
/// another format.
std::optional<Record> recordOnPage(QStringView table, FoundRecord found)
{
    if (table == TabellaZelto &&
        static_cast<float>(text::leadingNumber(found.values[0].text())) != VersioneFormato)
        return std::nullopt;
    if (table == TabellaDatiGenerali)
        found.values[0] = found.rowNumber; // the key, which the record does not repeat
    return recordOfTable(table, found);
}

/// The first page of a table, should the record be one of the list of tables.
std::optional<std::uint64_t> rootPage(const FoundRecord& found)
{
    constexpr std::size_t Fields = 5;
    constexpr std::size_t RootPageField = 3;
    if (found.keyed || found.values.size() != Fields || found.values[0].text() != u"table"_s ||
        !found.values[RootPageField].isInteger())
        return std::nullopt;
    return static_cast<std::uint64_t>(found.values[RootPageField].integer());
}

std::set<std::uint64_t> linkedPages(const std::vector<TreePage>& pages)
{
    std::set<std::uint64_t> linked;
    for (const TreePage& page : pages) {
        linked.insert(page.children.begin(), page.children.end());
        for (const FoundRecord& found : page.records)
            if (const std::optional<std::uint64_t> root = rootPage(found))
                linked.insert(*root);
    }
    return linked;
}

/// Every page in use, those first that other pages or the list of tables lead to: should the list
/// of free pages be damaged, deleted records come behind those that took their place.
std::vector<std::uint32_t> pagesInOrder(const PageImage& image, const std::vector<TreePage>& pages)
{
    const std::set<std::uint32_t> free = image.freePages();
    std::vector<std::uint32_t> order;
    for (std::uint32_t number = 1; number <= image.pageCount(); ++number)
        if (!free.contains(number))
            order.push_back(number);
    std::stable_partition(
        order.begin(), order.end(),
        [linked = linkedPages(pages)](std::uint32_t page) { return linked.contains(page); });
    return order;
}

void take(const TreePage& page, SalvagedJob& job)
{
    job.broken += page.broken;
    for (const FoundRecord& found : page.records) {
        const QStringView table = tableOf(found);
        std::optional<Record> record;
        if (!table.isEmpty())
            record = recordOnPage(table, found);
        if (record ? !found.whole : isListed(found))
            ++job.broken;
        if (record)
            job.records[table].push_back(std::move(*record));
    }
}

SalvagedJob salvageFrom(PageImage image)
{
    std::vector<TreePage> pages;
    for (std::uint32_t number = 1; number <= image.pageCount(); ++number)
        pages.push_back(readTreePage(number, image));
    SalvagedJob job;
    for (const std::uint32_t number : pagesInOrder(image, pages))
        take(pages[number - 1], job);
    return job;
}

std::size_t recordCount(const SalvagedJob& job)
{
    std::size_t count = 0;
    for (const auto& [table, records] : job.records)
        count += records.size();
    return count;
}

} // namespace

std::optional<Record> recordOfTable(QStringView table, const FoundRecord& found)
{
    if (table == TabellaUnita)
        return unit(found);
    return table == TabellaVani ? room(found) : std::optional(found.values);
}

SalvagedJob salvage(const QByteArray& bytes)
{
    using Reading = PageImage::Reading;
    SalvagedJob byHeader = salvageFrom(PageImage(bytes, Reading::ByHeader));
    SalvagedJob asMadeHere = salvageFrom(PageImage(bytes, Reading::AsMadeHere));
    return recordCount(asMadeHere) > recordCount(byHeader) ? asMadeHere : byHeader;
}

} // namespace zelto::store

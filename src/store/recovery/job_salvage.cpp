// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/recovery/job_salvage.h"

#include "store/recovery/page_image.h"
#include "store/recovery/salvaged_record.h"
#include "store/recovery/tree_page.h"
#include "text/literals.h"

#include <algorithm>
#include <set>
#include <utility>

namespace zelto::store {

namespace {

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
        std::optional<TableRecord> record = recordOfJob(found);
        if (record ? !found.whole : isListed(found))
            ++job.broken;
        if (record)
            job.records[record->table].push_back(std::move(record->values));
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

SalvagedJob salvage(const QByteArray& bytes)
{
    using Reading = PageImage::Reading;
    SalvagedJob byHeader = salvageFrom(PageImage(bytes, Reading::ByHeader));
    SalvagedJob asMadeHere = salvageFrom(PageImage(bytes, Reading::AsMadeHere));
    return recordCount(asMadeHere) > recordCount(byHeader) ? asMadeHere : byHeader;
}

} // namespace zelto::store

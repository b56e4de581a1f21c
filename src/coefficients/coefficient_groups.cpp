// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/coefficient_groups.h"

#include "store/database.h"
#include "store/schema.h"

#include <algorithm>

namespace zelto::coefficients {

namespace {

/// The only record, one of blanks that is added if there is none.
store::Record groupsRecord(store::Database& lavoro)
{
    if (lavoro.count(store::TabellaVariabili) == 0)
        store::addBlankGroups(lavoro);
    return lavoro.records(store::TabellaVariabili).record();
}

GroupTexts readGroups(const store::Record& record)
{
    GroupTexts groups;
    std::ranges::transform(record, groups.begin(), &store::Value::text);
    return groups;
}

} // namespace

GroupTexts loadGroups(store::Database& lavoro)
{
    return readGroups(groupsRecord(lavoro));
}

void saveGroups(store::Database& lavoro, const GroupTexts& groups, const GroupTexts& loaded)
{
    store::Database::Transaction transaction(lavoro);
    const store::Record stored = groupsRecord(lavoro);
    if (readGroups(stored) != loaded)
        throw store::DatabaseError(store::ErrorNumber::RecordChanged,
                                   u"I coefficienti del lavoro sono stati cambiati da "
                                   u"un altro programma. Annullare e riaprire la "
                                   u"finestra per vederli."_s);
    store::Record record(groups.size());
    std::ranges::transform(groups, record.begin(), store::Value::nullIfEmpty);
    lavoro.writer(store::jobTable(store::TabellaVariabili)).change(stored, record);
    transaction.commit();
}

} // namespace zelto::coefficients

// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/coefficient_groups.h"

#include "store/database.h"
#include "store/schema.h"

namespace zelto::coefficients {

using store::TableRecordset;

const QStringList& groupNames()
{
    static const QStringList names{u"Ambiente"_s,       u"Destinazione"_s, u"Orientamento"_s,
                                   u"Prospetto"_s,      u"Luminosità"_s,   u"Funzionalità"_s,
                                   u"Piano riduttore"_s};
    return names;
}

namespace {

/// On its only record, one of blanks that is added if there is none.
TableRecordset openGroups(store::Database& lavoro)
{
    TableRecordset record = lavoro.openTable(store::TabellaVariabili);
    if (record.EndOfFile()) {
        store::addBlankGroups(lavoro);
        record.MoveFirst();
    }
    return record;
}

GroupTexts readGroups(const TableRecordset& record)
{
    GroupTexts groups;
    for (int group = 0; group < NumGroups; ++group)
        groups.at(static_cast<std::size_t>(group)) = record.text(group);
    return groups;
}

} // namespace

GroupTexts loadGroups(store::Database& lavoro)
{
    return readGroups(openGroups(lavoro));
}

void saveGroups(store::Database& lavoro, const GroupTexts& groups, const GroupTexts& loaded)
{
    store::Database::Transaction transaction(lavoro);
    TableRecordset record = openGroups(lavoro);
    if (readGroups(record) != loaded)
        throw store::DatabaseError(store::ErrorNumber::RecordChanged,
                                   u"I coefficienti del lavoro sono stati cambiati da "
                                   u"un altro programma. Annullare e riaprire la "
                                   u"finestra per vederli."_s);
    record.Edit();
    for (int group = 0; group < NumGroups; ++group)
        record.setField(group,
                        store::Value::nullIfEmpty(groups.at(static_cast<std::size_t>(group))));
    record.Update();
    record.Close();
    transaction.commit();
}

} // namespace zelto::coefficients

// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_writer.h"

#include "store/schema.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zelto::registro {

using store::Value;
using Table = RecordChange::Table;

namespace {

QStringView nameOf(Table table)
{
    return table == Table::Units ? store::TabellaUnita : store::TabellaVani;
}

} // namespace

Register::Writer::Writer(store::Database& lavoro)
    : m_lavoro(lavoro), m_transaction(lavoro),
      m_units(lavoro.writer(store::jobTable(store::TabellaUnita))),
      m_rooms(lavoro.writer(store::jobTable(store::TabellaVani)))
{}

std::vector<Record> Register::Writer::find(Table table, QStringView field, const Value& value) const
{
    return m_lavoro.records(nameOf(table), {{field, value}}, store::CampoChiave).records();
}

void Register::Writer::requireUnit(int unit) const
{
    if (find(Table::Units, store::CampoUnita, Value(unit)).empty())
        throw store::DatabaseError(
            store::ErrorNumber::RecordDeleted,
            u"L'unità %1 non c'è più: un altro programma l'ha eliminata. Scegliere "
            u"un'altra unità, o aggiungerne una, e ripetere."_s.arg(unit));
}

QHash<int, QString> Register::Writer::names(const QList<int>& units) const
{
    QHash<int, QString> names;
    for (const int unit : units)
        for (const Record& record : find(Table::Units, store::CampoUnita, Value(unit)))
            names.insert(unit, textOf(record, UnitRiferimento));
    return names;
}

void Register::Writer::write(Table table, const Record& before, const Record& after)
{
    store::RecordWriter& writer = table == Table::Units ? m_units : m_rooms;
    if (before.empty())
        writer.add(after);
    else if (!after.empty())
        writer.change(before, after);
    else
        writer.remove(before.front());
}

void Register::Writer::note(Table table, const Record& before, Record after)
{
    write(table, before, after);
    m_changes.push_back({.table = table, .before = before, .after = std::move(after)});
}

void Register::Writer::add(Table table, Record record)
{
    note(table, {}, std::move(record));
}

void Register::Writer::remove(Table table, const Record& record)
{
    note(table, record, {});
}

void Register::Writer::change(Table table, const Record& record, int field, const QString& text)
{
    Record after = record;
    after[static_cast<std::size_t>(field)] = Value::nullIfEmpty(text);
    if (after != record)
        note(table, record, std::move(after));
}

void Register::Writer::exchange(Table table, const Record& one, const Record& other, int firstField)
{
    Record first = one;
    Record second = other;
    std::copy(other.begin() + firstField, other.end(), first.begin() + firstField);
    std::copy(one.begin() + firstField, one.end(), second.begin() + firstField);
    if (first == one)
        return;
    note(table, one, std::move(first));
    note(table, other, std::move(second));
}

void Register::Writer::repeat(const RecordChange& change)
{
    const std::vector<Record> stored =
        find(change.table, store::CampoChiave, change.record().front());
    if ((stored.empty() ? Record() : stored.front()) != change.before)
        throw store::DatabaseError(
            store::ErrorNumber::RecordChanged,
            u"L'unità %1 è stata cambiata da un altro programma: le modifiche fatte "
            u"fin qui non si possono più annullare."_s.arg(change.unit()));
    write(change.table, change.before, change.after);
    m_changes.push_back(change);
}

std::vector<RecordChange> Register::Writer::commit()
{
    m_transaction.commit();
    return std::move(m_changes);
}

} // namespace zelto::registro

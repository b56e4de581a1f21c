// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_writer.h"

#include "store/schema.h"

#include <algorithm>

namespace zelto::registro {

using store::Value;

namespace {

Record first(const std::vector<Record>& found)
{
    return found.empty() ? throw Missing() : found.front();
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

std::vector<Record> Register::Writer::unitsOf(int unit) const
{
    return find(Table::Units, store::CampoUnita, unit);
}

std::vector<Record> Register::Writer::roomsOf(int unit) const
{
    return find(Table::Rooms, store::CampoUnita, unit);
}

Record Register::Writer::unit(int unit) const
{
    return first(unitsOf(unit));
}

Record Register::Writer::room(int unit, int position) const
{
    return first(find(Table::Rooms, store::CampoChiave, store::roomKey(unit, position)));
}

void Register::Writer::requireUnit(int unit) const
{
    if (unitsOf(unit).empty())
        throw store::DatabaseError(
            store::ErrorNumber::RecordDeleted,
            u"L'unità %1 non c'è più: un altro programma l'ha eliminata. Scegliere "
            u"un'altra unità, o aggiungerne una, e ripetere."_s.arg(unit));
}

void Register::Writer::write(Table table, const Record& before, Record after)
{
    store::RecordWriter& writer = table == Table::Units ? m_units : m_rooms;
    if (before.empty())
        writer.add(after);
    else if (!after.empty())
        writer.change(before, after);
    else
        writer.remove(before.front());
    m_changes.push_back({.table = table, .before = before, .after = std::move(after)});
}

void Register::Writer::change(Table table, const Record& record, int field, const QString& text)
{
    Record after = record;
    after[static_cast<std::size_t>(field)] = Value::nullIfEmpty(text);
    if (after != record)
        write(table, record, std::move(after));
}

void Register::Writer::exchange(Table table, const Record& one, const Record& other)
{
    const int first = numberField(table) + 1;
    Record ofOne = one;
    Record ofOther = other;
    std::copy(other.begin() + first, other.end(), ofOne.begin() + first);
    std::copy(one.begin() + first, one.end(), ofOther.begin() + first);
    if (ofOne == one)
        return;
    write(table, one, std::move(ofOne));
    write(table, other, std::move(ofOther));
}

void Register::Writer::repeat(const RecordChange& change)
{
    const std::vector<Record> stored =
        find(change.table, store::CampoChiave, change.record().front());
    if ((stored.empty() ? Record() : stored.front()) != change.before)
        throw store::DatabaseError(
            store::ErrorNumber::RecordChanged,
            u"L'unità %1 è stata cambiata da un altro programma o da un'altra finestra: le "
            u"modifiche fatte fin qui non si possono più annullare."_s.arg(change.unit()));
    write(change.table, change.before, change.after);
}

} // namespace zelto::registro

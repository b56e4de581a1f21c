// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register.h"

#include "register/register_lists.h"
#include "register/register_writer.h"
#include "store/job_queries.h"
#include "store/schema.h"

#include <QSet>

#include <algorithm>
#include <utility>

namespace zelto::registro {

using store::CampoUnita;
using store::Value;
using Table = RecordChange::Table;

namespace {

Record emptyUnit(const QString& key, int number)
{
    Record record(store::jobTable(store::TabellaUnita).fields.size());
    record[UnitKey] = key;
    record[UnitNumber] = number;
    return record;
}

Record emptyRoom(const QString& key, int unit, int position)
{
    Record record(store::jobTable(store::TabellaVani).fields.size());
    record[RoomKey] = key;
    record[RoomUnit] = unit;
    record[RoomPosition] = position;
    return record;
}

void setTexts(Record& record, const NewTexts& texts)
{
    for (const auto& [ordinal, text] : texts.asKeyValueRange())
        record[static_cast<std::size_t>(ordinal)] = Value::nullIfEmpty(text);
}

/// A record to be changed is gone.
struct Missing
{};

} // namespace

QString withFlag(const QString& flags, int table, bool on)
{
    QString all = flags.left(store::SpecialTables).leftJustified(store::SpecialTables).toUpper();
    for (QChar& flag : all)
        flag = flag == u'X' ? u'X' : u' ';
    all[table - 1] = on ? u'X' : u' ';
    return all;
}

Record Register::foundUnit(const Writer& writer, int unit)
{
    const std::vector<Record> found = writer.find(Table::Units, CampoUnita, Value(unit));
    return found.empty() ? throw Missing() : found.front();
}

Record Register::foundRoom(const Writer& writer, int unit, int position)
{
    const std::vector<Record> found =
        writer.find(Table::Rooms, store::CampoChiave, store::roomKey(unit, position));
    return found.empty() ? throw Missing() : found.front();
}

/// Of a record that is changed more than once, it is the first time that counts.
bool Register::isAsSeen(const std::vector<RecordChange>& records) const
{
    QSet<QString> earlier; // keys of units and of rooms differ in length
    return !m_asSeen ||
           std::all_of(records.begin(), records.end(), [&](const RecordChange& change) {
               const QString key = textOf(change.record(), UnitKey);
               if (earlier.contains(key))
                   return true;
               earlier.insert(key);
               return m_asSeen(change);
           });
}

RegisterChange Register::perform(Deed deed, const std::function<void(Writer&)>& work)
{
    Writer writer(m_lavoro);
    try {
        work(writer);
    } catch (const Missing&) {
        return {.caption = {}, .records = {}, .missing = true};
    }
    RegisterChange change{.caption = {}, .records = writer.changes()};
    if (change.isEmpty())
        return change;
    if (!isAsSeen(change.records))
        return {.caption = {}, .records = {}, .missing = true};
    QHash<int, QString> names = writer.names(change.units());
    for (const RecordChange& record : change.records)
        if (record.table == Table::Units && !names.contains(record.unit()))
            names.insert(record.unit(), textOf(record.before, UnitRiferimento));
    change.caption = captionOf(deed, change.records, names);
    (void)writer.commit();
    m_done.push_back(change);
    m_undone.clear();
    return change;
}

void Register::addUnit(Writer& writer, const NewTexts& texts)
{
    const int number = store::nextUnit(m_lavoro);
    const QString key = store::unitKey(number);
    Record unit = emptyUnit(key, number);
    setTexts(unit, texts);
    writer.add(Table::Units, std::move(unit));
    writer.add(Table::Rooms, emptyRoom(store::roomKey(number, 1), number, 1));
}

void Register::addRoom(Writer& writer, int unit, const NewTexts& texts)
{
    const int position = store::nextPosition(m_lavoro, unit);
    Record room = emptyRoom(store::roomKey(unit, position), unit, position);
    setTexts(room, texts);
    writer.add(Table::Rooms, std::move(room));
}

RegisterChange Register::AggiungiUI()
{
    return perform(Deed::Adds, [this](Writer& writer) { addUnit(writer, {}); });
}

RegisterChange Register::AggiungiVano(int unit)
{
    return perform(Deed::Adds, [this, unit](Writer& writer) {
        writer.requireUnit(unit);
        addRoom(writer, unit, {});
    });
}

RegisterChange Register::EliminaUI(const QList<int>& units)
{
    return perform(Deed::Deletes, [&](Writer& writer) {
        for (const int unit : units)
            for (const Table table : {Table::Units, Table::Rooms})
                for (const Record& record : writer.find(table, CampoUnita, unit))
                    writer.remove(table, record);
    });
}

RegisterChange Register::EliminaVano(int unit, const QList<int>& positions)
{
    return perform(Deed::Deletes, [&](Writer& writer) {
        for (const Record& room : writer.find(Table::Rooms, CampoUnita, unit))
            if (positions.contains(numberOf(room, RoomPosition)))
                writer.remove(Table::Rooms, room);
    });
}

RegisterChange Register::DuplicaUI(const QList<int>& units)
{
    return perform(Deed::Copies, [&](Writer& writer) {
        for (const int unit : units) {
            const std::vector<Record> sources = writer.find(Table::Units, CampoUnita, unit);
            if (sources.empty())
                continue;
            const int number = store::nextUnit(m_lavoro);
            Record copy = sources.front();
            copy[UnitKey] = store::unitKey(number);
            copy[UnitNumber] = number;
            writer.add(Table::Units, std::move(copy));
            std::vector<Record> rooms = writer.find(Table::Rooms, CampoUnita, unit);
            if (rooms.empty())
                writer.add(Table::Rooms, emptyRoom(store::roomKey(number, 1), number, 1));
            for (Record& room : rooms) {
                room[RoomKey] = store::unitKey(number) + room[RoomKey].text().mid(5);
                room[RoomUnit] = number;
                writer.add(Table::Rooms, std::move(room));
            }
        }
    });
}

RegisterChange Register::DuplicaVano(int unit, const QList<int>& positions)
{
    return perform(Deed::Copies, [&](Writer& writer) {
        writer.requireUnit(unit);
        const std::vector<Record> rooms = writer.find(Table::Rooms, CampoUnita, unit);
        for (const int source : positions) {
            const int position = store::nextPosition(m_lavoro, unit);
            Record copy = emptyRoom(store::roomKey(unit, position), unit, position);
            for (const Record& room : rooms)
                if (room[RoomPosition] == Value(source))
                    std::copy(room.begin() + RoomAmbiente, room.end(), copy.begin() + RoomAmbiente);
            writer.add(Table::Rooms, std::move(copy));
        }
    });
}

/// Keys and numbers stay where they are; what they stand for changes places.
RegisterChange Register::ScambiaUI(const QList<std::pair<int, int>>& pairs)
{
    return perform(Deed::Moves, [&](Writer& writer) {
        for (const auto& [one, other] : pairs) {
            writer.exchange(Table::Units, foundUnit(writer, one), foundUnit(writer, other),
                            UnitRiferimento);
            const std::vector<Record> ofOne = writer.find(Table::Rooms, CampoUnita, one);
            const std::vector<Record> ofOther = writer.find(Table::Rooms, CampoUnita, other);
            for (const auto* rooms : {&ofOne, &ofOther})
                for (const Record& room : *rooms)
                    writer.remove(Table::Rooms, room);
            for (const auto& [rooms, unit] : {std::pair(&ofOne, other), std::pair(&ofOther, one)})
                for (Record room : *rooms) {
                    room[RoomKey] = store::unitKey(unit) + room[RoomKey].text().mid(5);
                    room[RoomUnit] = unit;
                    writer.add(Table::Rooms, std::move(room));
                }
        }
    });
}

RegisterChange Register::ScambiaVani(int unit, const QList<std::pair<int, int>>& pairs)
{
    return perform(Deed::Moves, [&](Writer& writer) {
        for (const auto& [one, other] : pairs)
            writer.exchange(Table::Rooms, foundRoom(writer, unit, one),
                            foundRoom(writer, unit, other), RoomAmbiente);
    });
}

RegisterChange Register::MemorizzaUI(const QList<FieldEdit>& edits, const QList<NewTexts>& added)
{
    return perform(Deed::Changes, [&](Writer& writer) {
        for (const FieldEdit& edit : edits)
            writer.change(Table::Units, foundUnit(writer, edit.number), edit.ordinal, edit.text);
        for (const NewTexts& texts : added)
            addUnit(writer, texts);
    });
}

RegisterChange Register::MemorizzaVano(int unit, const QList<FieldEdit>& edits,
                                       const QList<NewTexts>& added)
{
    return perform(Deed::Changes, [&](Writer& writer) {
        if (!added.isEmpty())
            writer.requireUnit(unit);
        for (const FieldEdit& edit : edits)
            writer.change(Table::Rooms, foundRoom(writer, unit, edit.number), edit.ordinal,
                          edit.text);
        for (const NewTexts& texts : added)
            addRoom(writer, unit, texts);
    });
}

RegisterChange Register::MemorizzaFlag(int unit, int table, bool on)
{
    return perform(Deed::Changes, [&](Writer& writer) {
        const Record record = foundUnit(writer, unit);
        writer.change(Table::Units, record, UnitFlags,
                      withFlag(textOf(record, UnitFlags), table, on));
    });
}

QString Register::undoCaption() const
{
    return m_done.empty() ? QString() : m_done.back().caption;
}

QString Register::redoCaption() const
{
    return m_undone.empty() ? QString() : m_undone.back().caption;
}

RegisterChange Register::replay(const RegisterChange& change)
{
    try {
        Writer writer(m_lavoro);
        for (const RecordChange& record : change.records)
            writer.repeat(record);
        return {.caption = change.caption, .records = writer.commit()};
    } catch (const store::DatabaseError& error) {
        if (error.number() == store::ErrorNumber::RecordChanged)
            forgetChanges();
        throw;
    }
}

RegisterChange Register::undo()
{
    if (m_done.empty())
        return {};
    RegisterChange change = replay(m_done.back().reversed());
    m_undone.push_back(std::move(m_done.back()));
    m_done.pop_back();
    return change;
}

RegisterChange Register::redo()
{
    if (m_undone.empty())
        return {};
    RegisterChange change = replay(m_undone.back());
    m_done.push_back(std::move(m_undone.back()));
    m_undone.pop_back();
    return change;
}

void Register::forgetChanges()
{
    m_done.clear();
    m_undone.clear();
}

} // namespace zelto::registro

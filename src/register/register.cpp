// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register.h"

#include "register/register_writer.h"
#include "store/job_queries.h"
#include "store/schema.h"

#include <QSet>

#include <algorithm>

namespace zelto::registro {

using store::Value;

namespace {

// What the user did, as it is called where it can be undone.
const QString Adds = u"aggiunta"_s;
const QString Deletes = u"eliminazione"_s;
const QString Copies = u"copia"_s;
const QString Moves = u"spostamento"_s;

/// A record of these first fields, the others Null.
Record newRecord(Table table, Record fields)
{
    fields.resize(store::jobTable(nameOf(table)).fields.size());
    return fields;
}

Record newRoom(int unit, int position)
{
    return newRecord(Table::Rooms, {store::roomKey(unit, position), unit, position});
}

/// The room, in another unit.
Record movedTo(int unit, Record room)
{
    room[RoomKey] = store::unitKey(unit) + room[RoomKey].text().mid(5);
    room[RoomUnit] = unit;
    return room;
}

Record withTexts(Record record, const NewTexts& texts)
{
    for (const auto& [ordinal, text] : texts.asKeyValueRange())
        record[static_cast<std::size_t>(ordinal)] = Value::nullIfEmpty(text);
    return record;
}

} // namespace

QString withFlag(const QString& flags, int table, bool on)
{
    QString all = flags.left(store::SpecialTables).leftJustified(store::SpecialTables).toUpper();
    for (QChar& flag : all)
        flag = flag == u'X' ? u'X' : u' ';
    all[table - 1] = on ? u'X' : u' ';
    return all;
}

/// Of a record that is changed more than once, it is the first time that counts.
bool Register::isAsSeen(const std::vector<RecordChange>& records) const
{
    QSet<QString> earlier; // keys of units and of rooms differ in length
    return std::ranges::all_of(records, [&](const RecordChange& change) {
        const QString key = textOf(change.record(), UnitKey);
        const bool again = earlier.contains(key);
        earlier.insert(key);
        return again || m_asSeen(change);
    });
}

RegisterChange Register::perform(const QString& deed, const std::function<void(Writer&)>& work)
{
    Writer writer(m_lavoro);
    try {
        work(writer);
    } catch (const Missing&) {
        return {.missing = true};
    }
    RegisterChange change{.records = writer.changes()};
    if (change.isEmpty())
        return change;
    if (!isAsSeen(change.records))
        return {.missing = true};
    const RecordChange& first = change.records.front();
    const std::vector<Record> units = writer.unitsOf(first.unit());
    const Record unit = !units.empty()                ? units.front()
                        : first.table == Table::Units ? first.before
                                                      : Record();
    change.caption = captionOf(deed, change, textOf(unit, UnitRiferimento));
    writer.commit();
    m_done.push_back(change);
    m_undone.clear();
    return change;
}

void Register::addUnit(Writer& writer, const NewTexts& texts)
{
    const int number = store::nextUnit(m_lavoro);
    const Record empty = newRecord(Table::Units, {store::unitKey(number), number});
    writer.write(Table::Units, {}, withTexts(empty, texts));
    writer.write(Table::Rooms, {}, newRoom(number, 1));
}

void Register::addRoom(Writer& writer, int unit, const NewTexts& texts)
{
    const int position = store::nextPosition(m_lavoro, unit);
    writer.write(Table::Rooms, {}, withTexts(newRoom(unit, position), texts));
}

RegisterChange Register::AggiungiUI()
{
    return perform(Adds, [this](Writer& writer) { addUnit(writer, {}); });
}

RegisterChange Register::AggiungiVano(int unit)
{
    return perform(Adds, [this, unit](Writer& writer) {
        writer.requireUnit(unit);
        addRoom(writer, unit, {});
    });
}

RegisterChange Register::EliminaUI(const QList<int>& units)
{
    return perform(Deletes, [&](Writer& writer) {
        for (const int unit : units)
            for (const Table table : {Table::Units, Table::Rooms})
                for (const Record& record : writer.find(table, store::CampoUnita, unit))
                    writer.write(table, record, {});
    });
}

RegisterChange Register::EliminaVano(int unit, const QList<int>& positions)
{
    return perform(Deletes, [&](Writer& writer) {
        for (const Record& room : writer.roomsOf(unit))
            if (positions.contains(numberOf(room, RoomPosition)))
                writer.write(Table::Rooms, room, {});
    });
}

RegisterChange Register::DuplicaUI(const QList<int>& units)
{
    return perform(Copies, [&](Writer& writer) {
        for (const int unit : units)
            for (Record& copy : writer.unitsOf(unit)) {
                const int number = store::nextUnit(m_lavoro);
                copy[UnitKey] = store::unitKey(number);
                copy[UnitNumber] = number;
                writer.write(Table::Units, {}, std::move(copy));
                const std::vector<Record> rooms = writer.roomsOf(unit);
                if (rooms.empty())
                    writer.write(Table::Rooms, {}, newRoom(number, 1));
                for (const Record& room : rooms)
                    writer.write(Table::Rooms, {}, movedTo(number, room));
            }
    });
}

RegisterChange Register::DuplicaVano(int unit, const QList<int>& positions)
{
    return perform(Copies, [&](Writer& writer) {
        writer.requireUnit(unit);
        const std::vector<Record> rooms = writer.roomsOf(unit);
        for (const int source : positions) {
            Record copy = newRoom(unit, store::nextPosition(m_lavoro, unit));
            for (const Record& room : rooms)
                if (room[RoomPosition] == Value(source))
                    std::copy(room.begin() + RoomAmbiente, room.end(), copy.begin() + RoomAmbiente);
            writer.write(Table::Rooms, {}, std::move(copy));
        }
    });
}

/// Keys and numbers stay where they are; what they stand for changes places.
RegisterChange Register::ScambiaUI(const QList<std::pair<int, int>>& pairs)
{
    return perform(Moves, [&](Writer& writer) {
        for (const auto& [one, other] : pairs) {
            writer.exchange(Table::Units, writer.unit(one), writer.unit(other));
            const std::vector<Record> ofOne = writer.roomsOf(one);
            const std::vector<Record> ofOther = writer.roomsOf(other);
            for (const auto* rooms : {&ofOne, &ofOther})
                for (const Record& room : *rooms)
                    writer.write(Table::Rooms, room, {});
            for (const auto& [rooms, unit] : {std::pair(&ofOne, other), std::pair(&ofOther, one)})
                for (const Record& room : *rooms)
                    writer.write(Table::Rooms, {}, movedTo(unit, room));
        }
    });
}

RegisterChange Register::ScambiaVani(int unit, const QList<std::pair<int, int>>& pairs)
{
    return perform(Moves, [&](Writer& writer) {
        for (const auto& [one, other] : pairs)
            writer.exchange(Table::Rooms, writer.room(unit, one), writer.room(unit, other));
    });
}

RegisterChange Register::MemorizzaUI(const QList<FieldEdit>& edits, const QList<NewTexts>& added)
{
    return perform({}, [&](Writer& writer) {
        for (const auto& [number, field, text] : edits)
            writer.change(Table::Units, writer.unit(number), field, text);
        for (const NewTexts& texts : added)
            addUnit(writer, texts);
    });
}

RegisterChange Register::MemorizzaVano(int unit, const QList<FieldEdit>& edits,
                                       const QList<NewTexts>& added)
{
    return perform({}, [&](Writer& writer) {
        if (!added.isEmpty())
            writer.requireUnit(unit);
        for (const auto& [position, field, text] : edits)
            writer.change(Table::Rooms, writer.room(unit, position), field, text);
        for (const NewTexts& texts : added)
            addRoom(writer, unit, texts);
    });
}

RegisterChange Register::MemorizzaFlag(int unit, int table, bool on)
{
    return perform({}, [&](Writer& writer) {
        const Record record = writer.unit(unit);
        writer.change(Table::Units, record, UnitFlags,
                      withFlag(textOf(record, UnitFlags), table, on));
    });
}

/// Making a change again is taking back that it was taken back.
RegisterChange Register::takeBack(std::vector<RegisterChange>& done,
                                  std::vector<RegisterChange>& undone)
{
    if (done.empty())
        return {};
    RegisterChange change = done.back().reversed();
    try {
        Writer writer(m_lavoro);
        for (const RecordChange& record : change.records)
            writer.repeat(record);
        writer.commit();
    } catch (const store::DatabaseError& error) {
        if (error.number() == store::ErrorNumber::RecordChanged) {
            m_done.clear();
            m_undone.clear();
        }
        throw;
    }
    done.pop_back();
    undone.push_back(change);
    return change;
}

void Register::followTexts(const coefficients::RoomTexts& texts)
{
    const auto follow = [&](Record& room) {
        for (std::size_t field = 0; field < room.size(); ++field)
            if (const auto text = texts.find({field, room[field].text()}); text != texts.end())
                room[field] = store::Value(text->second);
    };
    for (std::vector<RegisterChange>* changes : {&m_done, &m_undone})
        for (RegisterChange& change : *changes)
            for (RecordChange& record : change.records)
                if (record.table == Table::Rooms) {
                    follow(record.before);
                    follow(record.after);
                }
}

} // namespace zelto::registro

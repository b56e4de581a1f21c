// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register.h"

#include "register/register_writer.h"
#include "store/schema.h"

#include <utility>

namespace zelto::registro {

using store::Value;
using Table = RecordChange::Table;

namespace {

const QString NumberField = QStringLiteral("Riferimento unità");

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

/// "Elimina vano", or "Elimina 3 vani" of several.
QString counted(const QString& verb, const QString& one, const QString& several, qsizetype count)
{
    return count == 1 ? verb + u' ' + one
                      : QStringLiteral("%1 %2 %3").arg(verb, QString::number(count), several);
}

QString ofUnits(const QString& verb, qsizetype count)
{
    return counted(verb, QStringLiteral("U.I."), QStringLiteral("U.I."), count);
}

QString ofRooms(const QString& verb, qsizetype count)
{
    return counted(verb, QStringLiteral("vano"), QStringLiteral("vani"), count);
}

QString ofCells(qsizetype count)
{
    return counted(QStringLiteral("Modifica"), QStringLiteral("cella"), QStringLiteral("celle"),
                   count);
}

} // namespace

RegisterChange Register::perform(const QString& caption, const std::function<void(Writer&)>& work)
{
    Writer writer(m_lavoro);
    work(writer);
    RegisterChange change{.caption = caption, .records = writer.commit()};
    if (!change.isEmpty()) {
        m_done.push_back(change);
        m_undone.clear();
    }
    return change;
}

RegisterChange Register::AggiungiUI()
{
    return perform(QStringLiteral("Aggiungi U.I."), [](Writer& writer) {
        const int number = writer.highestUnit() + 1;
        const QString key = writer.nextUnitKey();
        writer.add(Table::Units, emptyUnit(key, number));
        writer.add(Table::Rooms, emptyRoom(key + store::unitKey(1), number, 1));
    });
}

RegisterChange Register::AggiungiVano(int unit)
{
    return perform(QStringLiteral("Aggiungi vano"), [unit](Writer& writer) {
        const int position = writer.highestPosition(unit) + 1;
        writer.add(Table::Rooms, emptyRoom(store::roomKey(unit, position), unit, position));
    });
}

RegisterChange Register::EliminaUI(const QList<int>& units)
{
    return perform(ofUnits(QStringLiteral("Elimina"), units.size()), [&](Writer& writer) {
        for (const int unit : units)
            for (const Table table : {Table::Units, Table::Rooms})
                for (const Record& record : writer.find(table, NumberField, unit))
                    writer.remove(table, record);
    });
}

RegisterChange Register::EliminaVano(int unit, const QList<int>& positions)
{
    return perform(ofRooms(QStringLiteral("Elimina"), positions.size()), [&](Writer& writer) {
        for (const Record& room : writer.find(Table::Rooms, NumberField, unit))
            if (positions.contains(static_cast<int>(room[RoomPosition].integer())))
                writer.remove(Table::Rooms, room);
    });
}

RegisterChange Register::DuplicaUI(const QList<int>& units)
{
    return perform(ofUnits(QStringLiteral("Duplica"), units.size()), [&](Writer& writer) {
        for (const int unit : units) {
            const std::vector<Record> sources = writer.find(Table::Units, NumberField, unit);
            if (sources.empty())
                continue;
            const int number = writer.highestUnit() + 1;
            const QString key = writer.nextUnitKey();
            Record copy = sources.front();
            copy[UnitKey] = key;
            copy[UnitNumber] = number;
            writer.add(Table::Units, std::move(copy));
            std::vector<Record> rooms = writer.find(Table::Rooms, NumberField, unit);
            if (rooms.empty())
                writer.add(Table::Rooms, emptyRoom(key + store::unitKey(1), number, 1));
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
    return perform(ofRooms(QStringLiteral("Duplica"), positions.size()), [&](Writer& writer) {
        const std::vector<Record> rooms = writer.find(Table::Rooms, NumberField, unit);
        for (const int source : positions) {
            const int position = writer.highestPosition(unit) + 1;
            Record copy = emptyRoom(store::roomKey(unit, position), unit, position);
            for (const Record& room : rooms)
                if (room[RoomPosition] == Value(source))
                    std::copy(room.begin() + RoomAmbiente, room.end(), copy.begin() + RoomAmbiente);
            writer.add(Table::Rooms, std::move(copy));
        }
    });
}

RegisterChange Register::MemorizzaUI(const QList<UnitEdit>& edits)
{
    return perform(ofCells(edits.size()), [&](Writer& writer) {
        for (const UnitEdit& edit : edits)
            writer.changeFirst(Table::Units,
                               writer.find(Table::Units, NumberField, Value(edit.unit)),
                               edit.ordinal, edit.text);
    });
}

RegisterChange Register::MemorizzaVano(int unit, const QList<RoomEdit>& edits)
{
    return perform(ofCells(edits.size()), [&](Writer& writer) {
        for (const RoomEdit& edit : edits)
            writer.changeFirst(Table::Rooms,
                               writer.find(Table::Rooms, QStringLiteral("Chiave"),
                                           store::roomKey(unit, edit.position)),
                               edit.ordinal, edit.text);
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

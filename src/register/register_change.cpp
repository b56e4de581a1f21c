// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_change.h"

#include "text/literals.h"

#include <algorithm>
#include <utility>

namespace zelto::registro {

namespace {

bool isOfUnit(const RecordChange& change)
{
    return change.table == Table::Units;
}

QString nameOfField(Table table, int field)
{
    const std::vector<Column>& columns = columnsOf(table);
    const auto column = std::ranges::find(columns, field, &Column::field);
    return column == columns.end() ? QString() : column->name;
}

QString ofUnits(const QList<int>& units, const QString& name)
{
    if (units.size() != 1)
        return u"%1 U.I."_s.arg(units.size());
    return name.trimmed().isEmpty() ? u"U.I. %1"_s.arg(units.front()) : name.trimmed();
}

QString ofRooms(const std::vector<RecordChange>& rooms)
{
    if (rooms.size() != 1)
        return u"%1 vani"_s.arg(rooms.size());
    const QString name = textOf(rooms.front().record(), RoomAmbiente).trimmed();
    return name.isEmpty() ? u"un vano"_s : name;
}

QString ofCells(const std::vector<RecordChange>& records, const QString& where)
{
    QStringList names;
    for (const RecordChange& change : records)
        for (const int field : change.fields())
            names << nameOfField(change.table, field);
    return names.size() == 1 ? u"%1 di %2"_s.arg(names.front(), where)
                             : u"%1 celle di %2"_s.arg(QString::number(names.size()), where);
}

} // namespace

QString textOf(const Record& record, int field)
{
    return record.empty() ? QString() : record[static_cast<std::size_t>(field)].text();
}

int numberOf(const Record& record, int field)
{
    return record.empty() ? 0 : static_cast<int>(record[static_cast<std::size_t>(field)].integer());
}

int RecordChange::unit() const
{
    return numberOf(record(), isOfUnit(*this) ? static_cast<int>(UnitNumber) : RoomUnit);
}

QList<int> RecordChange::fields() const
{
    const Record none(record().size());
    const Record& old = before.empty() ? none : before;
    const Record& now = after.empty() ? none : after;
    QList<int> changed;
    for (auto field = static_cast<std::size_t>(numberField(table)) + 1; field < now.size(); ++field)
        if (old[field] != now[field])
            changed.append(static_cast<int>(field));
    return changed;
}

QList<int> RegisterChange::units() const
{
    QList<int> numbers;
    for (const RecordChange& change : records)
        if (const int unit = change.unit(); !numbers.contains(unit))
            numbers.append(unit);
    return numbers;
}

RegisterChange RegisterChange::reversed() const
{
    RegisterChange back{.caption = caption, .records = records};
    std::ranges::reverse(back.records);
    for (RecordChange& change : back.records)
        std::swap(change.before, change.after);
    return back;
}

QString captionOf(const QString& deed, const RegisterChange& change, const QString& name)
{
    const QString where = ofUnits(change.units(), name);
    if (deed.isEmpty())
        return ofCells(change.records, where);
    return deed + u" di "_s +
           (std::ranges::any_of(change.records, isOfUnit)
                ? where
                : u"%1 di %2"_s.arg(ofRooms(change.records), where));
}

Place placeOf(const RegisterChange& change)
{
    if (change.isEmpty())
        return {};
    const auto& records = change.records;
    auto record = std::ranges::find_if(records, isOfUnit);
    const bool ofUnit = record != records.end();
    if (!ofUnit)
        record = std::ranges::find_if(records, [](const auto& one) { return !one.after.empty(); });
    if (record == records.end())
        record = records.begin();
    return {.unit = record->unit(),
            .position = ofUnit ? 0 : numberOf(record->record(), RoomPosition),
            .field = record->fields().value(0),
            .gone = ofUnit && record->after.empty()};
}

} // namespace zelto::registro

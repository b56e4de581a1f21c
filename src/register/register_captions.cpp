// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_captions.h"

#include "text/literals.h"

#include <algorithm>

namespace zelto::registro {

using Table = RecordChange::Table;

namespace {

QString fieldName(Table table, int field)
{
    static const QStringList unitFields{u"riferimento"_s, u"livello"_s, u"scala"_s, u"altezza"_s,
                                        u"tabelle"_s};
    static const QStringList roomFields{u"ambiente"_s,     u"consistenza"_s,    u"destinazione"_s,
                                        u"orientamento"_s, u"prospetto"_s,      u"luminosità"_s,
                                        u"funzionalità"_s, u"piano riduttore"_s};
    return table == Table::Units ? unitFields.value(field - UnitRiferimento)
                                 : roomFields.value(field - RoomAmbiente);
}

QString ofUnits(const QList<int>& units, const QHash<int, QString>& names)
{
    if (units.size() != 1)
        return u"%1 U.I."_s.arg(units.size());
    const QString name = names.value(units.front()).trimmed();
    return name.isEmpty() ? u"U.I. %1"_s.arg(units.front()) : name;
}

QString ofRooms(const std::vector<const RecordChange*>& rooms)
{
    if (rooms.size() != 1)
        return u"%1 vani"_s.arg(rooms.size());
    const QString name = textOf(rooms.front()->record(), RoomAmbiente).trimmed();
    return name.isEmpty() ? u"un vano"_s : name;
}

QString ofCells(const std::vector<RecordChange>& records, const QString& where)
{
    qsizetype cells = 0;
    QString name;
    for (const RecordChange& change : records)
        for (const int field : change.fields()) {
            ++cells;
            name = fieldName(change.table, field);
        }
    return cells == 1 ? u"%1 di %2"_s.arg(name, where)
                      : u"%1 celle di %2"_s.arg(QString::number(cells), where);
}

} // namespace

QString captionOf(Deed deed, const std::vector<RecordChange>& records,
                  const QHash<int, QString>& names)
{
    QList<int> units;
    std::vector<const RecordChange*> rooms;
    for (const RecordChange& change : records)
        if (change.table == Table::Rooms)
            rooms.push_back(&change);
        else if (!units.contains(change.unit()))
            units.append(change.unit());
    const bool ofUnitsThemselves = !units.isEmpty();
    if (!ofUnitsThemselves)
        units = RegisterChange{.caption = {}, .records = records}.units();
    const QString where = ofUnits(units, names);
    const QString what = ofUnitsThemselves ? where : u"%1 di %2"_s.arg(ofRooms(rooms), where);
    switch (deed) {
    case Deed::Adds:
        return u"aggiunta di %1"_s.arg(what);
    case Deed::Deletes:
        return u"eliminazione di %1"_s.arg(what);
    case Deed::Copies:
        return u"copia di %1"_s.arg(what);
    case Deed::Moves:
        return u"spostamento di %1"_s.arg(what);
    default:
        return ofCells(records, where);
    }
}

} // namespace zelto::registro

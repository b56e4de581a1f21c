// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_model.h"

#include <algorithm>

namespace zelto::registro {

namespace {

/// The first of the rows, in the order of their numbers, that is not before the number.
auto placeIn(std::vector<UnitRow>& rows, int number)
{
    return std::lower_bound(rows.begin(), rows.end(), number,
                            [](const UnitRow& row, int wanted) { return row.number < wanted; });
}

bool adds(const RegisterChange& change, int unit)
{
    return std::any_of(change.records.begin(), change.records.end(), [&](const RecordChange& one) {
        return one.table == RecordChange::Table::Units && one.before.empty() && one.unit() == unit;
    });
}

} // namespace

void RegisterModel::ElencoUI(const UnitFilter& filter)
{
    m_listed = readUnits(m_lavoro, filter);
    m_filter = filter;
    m_count = countUnits(m_lavoro);
    emit unitsListed();
}

void RegisterModel::DatiVani(int unit)
{
    UnitRow row = unit > 0 ? readUnit(m_lavoro, unit) : UnitRow();
    m_rooms = row.number > 0 ? readRooms(m_lavoro, unit) : std::vector<RoomRow>();
    m_unit = std::move(row);
    emit unitShown();
}

void RegisterModel::reload()
{
    RegisterLists lists = LeggiDatiGenerali(m_lavoro);
    calc::Liste coefficients = calc::CaricaListe(m_lavoro);
    const std::vector<TreeScala> tree = readTree(m_lavoro, lists.scale);
    m_lists = std::move(lists);
    m_coefficients = std::move(coefficients);
    emit listsRead();
    ElencoUI(m_filter);
    emit reloaded(tree);
    showUnitOrNext();
}

/// The current unit as it is now; the next one listed when it has been deleted, or the one before,
/// or any.
void RegisterModel::showUnitOrNext()
{
    const int number = m_unit.number;
    int shown = number > 0 && readUnit(m_lavoro, number).number == 0 ? 0 : number;
    for (const int places : {1, -1})
        if (shown == 0)
            shown = neighbour(number, places);
    DatiVani(shown > 0 ? shown : nearestUnit(m_lavoro, number));
}

int RegisterModel::neighbour(int unit, int places) const
{
    const auto count = static_cast<std::ptrdiff_t>(m_listed.size());
    std::ptrdiff_t at = 0;
    while (at < count && m_listed[static_cast<std::size_t>(at)].number < unit)
        ++at;
    const bool there = at < count && m_listed[static_cast<std::size_t>(at)].number == unit;
    at += places - (places > 0 && !there ? 1 : 0);
    return at < 0 || at >= count ? 0 : m_listed[static_cast<std::size_t>(at)].number;
}

RegisterChange RegisterModel::perform(const std::function<RegisterChange(Register&)>& operation)
{
    RegisterChange change = operation(m_register);
    if (change.isEmpty())
        reload();
    else
        follow(change);
    return change;
}

void RegisterModel::follow(const RegisterChange& change)
{
    const QList<int> units = change.units();
    for (const int number : units) {
        const UnitRow row = readUnit(m_lavoro, number);
        if (row.number == 0)
            emit unitRemoved(number);
        else
            emit unitChanged(row, readRooms(m_lavoro, number));
        const auto at = placeIn(m_listed, number);
        const bool listed = at != m_listed.end() && at->number == number;
        if (listed && row.number == 0)
            m_listed.erase(at);
        else if (listed)
            *at = row;
        else if (row.number > 0 && adds(change, number))
            m_listed.insert(at, row);
    }
    m_count = countUnits(m_lavoro);
    emit unitsListed();
    emit unitsChanged(units);
    if (m_unit.number == 0 || units.contains(m_unit.number))
        showUnitOrNext();
}

Place placeOf(const RegisterChange& change)
{
    if (change.isEmpty())
        return {};
    const auto kept = std::find_if(change.records.begin(), change.records.end(),
                                   [](const RecordChange& one) { return !one.after.empty(); });
    const RecordChange& record = kept == change.records.end() ? change.records.front() : *kept;
    const bool room = record.table == RecordChange::Table::Rooms;
    return {.unit = record.unit(),
            .position = room ? numberOf(record.record(), RoomPosition) : 0,
            .field = record.fields().value(0)};
}

} // namespace zelto::registro

// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_model.h"

#include "store/job_queries.h"
#include "store/schema.h"

#include <algorithm>

namespace zelto::registro {

namespace {

/// The first of the rows, in the order of their numbers, that is not before the number.
template <typename Rows>
auto placeIn(Rows& rows, int number)
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

RegisterModel::RegisterModel(store::Database& lavoro)
    : m_lavoro(lavoro),
      m_register(lavoro, [this](const RecordChange& change) { return isAsSeen(change); })
{}

void RegisterModel::ElencoUI(const UnitFilter& filter)
{
    m_listed = readUnits(m_lavoro, filter);
    m_filter = filter;
    m_count = m_lavoro.count(store::TabellaUnita);
    emit unitsListed();
}

void RegisterModel::DatiVani(int unit)
{
    if (!isStale()) {
        readUnit(unit);
        return;
    }
    m_unit = UnitRow{.number = unit, .texts = {}, .flags = {}};
    reload();
}

bool RegisterModel::isStale() const
{
    return m_lavoro.dataVersion() != m_version;
}

void RegisterModel::readUnit(int unit)
{
    UnitRow row = unit > 0 ? registro::readUnit(m_lavoro, unit) : UnitRow();
    m_rooms = row.number > 0 ? readRooms(m_lavoro, unit) : std::vector<RoomRow>();
    m_unit = std::move(row);
    emit unitShown();
}

void RegisterModel::reload()
{
    const qint64 version = m_lavoro.dataVersion();
    RegisterLists lists = LeggiDatiGenerali(m_lavoro);
    calc::Liste coefficients = calc::CaricaListe(m_lavoro);
    const std::vector<TreeScala> tree = readTree(m_lavoro, lists.scale);
    m_lists = std::move(lists);
    m_coefficients = std::move(coefficients);
    m_version = version;
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
    int shown = number > 0 && registro::readUnit(m_lavoro, number).number == 0 ? 0 : number;
    for (const int places : {1, -1})
        if (shown == 0)
            shown = neighbour(number, places);
    readUnit(shown > 0 ? shown : store::nearestUnit(m_lavoro, number));
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
    if (change.isEmpty() || isStale())
        reload();
    else
        follow(change);
    return change;
}

void RegisterModel::follow(const RegisterChange& change)
{
    const QList<int> units = change.units();
    for (const int number : units) {
        const UnitRow row = registro::readUnit(m_lavoro, number);
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
    m_count = m_lavoro.count(store::TabellaUnita);
    emit unitsListed();
    emit unitsChanged(units);
    if (m_unit.number == 0 || units.contains(m_unit.number))
        showUnitOrNext();
}

/// Of records that are not shown nothing is known.
bool RegisterModel::isAsSeen(const RecordChange& change) const
{
    if (change.before.empty())
        return true;
    const auto sameTexts = [&](const auto& texts, int first) {
        return std::all_of(texts.begin(), texts.end(), [&](const QString& text) {
            return text == textOf(change.before, first++);
        });
    };
    if (change.table == RecordChange::Table::Rooms) {
        const int position = numberOf(change.before, RoomPosition);
        const auto room = std::find_if(m_rooms.begin(), m_rooms.end(), [&](const RoomRow& row) {
            return row.position == position;
        });
        return change.unit() != m_unit.number || room == m_rooms.end() ||
               sameTexts(room->texts, RoomAmbiente);
    }
    const auto listed = placeIn(m_listed, change.unit());
    const bool isListed = listed != m_listed.end() && listed->number == change.unit();
    const UnitRow& row = isListed ? *listed : m_unit;
    return row.number != change.unit() ||
           (sameTexts(row.texts, UnitRiferimento) && row.flags == textOf(change.before, UnitFlags));
}

Place placeOf(const RegisterChange& change)
{
    if (change.isEmpty())
        return {};
    const auto unit =
        std::find_if(change.records.begin(), change.records.end(),
                     [](const auto& one) { return one.table == RecordChange::Table::Units; });
    const auto kept = std::find_if(change.records.begin(), change.records.end(),
                                   [](const auto& one) { return !one.after.empty(); });
    const bool ofUnit = unit != change.records.end();
    const RecordChange& record = ofUnit                         ? *unit
                                 : kept != change.records.end() ? *kept
                                                                : change.records.front();
    return {.unit = record.unit(),
            .position = ofUnit ? 0 : numberOf(record.record(), RoomPosition),
            .field = record.fields().value(0),
            .gone = ofUnit && record.after.empty()};
}

} // namespace zelto::registro

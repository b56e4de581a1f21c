// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_model.h"

#include "store/job_queries.h"
#include "store/schema.h"
#include "store/user_interface.h"

#include <QScopedValueRollback>

#include <algorithm>

namespace zelto::registro {

namespace {

/// The first of the units, in the order of their numbers, that is not before the number.
template <typename Units>
auto placeIn(Units& units, int number)
{
    return std::ranges::lower_bound(units, number, {},
                                    [](const Record& unit) { return numberOf(unit, UnitNumber); });
}

bool adds(const RegisterChange& change, int unit)
{
    return std::ranges::any_of(change.records, [&](const RecordChange& one) {
        return one.table == Table::Units && one.before.empty() && one.unit() == unit;
    });
}

} // namespace

RegisterModel::RegisterModel(store::Database& lavoro, store::Messages& user)
    : m_lavoro(lavoro), m_user(user),
      m_register(lavoro, [this](const RecordChange& change) { return isAsSeen(change); })
{}

void RegisterModel::reporting(const std::function<void()>& read)
{
    try {
        read();
    } catch (const store::DatabaseError& error) {
        m_user.ReportError(error);
    }
}

std::vector<Record> RegisterModel::roomsOf(int unit)
{
    std::vector<Record> rooms;
    reporting([&] { rooms = readRooms(m_lavoro, unit); });
    return rooms;
}

void RegisterModel::ElencoUI(const UnitFilter& filter)
{
    reporting([&] { list(filter); });
}

void RegisterModel::list(const UnitFilter& filter)
{
    m_listed = readUnits(m_lavoro, filter);
    m_filter = filter;
    m_count = m_lavoro.count(store::TabellaUnita);
    emit unitsListed();
}

void RegisterModel::DatiVani(int unit)
{
    reporting([&] { isStale() ? load(unit) : show(unit); });
}

bool RegisterModel::isStale() const
{
    return m_lavoro.dataVersion() != m_version;
}

void RegisterModel::reload()
{
    reporting([this] { load(); });
}

void RegisterModel::reloadIfStale()
{
    reporting([this] {
        if (isStale())
            load();
    });
}

void RegisterModel::load(int unit)
{
    const qint64 version = m_lavoro.dataVersion();
    RegisterLists lists = LeggiDatiGenerali(m_lavoro);
    calc::Liste coefficients = calc::CaricaListe(m_lavoro);
    m_lists = std::move(lists);
    m_coefficients = std::move(coefficients);
    m_version = version;
    list(m_filter);
    emit reloaded(m_filter == UnitFilter() ? m_listed : readUnits(m_lavoro));
    showOrNext(unit);
}

void RegisterModel::show(int unit)
{
    Record record = readUnit(m_lavoro, unit);
    m_rooms = record.empty() ? std::vector<Record>() : readRooms(m_lavoro, unit);
    m_unit = std::move(record);
    emit unitShown();
}

/// The unit as it is now; the next one listed when it has been deleted, or the one before, or any.
void RegisterModel::showOrNext(int unit)
{
    int shown = readUnit(m_lavoro, unit).empty() ? 0 : unit;
    for (const int places : {1, -1})
        if (shown == 0)
            shown = neighbour(unit, places);
    show(shown > 0 ? shown : store::nearestUnit(m_lavoro, unit));
}

int RegisterModel::neighbour(int unit, int places) const
{
    const auto found = placeIn(m_listed, unit);
    const bool there = found != m_listed.end() && numberOf(*found, UnitNumber) == unit;
    const auto place = found - m_listed.begin() + places - (places > 0 && !there ? 1 : 0);
    return place < 0 || place >= std::ssize(m_listed)
               ? 0
               : numberOf(m_listed[static_cast<std::size_t>(place)], UnitNumber);
}

RegisterChange RegisterModel::perform(const Operation& operation)
{
    RegisterChange change;
    try {
        change = operation(m_register);
        if (change.isEmpty() || isStale())
            load();
        else
            follow(change);
    } catch (const store::DatabaseError& error) {
        change = {};
        m_user.ReportError(error);
        try {
            load();
        } catch (const store::DatabaseError&) {
            // What went wrong has been said; the screen shows the last that could be read.
        }
    }
    emit performed();
    if (change.missing)
        m_user.showMessage(
            u"Un altro programma ha cambiato o eliminato ciò che si voleva cambiare. Nulla è stato "
            "memorizzato: la finestra mostra ora quello che c'è, e si può ripetere."_s);
    return change;
}

RegisterChange RegisterModel::replay(RegisterChange (Register::*way)())
{
    const QScopedValueRollback replaying(m_replaying, true);
    return perform([way](Register& registro) { return (registro.*way)(); });
}

void RegisterModel::follow(const RegisterChange& change)
{
    const QList<int> units = change.units();
    for (const int number : units) {
        const Record unit = readUnit(m_lavoro, number);
        if (unit.empty())
            emit unitRemoved(number);
        else
            emit unitChanged(unit);
        const auto at = placeIn(m_listed, number);
        const bool listed = at != m_listed.end() && numberOf(*at, UnitNumber) == number;
        if (listed && unit.empty())
            m_listed.erase(at);
        else if (listed)
            *at = unit;
        else if (!unit.empty() && adds(change, number))
            m_listed.insert(at, unit);
    }
    m_count = m_lavoro.count(store::TabellaUnita);
    emit unitsListed();
    emit unitsChanged(units);
    if (current() == 0 || units.contains(current()))
        showOrNext(current());
}

/// Of records that are not shown nothing is known.
bool RegisterModel::isAsSeen(const RecordChange& change) const
{
    if (change.before.empty())
        return true;
    const auto isOther = [&](const Record& shown) {
        return !shown.empty() && shown.front() == change.before.front() && shown != change.before;
    };
    const std::vector<Record>& shown = change.table == Table::Units ? m_listed : m_rooms;
    return !isOther(m_unit) && std::ranges::none_of(shown, isOther);
}

} // namespace zelto::registro

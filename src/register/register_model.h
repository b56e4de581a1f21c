// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/job_loader.h"
#include "register/register.h"
#include "register/register_lists.h"

#include <QObject>

#include <algorithm>
#include <functional>

namespace zelto::registro {

/// Where the user is in the register of a job: which units are listed, and which one is current,
/// with its rooms. Tree, grids and fields show this and nothing else. The current unit changes by
/// DatiVani, and when it is deleted; never by what a filter lists. All that reads or stores throws
/// DatabaseError, and what is shown stays as it was then.
class RegisterModel : public QObject
{
    Q_OBJECT

public:
    /// Reads nothing yet; the job outlives it.
    explicit RegisterModel(store::Database& lavoro);

    [[nodiscard]] const RegisterLists& lists() const { return m_lists; }
    [[nodiscard]] const UnitFilter& filter() const { return m_filter; }
    /// By the rules of the calculation, for what rooms refer to.
    [[nodiscard]] calc::Liste& coefficients() { return m_coefficients; }

    /// In the order of their numbers: those that the filter let through when the list was read, and
    /// those added since.
    [[nodiscard]] const std::vector<UnitRow>& listed() const { return m_listed; }
    /// The current one; number 0 for none.
    [[nodiscard]] const UnitRow& unit() const { return m_unit; }
    [[nodiscard]] const std::vector<RoomRow>& rooms() const { return m_rooms; }

    /// Lists the units of the filter.
    void ElencoUI(const UnitFilter& filter);

    /// The unit becomes the current one; the next one, when it does not exist any more. What
    /// another program has changed meanwhile is read anew.
    void DatiVani(int unit);

    /// Whether another program has changed the job since it was read.
    [[nodiscard]] bool isStale() const;

    /// Reads everything anew, lists and tree included. The current unit stays if it still exists;
    /// at first it is the first one.
    void reload();

    /// The listed unit so many places behind the unit, before it when negative; 0 when there is
    /// none.
    [[nodiscard]] int neighbour(int unit, int places) const;

    /// Stores a change and shows what became of it. What was to be changed may have been changed or
    /// deleted by another program: then nothing is stored, everything is read anew and the change
    /// is empty.
    RegisterChange perform(const std::function<RegisterChange(Register&)>& operation);

    [[nodiscard]] const Register& changes() const { return m_register; }

    /// How many units may be added before the calculation refuses the job.
    [[nodiscard]] int freeUnits() const { return std::max(store::MostUnits - m_count, 0); }

signals:
    void listsRead();
    /// listed() is another.
    void unitsListed();
    /// A unit was added or changed, or its rooms were.
    void unitChanged(const UnitRow& unit, const std::vector<RoomRow>& rooms);
    void unitRemoved(int unit);
    /// These are all the units that a change concerned.
    void unitsChanged(const QList<int>& units);
    /// Everything may be another.
    void reloaded(const std::vector<TreeScala>& tree);
    /// Another unit is current, or the current one or its rooms have changed.
    void unitShown();

private:
    void readUnit(int unit);
    [[nodiscard]] bool isAsSeen(const RecordChange& change) const;
    void follow(const RegisterChange& change);
    void showUnitOrNext();

    store::Database& m_lavoro;
    Register m_register;
    RegisterLists m_lists;
    calc::Liste m_coefficients;
    UnitFilter m_filter;
    qint64 m_version = 0; ///< of the data that were read last
    int m_count = 0;      ///< of all units
    std::vector<UnitRow> m_listed;
    UnitRow m_unit;
    std::vector<RoomRow> m_rooms;
};

/// What of the register a change was about, for who wants to look at it.
struct Place
{
    int unit = 0;
    int position = 0;  ///< of a room; 0 when it is the unit itself
    int field = 0;     ///< the first that changed, by its ordinal
    bool gone = false; ///< the unit does not exist any more
};
[[nodiscard]] Place placeOf(const RegisterChange& change);

} // namespace zelto::registro

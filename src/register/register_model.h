// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/job_loader.h"
#include "register/register.h"
#include "register/register_lists.h"

#include <QObject>

#include <algorithm>
#include <functional>

namespace zelto::store {
class Messages;
} // namespace zelto::store

namespace zelto::registro {

/// Of more changed units, reading the whole job is quicker than each by itself.
inline constexpr qsizetype MostSingleUnits = 20;

/// Where the user is in the register of a job: which units are listed, and which one is current,
/// with its rooms. Tree, grids and fields show this and nothing else. The current unit changes by
/// DatiVani, and when it is deleted; never by what a filter lists. What cannot be read or stored is
/// reported to the user, and what is shown stays as it was.
class RegisterModel : public QObject
{
    Q_OBJECT

public:
    /// Reads nothing yet; job and user outlive it.
    RegisterModel(store::Database& lavoro, store::Messages& user);

    [[nodiscard]] const RegisterLists& lists() const { return m_lists; }
    [[nodiscard]] const UnitFilter& filter() const { return m_filter; }
    /// By the rules of the calculation, for what rooms refer to.
    [[nodiscard]] calc::Liste& coefficients() { return m_coefficients; }

    /// In the order of their numbers: those that the filter let through when the list was read, and
    /// those added since.
    [[nodiscard]] const std::vector<Record>& listed() const { return m_listed; }
    /// The number of the current unit, 0 for none, its fields and its rooms.
    [[nodiscard]] int current() const { return numberOf(m_unit, UnitNumber); }
    [[nodiscard]] const Record& unit() const { return m_unit; }
    [[nodiscard]] const std::vector<Record>& rooms() const { return m_rooms; }

    /// The rooms of any unit in the order of their positions; none when they cannot be read.
    [[nodiscard]] std::vector<Record> roomsOf(int unit);

    /// Lists the units of the filter.
    void ElencoUI(const UnitFilter& filter);

    /// The unit becomes the current one; the next one, when it does not exist any more. What
    /// another program has changed meanwhile is read anew.
    void DatiVani(int unit);

    /// Reads everything anew, lists and tree included. The current unit stays if it still exists;
    /// at first it is the first one. load() throws DatabaseError instead of reporting it.
    void reload();
    void load() { load(current()); }
    /// The same when another program has changed the job since it was read.
    void reloadIfStale();

    /// The listed unit so many places behind the current one, before it when negative; 0 when there
    /// is none.
    [[nodiscard]] int neighbour(int places) const { return neighbour(current(), places); }

    /// Stores a change and shows what became of it. The change is empty when nothing was stored:
    /// the job refused it, or what was to be changed has been changed or deleted by another
    /// program. Then everything is read anew.
    using Operation = std::function<RegisterChange(Register& registro)>;
    RegisterChange perform(const Operation& operation);

    /// Takes the last change back, or makes it again.
    RegisterChange undo() { return replay(&Register::undo); }
    RegisterChange redo() { return replay(&Register::redo); }
    [[nodiscard]] bool isReplaying() const { return m_replaying; }
    [[nodiscard]] const Register& changes() const { return m_register; }

    /// Rooms were renamed elsewhere in the program: what can be undone follows.
    void followTexts(const coefficients::RoomTexts& texts) { m_register.followTexts(texts); }

    /// How many units may be added before the calculation refuses the job.
    [[nodiscard]] int freeUnits() const { return std::max(store::MostUnits - m_count, 0); }

signals:
    /// listed() is another.
    void unitsListed();
    /// A unit was added or changed, or its rooms were.
    void unitChanged(const Record& unit);
    void unitRemoved(int unit);
    /// These are all the units that a change concerned.
    void unitsChanged(const QList<int>& units);
    /// Everything may be another; these are all units.
    void reloaded(const std::vector<Record>& units);
    /// Another unit is current, or the current one or its rooms have changed.
    void unitShown();
    /// A change was made or refused.
    void performed();

private:
    void reporting(const std::function<void()>& read);
    [[nodiscard]] bool isStale() const;
    void list(const UnitFilter& filter);
    void load(int unit);
    void show(int unit);
    void showOrNext(int unit);
    [[nodiscard]] int neighbour(int unit, int places) const;
    [[nodiscard]] bool isAsSeen(const RecordChange& change) const;
    void follow(const RegisterChange& change);
    RegisterChange replay(RegisterChange (Register::*way)());

    store::Database& m_lavoro;
    store::Messages& m_user;
    Register m_register;
    RegisterLists m_lists;
    calc::Liste m_coefficients;
    UnitFilter m_filter;
    qint64 m_version = 0; ///< of the data that were read last
    int m_count = 0;      ///< of all units
    bool m_replaying = false;
    std::vector<Record> m_listed;
    Record m_unit;
    std::vector<Record> m_rooms;
};

} // namespace zelto::registro

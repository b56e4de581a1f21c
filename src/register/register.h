// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "coefficients/code_renames.h"
#include "register/register_change.h"

#include <QList>
#include <QMap>
#include <QString>

#include <functional>
#include <utility>
#include <vector>

namespace zelto::store {
class Database;
} // namespace zelto::store

namespace zelto::registro {

/// A new text for one field of a unit, by its number, or of a room, by its position. The ordinals
/// are those of the table, from the first text on.
struct FieldEdit
{
    int number = 0;
    int ordinal = 0;
    QString text; ///< empty for Null
};

/// A unit or room that is yet to be: texts by the ordinals of their fields.
using NewTexts = QMap<int, QString>;

/// A unit's flags with that of special table 1 to 10 on or off: ten characters, only "X" is one.
[[nodiscard]] QString withFlag(const QString& flags, int table, bool on);

/// The building register of a job: adds, deletes, copies and changes units and rooms, and takes
/// every change back. Each call is stored wholly or not at all, and says which records it changed;
/// it throws DatabaseError when the job refuses. When a record to be changed does not exist any
/// more, or is not as the user sees it, nothing is stored and the change says so.
class Register
{
public:
    /// Whether a record that is about to be changed is as the user sees it.
    using AsSeen = std::function<bool(const RecordChange& change)>;

    /// The job outlives it.
    explicit Register(
        store::Database& lavoro, AsSeen asSeen = [](const RecordChange&) { return true; })
        : m_lavoro(lavoro), m_asSeen(std::move(asSeen))
    {}

    /// A unit with one room, both empty. Its number follows every one that a unit or a room has.
    RegisterChange AggiungiUI();

    /// An empty room at the position behind the unit's last one. Here and below, RecordDeleted when
    /// there is no such unit.
    RegisterChange AggiungiVano(int unit);

    /// Deletes the units with their rooms, in the order given. Numbers that no unit has are passed
    /// over, here and below.
    RegisterChange EliminaUI(const QList<int>& units);
    RegisterChange EliminaVano(int unit, const QList<int>& positions);

    /// Copies each unit with its rooms under a new number; a unit without rooms gets an empty one.
    RegisterChange DuplicaUI(const QList<int>& units);

    /// Copies each room to the next free position. Where there is no such room, an empty one is
    /// added.
    RegisterChange DuplicaVano(int unit, const QList<int>& positions);

    /// Two units exchange their numbers, with their rooms; two rooms of a unit their positions. One
    /// pair after the other.
    RegisterChange ScambiaUI(const QList<std::pair<int, int>>& pairs);
    RegisterChange ScambiaVani(int unit, const QList<std::pair<int, int>>& pairs);

    /// Stores the texts in the fields of units, or of one unit's rooms, and adds others behind the
    /// last one.
    RegisterChange MemorizzaUI(const QList<FieldEdit>& edits, const QList<NewTexts>& added = {});
    RegisterChange MemorizzaVano(int unit, const QList<FieldEdit>& edits,
                                 const QList<NewTexts>& added = {});

    /// Turns the flag of special table 1 to 10 on or off, however many of them are stored.
    RegisterChange MemorizzaFlag(int unit, int table, bool on);

    /// The rooms' texts have become others: what is taken back is so to the new ones.
    void followTexts(const coefficients::RoomTexts& texts);

    /// What undo() and redo() would do; empty when there is nothing.
    [[nodiscard]] QString undoCaption() const { return captionOfLast(m_done); }
    [[nodiscard]] QString redoCaption() const { return captionOfLast(m_undone); }

    /// Takes the last change back, and makes one taken back again. Throws RecordChanged when its
    /// records are not as it left them; then nothing is done and all changes are forgotten.
    RegisterChange undo() { return takeBack(m_done, m_undone); }
    RegisterChange redo() { return takeBack(m_undone, m_done); }

private:
    class Writer;

    [[nodiscard]] static QString captionOfLast(const std::vector<RegisterChange>& changes)
    {
        return changes.empty() ? QString() : changes.back().caption;
    }
    void addUnit(Writer& writer, const NewTexts& texts);
    void addRoom(Writer& writer, int unit, const NewTexts& texts);
    [[nodiscard]] bool isAsSeen(const std::vector<RecordChange>& records) const;
    RegisterChange perform(const QString& deed, const std::function<void(Writer&)>& work);
    RegisterChange takeBack(std::vector<RegisterChange>& done, std::vector<RegisterChange>& undone);

    store::Database& m_lavoro;
    AsSeen m_asSeen;
    std::vector<RegisterChange> m_done;
    std::vector<RegisterChange> m_undone; ///< as they were taken back
};

} // namespace zelto::registro

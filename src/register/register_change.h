// SPDX-License-Identifier: GPL-3.0-or-later
// What an operation on the register did to its records.
#pragma once

#include "store/value.h"

#include <QList>
#include <QString>

#include <vector>

namespace zelto::registro {

/// All fields of a unit or a room.
using store::Record;

/// Places of fields in a record.
enum UnitField : int {
    UnitKey,
    UnitNumber,
    UnitRiferimento,
    UnitLivello,
    UnitScala,
    UnitHPiano,
    UnitFlags
};
enum RoomField : int { RoomKey, RoomUnit, RoomPosition, RoomAmbiente, RoomConsistenza };

[[nodiscard]] QString textOf(const Record& record, int field);
[[nodiscard]] int numberOf(const Record& record, int field);

/// One record before and after a change; empty where it did not or does not exist.
struct RecordChange
{
    enum class Table { Units, Rooms };

    Table table = Table::Units;
    Record before;
    Record after;

    /// The fields of the record, after the change if it still exists.
    [[nodiscard]] const Record& record() const { return after.empty() ? before : after; }

    /// The number of the unit concerned.
    [[nodiscard]] int unit() const;

    /// The fields that differ; all that are not Null of a record that was added or deleted, but for
    /// those that tell which record it is.
    [[nodiscard]] QList<int> fields() const;
};

/// The records that one operation changed, in its order.
struct RegisterChange
{
    QString caption; ///< what was done, for the user
    std::vector<RecordChange> records;
    /// Nothing was done, because a record to be changed does not exist any more or is another by
    /// now.
    bool missing = false;

    [[nodiscard]] bool isEmpty() const { return records.empty(); }

    /// The units concerned, each once, in the order of their first change.
    [[nodiscard]] QList<int> units() const;

    /// The change that takes this one back.
    [[nodiscard]] RegisterChange reversed() const;
};

} // namespace zelto::registro

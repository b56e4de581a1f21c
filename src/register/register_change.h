// SPDX-License-Identifier: GPL-3.0-or-later
// What an operation on the register did to its records.
#pragma once

#include "register/register_columns.h"
#include "store/value.h"

#include <QList>

namespace zelto::registro {

/// All fields of a unit or a room.
using store::Record;

/// What a field holds; empty or 0 for a record that has no fields.
[[nodiscard]] QString textOf(const Record& record, int field);
[[nodiscard]] int numberOf(const Record& record, int field);

/// One record before and after a change; empty where it did not or does not exist.
struct RecordChange
{
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
    QString caption = {}; ///< what was done, for the user
    std::vector<RecordChange> records = {};
    /// Nothing was done, because a record to be changed does not exist any more or is another by
    /// now.
    bool missing = false;

    [[nodiscard]] bool isEmpty() const { return records.empty(); }

    /// The units concerned, each once, in the order of their first change.
    [[nodiscard]] QList<int> units() const;

    /// The change that takes this one back.
    [[nodiscard]] RegisterChange reversed() const;
};

/// How a change is called where it can be undone: "consistenza di Int. 3 - Moro", "eliminazione di
/// 2 vani di Int. 3 - Moro". The deed is empty where texts were changed; the name is that of the
/// only unit concerned, and one without is called by its number.
[[nodiscard]] QString captionOf(const QString& deed, const RegisterChange& change,
                                const QString& name);

/// What of the register a change was about, for who wants to look at it.
struct Place
{
    int unit = 0;
    int position = 0;  ///< of a room; 0 when it is the unit itself
    int field = 0;     ///< the first that changed, by its ordinal
    bool gone = false; ///< the unit does not exist any more
    int table = 0;     ///< the special table, of a field that has one column for each
};
[[nodiscard]] Place placeOf(const RegisterChange& change);

} // namespace zelto::registro

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/register.h"
#include "store/database.h"

namespace zelto::registro {

/// A record to be changed is gone.
struct Missing
{};

/// Writes records of units and rooms within one transaction and notes what they were.
class Register::Writer
{
public:
    explicit Writer(store::Database& lavoro);

    /// Records of the table whose field has the value, in the order of their keys.
    [[nodiscard]] std::vector<Record> find(Table table, QStringView field,
                                           const store::Value& value) const;
    [[nodiscard]] std::vector<Record> unitsOf(int unit) const;
    [[nodiscard]] std::vector<Record> roomsOf(int unit) const;

    /// Throw Missing when there is none.
    [[nodiscard]] Record unit(int unit) const;
    [[nodiscard]] Record room(int unit, int position) const;

    /// Throws RecordDeleted when there is no such unit.
    void requireUnit(int unit) const;

    /// Adds a record without before, deletes one without after.
    void write(Table table, const Record& before, Record after);
    /// Gives a field of the record another text, empty for Null.
    void change(Table table, const Record& record, int field, const QString& text);
    /// Two records exchange all that follows the fields by which they are told apart.
    void exchange(Table table, const Record& one, const Record& other);

    /// Makes a noted change once more; throws RecordChanged when its record is another by now.
    void repeat(const RecordChange& change);

    [[nodiscard]] const std::vector<RecordChange>& changes() const { return m_changes; }
    void commit() { m_transaction.commit(); }

private:
    store::Database& m_lavoro;
    store::Database::Transaction m_transaction;
    store::RecordWriter m_units;
    store::RecordWriter m_rooms;
    std::vector<RecordChange> m_changes;
};

} // namespace zelto::registro

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/register.h"
#include "store/database.h"

#include <QHash>

namespace zelto::registro {

/// Writes records of units and rooms within one transaction and notes what they were.
class Register::Writer
{
public:
    explicit Writer(store::Database& lavoro);

    /// Records of the table whose field has the value, in the order of their keys.
    [[nodiscard]] std::vector<Record> find(RecordChange::Table table, QStringView field,
                                           const store::Value& value) const;

    /// Throws RecordDeleted when there is no such unit.
    void requireUnit(int unit) const;

    /// The names of the units, by number, as they are now.
    [[nodiscard]] QHash<int, QString> names(const QList<int>& units) const;

    void add(RecordChange::Table table, Record record);
    void remove(RecordChange::Table table, const Record& record);
    /// Gives a field of the record another text, empty for Null.
    void change(RecordChange::Table table, const Record& record, int field, const QString& text);
    /// Two records exchange all that follows the fields by which they are told apart.
    void exchange(RecordChange::Table table, const Record& one, const Record& other,
                  int firstField);

    /// Makes a noted change once more; throws RecordChanged when its record is another by now.
    void repeat(const RecordChange& change);

    [[nodiscard]] const std::vector<RecordChange>& changes() const { return m_changes; }
    [[nodiscard]] std::vector<RecordChange> commit();

private:
    void note(RecordChange::Table table, const Record& before, Record after);
    void write(RecordChange::Table table, const Record& before, const Record& after);

    store::Database& m_lavoro;
    store::Database::Transaction m_transaction;
    store::RecordWriter m_units;
    store::RecordWriter m_rooms;
    std::vector<RecordChange> m_changes;
};

} // namespace zelto::registro

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/register.h"
#include "store/database.h"

namespace zelto::registro {

/// Writes records of units and rooms within one transaction and notes what they were.
class Register::Writer
{
public:
    explicit Writer(store::Database& lavoro) : m_lavoro(lavoro), m_transaction(lavoro) {}

    /// Records of the table whose field has the value, in the order of their keys.
    [[nodiscard]] std::vector<Record> find(RecordChange::Table table, const QString& field,
                                           const store::Value& value) const;

    /// The highest value of a number field, of the rooms of one unit when that is not 0.
    [[nodiscard]] int highestUnit() const;
    [[nodiscard]] int highestPosition(int unit) const;
    /// The key behind that of the last unit.
    [[nodiscard]] QString nextUnitKey() const;

    void add(RecordChange::Table table, Record record);
    void remove(RecordChange::Table table, const Record& record);
    /// Gives a field of the first record another text, empty for Null; nothing without a record.
    void changeFirst(RecordChange::Table table, const std::vector<Record>& found, int field,
                     const QString& text);

    /// Makes a noted change once more; throws RecordChanged when its record is another by now.
    void repeat(const RecordChange& change);

    [[nodiscard]] std::vector<RecordChange> commit();

private:
    [[nodiscard]] int highest(const QString& sql, std::span<const store::Value> parameters) const;
    void write(RecordChange::Table table, const Record& before, const Record& after);
    void insert(RecordChange::Table table, const Record& record);
    void update(RecordChange::Table table, const Record& before, const Record& after);

    store::Database& m_lavoro;
    store::Database::Transaction m_transaction;
    std::vector<RecordChange> m_changes;
};

} // namespace zelto::registro

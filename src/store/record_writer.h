// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/connection.h"
#include "store/value.h"

#include <QString>

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace SQLite {
class Statement;
} // namespace SQLite

namespace zelto::store {

struct TableDef;

/// Writes records of a table that has the fields of its definition. Every operation throws
/// DatabaseError when a value or the key is refused, and leaves the table as it was then.
class RecordWriter
{
public:
    RecordWriter(ConnectionPtr connection, const TableDef& table);
    RecordWriter(RecordWriter&&) noexcept;
    ~RecordWriter();

    /// Adds a record: the values of its first fields, in order; the others are Null. Many records
    /// are best added by one writer within one transaction.
    void add(std::span<const Value> record);

    /// Writes the fields in which a record is to be another. It is the one with the key of before;
    /// the first one of a table without a key.
    void change(const Record& before, const Record& after);

    /// Deletes the record with that key.
    void remove(const Value& key);

private:
    void bind(int place, const Value& value);

    ConnectionPtr m_connection;
    const TableDef* m_table;
    std::vector<std::string> m_texts; ///< of the fields, as they are bound
    std::unique_ptr<SQLite::Statement> m_insert;
};

} // namespace zelto::store

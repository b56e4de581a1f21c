// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/connection.h"
#include "store/value.h"

#include <memory>
#include <span>
#include <string>
#include <vector>

namespace SQLite {
class Statement;
} // namespace SQLite

namespace zelto::store {

struct TableDef;

/// Adds many records to a table, with one statement for all. Within a transaction of the caller's.
class TableWriter
{
public:
    TableWriter(ConnectionPtr connection, const TableDef& table);
    ~TableWriter();
    TableWriter(const TableWriter&) = delete;
    TableWriter& operator=(const TableWriter&) = delete;

    /// One value for each field, in order. Throws DatabaseError when a value or the key is refused.
    void add(std::span<const Value> record);

private:
    void bind(int place, const Value& value);

    ConnectionPtr m_connection;
    std::vector<std::string> m_texts; ///< of the fields, as they are bound
    std::unique_ptr<SQLite::Statement> m_insert;
};

} // namespace zelto::store

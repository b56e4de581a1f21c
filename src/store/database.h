// SPDX-License-Identifier: GPL-3.0-or-later
// The database layer: one SQLite file, opened as a file from a stranger.
#pragma once

#include "store/connection.h"
#include "store/database_error.h"
#include "store/query.h"
#include "store/record_writer.h"
#include "store/table_def.h"
#include "store/value.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <memory>
#include <span>
#include <vector>

namespace SQLite {
class Transaction;
} // namespace SQLite

namespace zelto::store {

/// One open database file. Every operation throws DatabaseError. The file is let go of when the
/// database and all that was asked of it are gone.
class Database
{
public:
    /// Creates an empty database; FileExists when there is anything of that name already.
    static Database create(const QString& path);

    /// Opens an existing file after a check of its structure. A file that another process holds
    /// is waited for up to five seconds, then InUse. A write-protected file opens in both modes and
    /// refuses changes with ReadOnly. NotADatabase for anything but a plain database with tables
    /// and indexes, Damaged when its structure is broken.
    static Database open(const QString& path, OpenMode mode = OpenMode::ReadWrite);

    /// A private copy of the file in memory, for readers that must be able to convert what they
    /// read without touching the file.
    static Database openCopyInMemory(const QString& path);

    /// What a connection that was opened already holds.
    explicit Database(ConnectionPtr connection) : m_connection(std::move(connection)) {}

    /// As it was given to create or open.
    [[nodiscard]] const QString& path() const { return m_connection->path; }

    /// Names of the tables in stored order, in the letter case of the file.
    [[nodiscard]] QStringList tableNames() const;

    /// Creates a table with its primary index; TableExists when there is one of that name.
    void appendTable(const TableDef& table);

    /// One statement without result; ":1", ":2" … stand for the parameters. Returns the number of
    /// records changed.
    int Execute(const QString& sql, std::span<const Value> parameters = {});

    /// Another number whenever another program has changed the file.
    [[nodiscard]] qint64 dataVersion() const;

    /// Writes records of a table of this definition, which outlives the writer.
    [[nodiscard]] RecordWriter writer(const TableDef& table) { return {m_connection, table}; }

    /// The records that a statement finds; messages call them by the statement.
    [[nodiscard]] Query query(const QString& sql, std::span<const Value> parameters = {});

    /// A field that is to have a value, without regard to letter case.
    struct Condition
    {
        QStringView field;
        Value value;
    };

    /// The records of a table that meet the conditions, in the order of a field or else as they are
    /// stored: by their key, where there is one. TableNotFound when there is no such table.
    [[nodiscard]] Query records(QStringView table, const std::vector<Condition>& conditions = {},
                                QStringView order = {});

    /// How many records a table has.
    [[nodiscard]] int count(QStringView table);

    /// All changes until commit() succeed together or not at all. One at a time.
    class Transaction
    {
    public:
        explicit Transaction(Database& database);
        /// Takes back what was not committed.
        ~Transaction();
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;
        void commit();

    private:
        ConnectionPtr m_connection;
        std::unique_ptr<SQLite::Transaction> m_transaction;
    };

private:
    ConnectionPtr m_connection;
};

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
// The database layer: one SQLite file, opened as a file from a stranger.
#pragma once

#include "store/connection.h"
#include "store/files/database_error.h"
#include "store/query.h"
#include "store/table_def.h"
#include "store/value.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <memory>
#include <span>
#include <vector>

namespace SQLite {
class Statement;
class Transaction;
} // namespace SQLite

namespace zelto::store {

/// Writes records of a table that has the fields of its definition. Every operation throws
/// DatabaseError when a value or the key is refused, and leaves the table as it was then.
class RecordWriter
{
public:
    RecordWriter(ConnectionPtr connection, const TableDef& table)
        : m_connection(std::move(connection)), m_table(&table)
    {}

    /// Adds a record: the values of its first fields, in order; the others are Null. Many records
    /// are best added by one writer within one transaction.
    void add(std::span<const Value> record);

    /// Writes the fields in which a record is to be another. It is the one with the key of before;
    /// the first one of a table without a key.
    void change(const Record& before, const Record& after);

    /// Deletes the record with that key.
    void remove(const Value& key);

private:
    ConnectionPtr m_connection;
    const TableDef* m_table;
    std::shared_ptr<SQLite::Statement> m_insert;
};

enum class OpenMode { ReadWrite, ReadOnly };

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

    /// Opens an existing file to read a few records of it within a frame of the screen. Nothing is
    /// waited for: InUse when another process is writing it, and when a change that was broken off
    /// is still to be taken back. The structure of a larger file is not checked beforehand.
    static Database openForGlance(const QString& path);

    /// A private copy of the file in memory, for readers that must be able to convert what they
    /// read without touching the file.
    static Database openCopyInMemory(const QString& path);

    /// A private copy of a file whose tables need not be ours, for a repair that makes them so.
    /// Without what would run when it is read; Damaged when the rest is not sound.
    static Database openForRebuilding(const QString& path);

    /// What a connection that was opened already holds.
    explicit Database(ConnectionPtr connection) : m_connection(std::move(connection)) {}

    /// For what the engine does with whole files.
    [[nodiscard]] Connection& connection() const { return *m_connection; }

    /// As it was given to create or open.
    [[nodiscard]] const QString& path() const { return m_connection->path; }

    /// Names of the tables in stored order, in the letter case of the file.
    [[nodiscard]] QStringList tableNames() const;

    /// Creates a table with its primary index; TableExists when there is one of that name.
    void appendTable(const TableDef& table);

    /// One statement without result; ":1", ":2" … stand for the parameters. Returns the number of
    /// records changed.
    int Execute(const QString& sql, std::span<const Value> parameters = {})
    {
        return execute(*m_connection, sql, parameters);
    }

    /// Another number whenever another program has changed the file.
    [[nodiscard]] qint64 dataVersion() { return query(u"PRAGMA data_version"_s).integer(0); }

    /// Writes records of a table of this definition, which outlives the writer.
    [[nodiscard]] RecordWriter writer(const TableDef& table) { return {m_connection, table}; }

    /// The records that a statement finds; messages call them by the statement.
    [[nodiscard]] Query query(const QString& sql, std::span<const Value> parameters = {})
    {
        return {m_connection, sql, sql, parameters};
    }

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

    /// All changes until commit() succeed together or not at all: what is not committed is taken
    /// back with the transaction. One at a time.
    class Transaction
    {
    public:
        explicit Transaction(Database& database);
        Transaction(const Transaction&) = delete;
        Transaction& operator=(const Transaction&) = delete;
        void commit();

    private:
        ConnectionPtr m_connection;
        std::shared_ptr<SQLite::Transaction> m_transaction;
    };

private:
    ConnectionPtr m_connection;
};

} // namespace zelto::store

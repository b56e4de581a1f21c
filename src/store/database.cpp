// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/database.h"

#include "store/engine_errors.h"
#include "store/table_layout.h"

#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>
#include <sqlite3.h>

namespace zelto::store {

Database Database::create(const QString& path)
{
    return Database(createFile(path));
}

Database Database::open(const QString& path, OpenMode mode)
{
    return Database(openFile(path, mode));
}

Database Database::openCopyInMemory(const QString& path)
{
    return Database(copyToMemory(path));
}

QStringList Database::tableNames() const
{
    return store::tableNames(*m_connection);
}

void Database::appendTable(const TableDef& table)
{
    if (tableNames().contains(table.name, Qt::CaseInsensitive))
        throw DatabaseError(ErrorNumber::TableExists,
                            u"La tabella «%1» esiste già nel file «%2»."_s.arg(table.name, path()));
    Execute(createTableSql(table));
}

int Database::Execute(const QString& sql, std::span<const Value> parameters)
{
    return onFile(path(), [&] {
        SQLite::Statement statement(m_connection->handle, sql.toStdString());
        bindParameters(statement, parameters);
        const int changed = statement.exec();
        if (sqlite3_get_autocommit(m_connection->handle.getHandle()) != 0)
            m_connection->witness.remember(m_connection->handle, path());
        return changed;
    });
}

qint64 Database::dataVersion() const
{
    return onFile(path(), [&] {
        SQLite::Statement statement(m_connection->handle, "PRAGMA data_version");
        statement.executeStep();
        return static_cast<qint64>(statement.getColumn(0).getInt64());
    });
}

std::unique_ptr<TableWriter> Database::writer(const TableDef& table)
{
    return std::make_unique<TableWriter>(m_connection, table);
}

TableRecordset Database::openTable(QStringView name)
{
    return {m_connection, name};
}

QueryRecordset Database::OpenRecordset(const QString& sql, std::span<const Value> parameters)
{
    return {m_connection, sql, parameters};
}

Database::Transaction::Transaction(Database& database) : m_connection(database.m_connection)
{
    onFile(m_connection->path, [&] {
        m_transaction = std::make_unique<SQLite::Transaction>(
            m_connection->handle, SQLite::TransactionBehavior::IMMEDIATE);
        m_connection->witness.check(m_connection->handle, m_connection->path);
    });
}

Database::Transaction::~Transaction() = default;

void Database::Transaction::commit()
{
    onFile(m_connection->path, [&] {
        m_transaction->commit();
        m_connection->witness.remember(m_connection->handle, m_connection->path);
    });
}

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/database.h"

#include "store/engine_errors.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

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
    return onFile(path(), [&] {
        SQLite::Statement tables(m_connection->handle,
                                 "SELECT name FROM sqlite_schema WHERE type = 'table' AND name "
                                 "NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY rowid");
        QStringList names;
        while (tables.executeStep()) {
            const QByteArray name = tables.getColumn(0).getText();
            // One that could not be written back as it was read is not one of ours.
            if (!name.isValidUtf8())
                throw damagedFile(path(), u"nome non valido"_s);
            names += QString::fromUtf8(name);
        }
        return names;
    });
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
    return execute(*m_connection, sql, parameters);
}

qint64 Database::dataVersion() const
{
    return onFile(path(), [&] {
        SQLite::Statement statement(m_connection->handle, "PRAGMA data_version");
        statement.executeStep();
        return static_cast<qint64>(statement.getColumn(0).getInt64());
    });
}

Query Database::query(const QString& sql, std::span<const Value> parameters)
{
    return {m_connection, sql, sql, parameters};
}

Query Database::records(QStringView table, const std::vector<Condition>& conditions,
                        QStringView order)
{
    QStringList required;
    Record parameters;
    for (const Condition& condition : conditions) {
        parameters.push_back(condition.value);
        required += u"%1 IS :%2"_s.arg(quoted(condition.field)).arg(parameters.size());
    }
    QString sql = u"SELECT * FROM "_s + quoted(table);
    if (!required.isEmpty())
        sql += u" WHERE "_s + required.join(u" AND "_s);
    if (!order.isEmpty())
        sql += u" ORDER BY "_s + quoted(order);
    return {m_connection, sql, table.toString(), parameters};
}

int Database::count(QStringView table)
{
    return static_cast<int>(query(u"SELECT count(*) FROM "_s + quoted(table)).integer(0));
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

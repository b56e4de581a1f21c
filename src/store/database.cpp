// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/database.h"

#include "store/engine_errors.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>
#include <SQLiteCpp/Transaction.h>

namespace zelto::store {

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
        m_transaction = std::make_shared<SQLite::Transaction>(
            m_connection->handle, SQLite::TransactionBehavior::IMMEDIATE);
        m_connection->requireUnchanged();
    });
}

void Database::Transaction::commit()
{
    onFile(m_connection->path, [&] {
        m_transaction->commit();
        m_connection->remember();
    });
}

void RecordWriter::add(std::span<const Value> record)
{
    onFile(m_connection->path, [&] {
        if (!m_insert) {
            const QStringList places(static_cast<qsizetype>(m_table->fields.size()), u"?"_s);
            const QString sql =
                u"INSERT INTO %1 VALUES (%2)"_s.arg(quoted(m_table->name), places.join(u", "_s));
            m_insert = std::make_shared<SQLite::Statement>(m_connection->handle, sql.toStdString());
        }
        m_insert->tryReset();
        m_insert->clearBindings();
        std::vector<QByteArray> texts(record.size());
        for (std::size_t i = 0; i < record.size(); ++i)
            bindValue(*m_insert, static_cast<int>(i) + 1, record[i], texts[i]);
        m_insert->exec();
        noteWritten(*m_connection);
    });
}

void RecordWriter::change(const Record& before, const Record& after)
{
    const bool keyed = !m_table->primaryKey.isEmpty();
    QStringList settings;
    Record values;
    for (std::size_t field = 0; field < after.size(); ++field)
        if (after[field] != before[field]) {
            values.push_back(after[field]);
            settings += u"%1 = :%2"_s.arg(quoted(m_table->fields[field].name)).arg(values.size());
        }
    if (settings.isEmpty())
        return;
    const QString found =
        keyed ? u"%1 = :%2"_s.arg(quoted(m_table->primaryKey)).arg(values.size() + 1)
              : u"rowid = (SELECT min(rowid) FROM %1)"_s.arg(quoted(m_table->name));
    if (keyed)
        values.push_back(before.front());
    execute(
        *m_connection,
        u"UPDATE %1 SET %2 WHERE %3"_s.arg(quoted(m_table->name), settings.join(u", "_s), found),
        values);
}

void RecordWriter::remove(const Value& key)
{
    execute(
        *m_connection,
        u"DELETE FROM %1 WHERE %2 = :1"_s.arg(quoted(m_table->name), quoted(m_table->primaryKey)),
        {&key, 1});
}

} // namespace zelto::store

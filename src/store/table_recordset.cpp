// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/table_recordset.h"

#include "store/database_error.h"
#include "store/engine_errors.h"
#include "store/table_def.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>
#include <utility>

namespace zelto::store {

TableRecordset::TableRecordset(const ConnectionPtr& connection, QStringView table)
    : Recordset(connection, table.toString()), m_layout(readLayout(*connection, table))
{
    setFields(m_layout.fields);
    startScan(u"");
}

QString TableRecordset::orderColumn() const
{
    return m_indexed ? quoted(m_layout.fields[*m_layout.keyField]) : m_layout.identity;
}

/// The fields, and behind them what tells the record from others and what orders it.
QString TableRecordset::selectSql(QStringView clauses, QStringView moreColumns) const
{
    QStringList columns;
    for (const QString& name : m_layout.fields)
        columns += quoted(name);
    columns += {m_layout.identity, orderColumn()};
    return u"SELECT %1%2 FROM %3 %4"_s.arg(columns.join(u", "_s), moreColumns,
                                           quoted(m_layout.name), clauses);
}

void TableRecordset::startScan(QStringView direction)
{
    leaveRecord();
    start(prepare(selectSql(u"ORDER BY %1 %2"_s.arg(orderColumn(), direction))));
}

void TableRecordset::setIndex(QStringView name)
{
    if (name.compare(IndicePrimario, Qt::CaseInsensitive) != 0 || !m_layout.keyField)
        throw DatabaseError(ErrorNumber::IndexNotFound,
                            u"«%1» non è un indice della tabella «%2»."_s.arg(name, m_layout.name));
    m_indexed = true;
    m_seek.reset();
    dropPending();
    startScan(u"");
}

int TableRecordset::RecordCount() const
{
    const StatementPtr count = prepare(u"SELECT count(*) FROM %1"_s.arg(quoted(m_layout.name)));
    return onFile(connection().path, [&] {
        count->executeStep();
        return count->getColumn(0).getInt();
    });
}

void TableRecordset::MoveFirst()
{
    dropPending();
    startScan(u"");
    requireRecord();
}

void TableRecordset::MoveNext()
{
    dropPending();
    requireRecord();
    step();
}

void TableRecordset::MoveLast()
{
    dropPending();
    startScan(u"DESC LIMIT 1");
    requireRecord();
}

void TableRecordset::seekFrom(const Value& orderValue)
{
    if (!m_seek)
        m_seek = prepare(selectSql(u"WHERE %1 >= ?1 ORDER BY %1"_s.arg(orderColumn()),
                                   u", %1 = ?1"_s.arg(orderColumn())));
    leaveRecord();
    onFile(connection().path, [&] {
        m_seek->reset();
        bindValue(*m_seek, 1, orderValue);
    });
    start(m_seek);
}

void TableRecordset::Seek(Comparison comparison, const QString& key)
{
    if (!m_indexed)
        throw DatabaseError(ErrorNumber::NoCurrentIndex,
                            u"Nessun indice corrente per la tabella «%1»."_s.arg(m_layout.name));
    dropPending();
    seekFrom(key);
    m_noMatch =
        EndOfFile() || (comparison == Comparison::Equal && column(sameKeyIndex()).getInt() == 0);
    if (m_noMatch)
        leaveRecord();
}

void TableRecordset::AddNew()
{
    dropPending();
    m_pending = Pending::Add;
}

void TableRecordset::Edit()
{
    dropPending();
    requireRecord();
    m_pending = Pending::Edit;
}

void TableRecordset::setField(int ordinal, const Value& value)
{
    requireField(ordinal);
    if (m_pending == Pending::Nothing)
        throw DatabaseError(ErrorNumber::NoPendingEdit,
                            u"Nessuna modifica in corso sulla tabella «%1»."_s.arg(m_layout.name));
    m_changes.insert_or_assign(ordinal, value);
}

void TableRecordset::Update()
{
    if (m_pending == Pending::Nothing)
        throw DatabaseError(ErrorNumber::NoPendingEdit,
                            u"Nessuna modifica in corso sulla tabella «%1»."_s.arg(m_layout.name));
    if (m_pending == Pending::Add)
        insertRecord();
    else if (!m_changes.empty())
        updateRecord();
    dropPending();
}

void TableRecordset::Close()
{
    dropPending();
    leaveRecord();
}

void TableRecordset::dropPending()
{
    m_pending = Pending::Nothing;
    m_changes.clear();
}

void TableRecordset::insertRecord()
{
    QStringList names;
    QStringList places;
    for (const auto& [ordinal, value] : m_changes) {
        names += quoted(m_layout.fields[ordinal]);
        places += u"?"_s;
    }
    const QString content =
        names.isEmpty() ? u"DEFAULT VALUES"_s
                        : u"(%1) VALUES (%2)"_s.arg(names.join(u", "_s), places.join(u", "_s));
    write(u"INSERT INTO %1 %2"_s.arg(quoted(m_layout.name), content));
}

void TableRecordset::updateRecord()
{
    QStringList assignments;
    for (const auto& [ordinal, value] : m_changes)
        assignments += quoted(m_layout.fields[ordinal]) + u" = ?"_s;
    const Value identity = value(identityIndex());
    const auto newKey = m_indexed ? m_changes.find(*m_layout.keyField) : m_changes.end();
    const Value order = newKey != m_changes.end() ? newKey->second : value(orderIndex());

    const QString sql = u"UPDATE %1 SET %2 WHERE %3 = ?"_s.arg(
        quoted(m_layout.name), assignments.join(u", "_s), m_layout.identity);
    if (write(sql, {&identity, 1}) == 0)
        throw DatabaseError(
            ErrorNumber::RecordDeleted,
            u"Il record della tabella «%1» è stato eliminato."_s.arg(m_layout.name));
    seekFrom(order);
}

int TableRecordset::write(const QString& sql, std::span<const Value> rest)
{
    const std::string text = sql.toStdString();
    // Records are often added in long rows with the same fields.
    if (!m_write || m_write->getQuery() != text)
        m_write = prepare(sql);
    return onFile(connection().path, [&] {
        m_write->tryReset();
        int place = 0;
        for (const auto& [ordinal, value] : m_changes)
            bindValue(*m_write, ++place, value);
        for (const Value& value : rest)
            bindValue(*m_write, ++place, value);
        const int changed = m_write->exec();
        m_write->reset();
        return changed;
    });
}

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_writer.h"

#include "store/schema.h"

#include <array>
#include <utility>

namespace zelto::registro {

using store::TableRecordset;
using store::Value;
using Table = RecordChange::Table;

namespace {

QStringView nameOf(Table table)
{
    return table == Table::Units ? store::TabellaUnita : store::TabellaVani;
}

Record recordOf(const store::Recordset& source)
{
    Record record;
    record.reserve(static_cast<std::size_t>(source.fieldCount()));
    for (int field = 0; field < source.fieldCount(); ++field)
        record.push_back(source.field(field));
    return record;
}

void setFields(TableRecordset& target, const Record& record)
{
    int field = 0;
    for (const Value& value : record)
        target.setField(field++, value);
}

} // namespace

Register::Writer::Writer(store::Database& lavoro)
    : m_lavoro(lavoro), m_transaction(lavoro), m_units(lavoro.openTable(store::TabellaUnita)),
      m_rooms(lavoro.openTable(store::TabellaVani))
{
    m_units.setIndex(store::IndicePrimario);
    m_rooms.setIndex(store::IndicePrimario);
}

std::vector<Record> Register::Writer::find(Table table, const QString& field,
                                           const Value& value) const
{
    const QString sql = QStringLiteral("SELECT * FROM [%1] WHERE [%2] = :1 ORDER BY Chiave")
                            .arg(nameOf(table), field);
    std::vector<Record> records;
    store::QueryRecordset source = m_lavoro.OpenRecordset(sql, std::array{value});
    for (; !source.EndOfFile(); source.MoveNext())
        records.push_back(recordOf(source));
    return records;
}

int Register::Writer::highest(const QString& sql, std::span<const Value> parameters) const
{
    const store::QueryRecordset source = m_lavoro.OpenRecordset(sql, parameters);
    return source.EndOfFile() ? 0 : static_cast<int>(source.integer(0));
}

int Register::Writer::highestUnit() const
{
    return highest(
        QStringLiteral("SELECT MAX([Riferimento unità]) FROM [%1]").arg(store::TabellaUnita), {});
}

int Register::Writer::highestPosition(int unit) const
{
    return highest(QStringLiteral("SELECT MAX(Posizione) FROM [%1] WHERE [Riferimento unità] = :1")
                       .arg(store::TabellaVani),
                   std::array{Value(unit)});
}

QString Register::Writer::nextUnitKey() const
{
    TableRecordset units = m_lavoro.openTable(store::TabellaUnita);
    units.setIndex(store::IndicePrimario);
    if (units.EndOfFile())
        return store::unitKey(1);
    units.MoveLast();
    return store::unitKey(units.text(UnitKey).trimmed().toInt() + 1);
}

TableRecordset& Register::Writer::recordset(Table table)
{
    return table == Table::Units ? m_units : m_rooms;
}

void Register::Writer::write(Table table, const Record& before, const Record& after)
{
    TableRecordset& records = recordset(table);
    if (before.empty()) {
        records.AddNew();
        setFields(records, after);
        records.Update();
        return;
    }
    if (after.empty()) {
        m_lavoro.Execute(QStringLiteral("DELETE FROM [%1] WHERE Chiave = :1").arg(nameOf(table)),
                         std::array{before.front()});
        return;
    }
    records.Seek(TableRecordset::Comparison::Equal, before.front().text());
    records.Edit();
    setFields(records, after);
    records.Update();
}

void Register::Writer::add(Table table, Record record)
{
    write(table, {}, record);
    m_changes.push_back({.table = table, .before = {}, .after = std::move(record)});
}

void Register::Writer::remove(Table table, const Record& record)
{
    write(table, record, {});
    m_changes.push_back({.table = table, .before = record, .after = {}});
}

void Register::Writer::changeFirst(Table table, const std::vector<Record>& found, int field,
                                   const QString& text)
{
    if (found.empty())
        return;
    const Record& before = found.front();
    Record after = before;
    after[static_cast<std::size_t>(field)] = Value::nullIfEmpty(text);
    if (after == before)
        return;
    write(table, before, after);
    m_changes.push_back({.table = table, .before = before, .after = std::move(after)});
}

void Register::Writer::repeat(const RecordChange& change)
{
    TableRecordset& records = recordset(change.table);
    records.Seek(TableRecordset::Comparison::Equal, change.record().front().text());
    const Record stored = records.NoMatch() ? Record() : recordOf(records);
    if (stored != change.before)
        throw store::DatabaseError(
            store::ErrorNumber::RecordChanged,
            QStringLiteral("L'unità %1 è stata cambiata da un altro programma: le modifiche fatte "
                           "fin qui non si possono più annullare.")
                .arg(change.unit()));
    write(change.table, change.before, change.after);
    m_changes.push_back(change);
}

std::vector<RecordChange> Register::Writer::commit()
{
    m_units.Close();
    m_rooms.Close();
    m_transaction.commit();
    return std::move(m_changes);
}

} // namespace zelto::registro

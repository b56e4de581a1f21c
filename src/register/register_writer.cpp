// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_writer.h"

#include "store/schema.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zelto::registro {

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

} // namespace

std::vector<Record> Register::Writer::find(Table table, const QString& field,
                                           const Value& value) const
{
    const QString sql =
        u"SELECT * FROM [%1] WHERE [%2] = :1 ORDER BY Chiave"_s.arg(nameOf(table), field);
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

int Register::Writer::highestPosition(int unit) const
{
    return highest(
        u"SELECT MAX(Posizione) FROM [%1] WHERE [Riferimento unità] = :1"_s.arg(store::TabellaVani),
        std::array{Value(unit)});
}

/// A room whose unit another program deleted still keeps its key.
int Register::Writer::nextUnit() const
{
    const QString sql = u"SELECT MAX(n) FROM (SELECT [Riferimento unità] AS n FROM [%1] UNION ALL "
                        u"SELECT CAST(substr(Chiave, 1, 5) AS INTEGER) FROM [%1] UNION ALL "
                        u"SELECT [Riferimento unità] FROM [%2] UNION ALL "
                        u"SELECT CAST(substr(Chiave, 1, 5) AS INTEGER) FROM [%2])"_s;
    return highest(sql.arg(store::TabellaUnita, store::TabellaVani), {}) + 1;
}

void Register::Writer::requireUnit(int unit) const
{
    if (find(Table::Units, u"Riferimento unità"_s, Value(unit)).empty())
        throw store::DatabaseError(
            store::ErrorNumber::RecordDeleted,
            u"L'unità %1 non c'è più: un altro programma l'ha eliminata. Scegliere "
            u"un'altra unità, o aggiungerne una, e ripetere."_s.arg(unit));
}

QHash<int, QString> Register::Writer::names(const QList<int>& units) const
{
    QHash<int, QString> names;
    for (const int unit : units)
        for (const Record& record : find(Table::Units, u"Riferimento unità"_s, Value(unit)))
            names.insert(unit, textOf(record, UnitRiferimento));
    return names;
}

void Register::Writer::write(Table table, const Record& before, const Record& after)
{
    if (before.empty())
        insert(table, after);
    else if (!after.empty())
        update(table, before, after);
    else
        m_lavoro.Execute(u"DELETE FROM [%1] WHERE Chiave = :1"_s.arg(nameOf(table)),
                         std::array{before.front()});
}

void Register::Writer::insert(Table table, const Record& record)
{
    QStringList places;
    for (std::size_t field = 1; field <= record.size(); ++field)
        places << u":%1"_s.arg(field);
    m_lavoro.Execute(u"INSERT INTO [%1] VALUES (%2)"_s.arg(nameOf(table), places.join(u", "_s)),
                     record);
}

/// Only the fields that change are written.
void Register::Writer::update(Table table, const Record& before, const Record& after)
{
    const auto& fields = store::jobTable(nameOf(table)).fields;
    std::vector<Value> values{before.front()};
    QStringList settings;
    for (std::size_t field = 0; field < after.size(); ++field)
        if (after[field] != before[field]) {
            values.push_back(after[field]);
            settings << u"[%1] = :%2"_s.arg(fields[field].name).arg(values.size());
        }
    m_lavoro.Execute(
        u"UPDATE [%1] SET %2 WHERE Chiave = :1"_s.arg(nameOf(table), settings.join(u", "_s)),
        values);
}

void Register::Writer::note(Table table, const Record& before, Record after)
{
    write(table, before, after);
    m_changes.push_back({.table = table, .before = before, .after = std::move(after)});
}

void Register::Writer::add(Table table, Record record)
{
    note(table, {}, std::move(record));
}

void Register::Writer::remove(Table table, const Record& record)
{
    note(table, record, {});
}

void Register::Writer::change(Table table, const Record& record, int field, const QString& text)
{
    Record after = record;
    after[static_cast<std::size_t>(field)] = Value::nullIfEmpty(text);
    if (after != record)
        note(table, record, std::move(after));
}

void Register::Writer::exchange(Table table, const Record& one, const Record& other, int firstField)
{
    Record first = one;
    Record second = other;
    std::copy(other.begin() + firstField, other.end(), first.begin() + firstField);
    std::copy(one.begin() + firstField, one.end(), second.begin() + firstField);
    if (first == one)
        return;
    note(table, one, std::move(first));
    note(table, other, std::move(second));
}

void Register::Writer::repeat(const RecordChange& change)
{
    const std::vector<Record> stored = find(change.table, u"Chiave"_s, change.record().front());
    if ((stored.empty() ? Record() : stored.front()) != change.before)
        throw store::DatabaseError(
            store::ErrorNumber::RecordChanged,
            u"L'unità %1 è stata cambiata da un altro programma: le modifiche fatte "
            u"fin qui non si possono più annullare."_s.arg(change.unit()));
    write(change.table, change.before, change.after);
    m_changes.push_back(change);
}

std::vector<RecordChange> Register::Writer::commit()
{
    m_transaction.commit();
    return std::move(m_changes);
}

} // namespace zelto::registro

// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/database.h"
#include "store/job_limits.h"
#include "store/recovery/job_salvage.h"
#include "store/schema.h"

#include <algorithm>
#include <array>

namespace zelto::store {

namespace {

/// Whether the failure is about the value or the key; others concern the file.
bool isRefusal(ErrorNumber number)
{
    constexpr std::array Refusals{ErrorNumber::BadValue, ErrorNumber::DuplicateKey,
                                  ErrorNumber::EmptyNotAllowed, ErrorNumber::NullKey,
                                  ErrorNumber::TextTooLong};
    return std::ranges::find(Refusals, number) != Refusals.end();
}

bool insert(Database& database, const TableDef& table, const Record& record)
{
    try {
        database.writer(table).add(record);
        return true;
    } catch (const DatabaseError& error) {
        if (!isRefusal(error.number()))
            throw;
        return false;
    }
}

bool breaks(Database& database, const FieldRule& rule, const Value& value)
{
    const QString sql =
        u"SELECT 1 FROM (SELECT :1 AS %1) WHERE NOT (%2)"_s.arg(quoted(rule.field), rule.condition);
    return !database.query(sql, std::span(&value, 1)).atEnd();
}

/// Cuts texts that are too long for any field; returns how many.
int cutTexts(Record& record)
{
    int cut = 0;
    for (Value& value : record)
        if (const QString text = value.text(); text.size() > LongestMemo) {
            value = text.left(LongestMemo);
            ++cut;
        }
    return cut;
}

/// Makes Null what breaks a rule; returns how many fields that is.
int dropRefused(Database& database, const TableDef& table, Record& record)
{
    int dropped = cutTexts(record);
    for (const FieldRule& rule : rulesOf(table)) {
        const auto field = std::ranges::find(table.fields, rule.field, &FieldDef::name);
        Value& value = record[static_cast<std::size_t>(field - table.fields.begin())];
        if (!breaks(database, rule, value))
            continue;
        value = Value();
        ++dropped;
    }
    return dropped;
}

int addRecord(Database& database, const TableDef& table, Record record)
{
    if (insert(database, table, record))
        return 0;
    const int dropped = dropRefused(database, table, record);
    return dropped > 0 && insert(database, table, record) ? dropped : 1;
}

int addRecords(Database& database, const TableDef& table, const std::vector<Record>& records)
{
    // The other tables have one record; what else is found there is out of date.
    const bool isList = table.name == TabellaUnita || table.name == TabellaVani;
    const std::size_t count = isList ? records.size() : std::min<std::size_t>(records.size(), 1);
    int leftOut = 0;
    for (const Record& record : std::span(records).first(count))
        leftOut += addRecord(database, table, record);
    return leftOut;
}

void addMissing(Database& database)
{
    for (const QStringView table : {TabellaZelto, TabellaDatiGenerali, TabellaVariabili})
        addOnlyRecord(database, table);
    // Without its unit no screen would show a room.
    database.Execute(u"INSERT INTO %1 (Chiave, [Riferimento unità]) "
                     "SELECT DISTINCT substr(Chiave, 1, 5), [Riferimento unità] FROM %2 "
                     "WHERE substr(Chiave, 1, 5) NOT IN (SELECT Chiave FROM %1)"_s.arg(
                         quoted(TabellaUnita), quoted(TabellaVani)));
}

} // namespace

int writeSalvaged(Database& database, const SalvagedJob& job)
{
    Database::Transaction transaction(database);
    int leftOut = job.broken;
    for (const TableDef& table : jobTables()) {
        database.appendTable(table);
        if (const auto found = job.records.find(table.name); found != job.records.end())
            leftOut += addRecords(database, table, found->second);
    }
    addMissing(database);
    transaction.commit();
    return leftOut;
}

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/format_check.h"

#include "store/database.h"
#include "store/job_limits.h"
#include "store/schema.h"
#include "store/user_interface.h"
#include "text/decimal_text.h"

namespace zelto::store {

namespace {

/// The number in the marker table, 0 without one.
float formatVersion(Database& database)
{
    if (!database.tableNames().contains(TabellaZelto, Qt::CaseSensitive))
        return 0;
    const Query marker = database.records(TabellaZelto);
    if (marker.utf8(0).empty())
        throw DatabaseError(ErrorNumber::BadValue,
                            u"La tabella «%1» del file «%2» non indica la versione."_s.arg(
                                TabellaZelto, database.path()));
    return static_cast<float>(text::leadingNumber(marker.utf8(0)));
}

/// The rules of the file know no longest memo: jobs that have one are older than the limit.
void checkMemos(Database& database, const TableDef& table)
{
    for (const FieldDef& field : table.fields) {
        if (field.type != FieldType::Memo)
            continue;
        const Query longest = database.query(
            u"SELECT max(length(%1)) FROM %2"_s.arg(quoted(field.name), quoted(table.name)));
        if (const qint64 length = longest.integer(0); length > LongestMemo)
            throw memoTooLong(length, u"«%1» nella tabella «%2»"_s.arg(field.name, table.name));
    }
}

/// One pass over the table finds the first rule that any record breaks.
void checkContents(Database& database, const TableDef& table)
{
    QString broken;
    for (const FieldRule& rule : rulesOf(table))
        broken += u"WHEN NOT (%1) THEN '%2' "_s.arg(rule.condition, rule.name);
    Query found = database.query(
        u"SELECT rule FROM (SELECT CASE %1END AS rule FROM %2) WHERE rule IS NOT NULL LIMIT 1"_s
            .arg(broken, quoted(table.name)));
    if (!found.atEnd())
        throw brokenRule(found.text(0));
}

} // namespace

bool isOfThisFormat(Database& database)
{
    return formatVersion(database) == VersioneFormato;
}

void VerificaFormato(QString& path, Messages& user)
{
    Database database = Database::open(path, OpenMode::ReadOnly);
    if (isOfThisFormat(database))
        return;
    user.showMessage(IncompatibleFormat.toString());
    path.clear();
}

void ControllaVersione(Database& database)
{
    const bool tablePresent = database.tableNames().contains(TabellaVariabili, Qt::CaseInsensitive);
    if (tablePresent && !database.records(TabellaVariabili).atEnd())
        return;
    Database::Transaction transaction(database);
    if (!tablePresent)
        database.appendTable(jobTable(TabellaVariabili));
    addOnlyRecord(database, TabellaVariabili);
    transaction.commit();
}

void ControllaLimiti(Database& database, const QString& path)
{
    const int units = database.count(TabellaUnita);
    if (units > MostRecords)
        throw DatabaseError(
            ErrorNumber::Damaged,
            u"Il file «%1» contiene %2 unità, al massimo possono essere %3."_s.arg(path)
                .arg(units)
                .arg(MostRecords));
    const Query most = database.query(
        u"SELECT count(*), [Riferimento unità] FROM %1 GROUP BY 2 ORDER BY 1 DESC LIMIT 1"_s.arg(
            TabellaVani));
    if (!most.atEnd() && most.integer(0) > MostRecords)
        throw DatabaseError(ErrorNumber::Damaged,
                            u"L'unità %2 del file «%1» ha %3 vani, al massimo possono essere %4."_s
                                .arg(path, most.text(1), most.text(0))
                                .arg(MostRecords));
}

void ControllaTabelle(Database& database)
{
    const QStringList present = database.tableNames();
    for (const TableDef& table : jobTables()) {
        if (table.name == TabellaVariabili && !present.contains(table.name, Qt::CaseInsensitive))
            continue;
        (void)database.records(table.name);
        checkMemos(database, table);
        checkContents(database, table);
    }
    ControllaLimiti(database, database.path());
}

} // namespace zelto::store

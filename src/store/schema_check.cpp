// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema_check.h"

#include "store/database.h"
#include "store/job_limits.h"
#include "store/schema.h"

namespace zelto::store {

namespace {

/// The rules of the file know no longest memo: jobs that have one are older than the limit.
void checkMemos(Database& database, const TableDef& table)
{
    for (const FieldDef& field : table.fields) {
        if (field.type != FieldType::Memo)
            continue;
        const Query longest = database.query(
            u"SELECT max(length(%1)) FROM %2"_s.arg(quoted(field.name), quoted(table.name)));
        requireMemoLength(longest.integer(0),
                          u"«%1» nella tabella «%2»"_s.arg(field.name, table.name));
    }
}

/// One pass over the table finds the first rule that any record breaks.
void checkContents(Database& database, const TableDef& table)
{
    QString broken;
    for (const RuleCondition& check : rulesOf(table))
        broken += u"WHEN NOT (%1) THEN '%2' "_s.arg(check.condition, check.rule.constraintName());
    Query found = database.query(
        u"SELECT rule FROM (SELECT CASE %1END AS rule FROM %2) WHERE rule IS NOT NULL LIMIT 1"_s
            .arg(broken, quoted(table.name)));
    if (!found.atEnd())
        throw FieldRule::fromConstraintName(found.text(0))->error();
}

} // namespace

void ControllaLimiti(Database& database, const QString& path)
{
    requireUnits(database.count(TabellaUnita), path);
    const Query most = database.query(
        u"SELECT count(*), [Riferimento unità] FROM %1 GROUP BY 2 ORDER BY 1 DESC LIMIT 1"_s.arg(
            TabellaVani));
    if (!most.atEnd())
        requireRoomsOfUnit(most.integer(0), most.text(1), path);
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

// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema_check.h"

#include "store/database.h"
#include "store/schema.h"

namespace zelto::store {

using namespace Qt::StringLiterals;

namespace {

void checkFields(Database& database, const TableDef& table)
{
    TableRecordset records = database.openTable(table.name);
    if (!table.primaryKey.isEmpty())
        records.setIndex(IndicePrimario);
    bool same = records.fieldCount() == static_cast<int>(table.fields.size());
    for (int i = 0; same && i < records.fieldCount(); ++i)
        same = records.fieldNames()[i].compare(table.fields[static_cast<std::size_t>(i)].name,
                                               Qt::CaseInsensitive) == 0;
    if (!same)
        throw DatabaseError(
            ErrorNumber::Damaged,
            u"I campi della tabella «%1» del file «%2» non sono quelli di un lavoro."_s.arg(
                table.name, database.path()));
}

/// One pass over the table finds the first rule that any record breaks.
void checkContents(Database& database, const TableDef& table)
{
    QString broken;
    for (const RuleCondition& check : rulesOf(table))
        broken += u"WHEN NOT (%1) THEN '%2' "_s.arg(check.condition, check.rule.constraintName());
    QueryRecordset found = database.OpenRecordset(
        u"SELECT rule FROM (SELECT CASE %1END AS rule FROM %2) WHERE rule IS NOT NULL LIMIT 1"_s
            .arg(broken, quoted(table.name)));
    if (!found.EndOfFile())
        throw FieldRule::fromConstraintName(found.text(0))->error();
}

} // namespace

void ControllaTabelle(Database& database)
{
    const QStringList present = database.tableNames();
    for (const TableDef& table : jobTables()) {
        if (table.name == TabellaVariabili && !present.contains(table.name, Qt::CaseInsensitive))
            continue;
        checkFields(database, table);
        checkContents(database, table);
    }
}

} // namespace zelto::store

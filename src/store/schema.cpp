// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/schema.h"

#include "store/database.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zelto::store {

namespace {

FieldDef text(QString name, int size)
{
    return {.name = std::move(name), .type = FieldType::Text, .size = size, .allowEmpty = true};
}

FieldDef memo(QString name)
{
    return {.name = std::move(name), .type = FieldType::Memo, .allowEmpty = true};
}

FieldDef key(int size)
{
    return {.name = u"Chiave"_s, .type = FieldType::Text, .size = size};
}

FieldDef number(QString name)
{
    return {.name = std::move(name), .type = FieldType::Integer};
}

TableDef zelto()
{
    return {.name = TabellaZelto.toString(),
            .fields = {text(u"Versione"_s, 50), text(u"Utente"_s, 50)}};
}

TableDef datiGenerali()
{
    TableDef table{.name = TabellaDatiGenerali.toString(),
                   .fields = {{.name = u"Chiave"_s, .type = FieldType::AutoNumber},
                              text(u"Descrizione"_s, 30),
                              text(u"Descrizionee"_s, 30),
                              memo(u"Note"_s),
                              {.name = u"Data"_s, .type = FieldType::Date},
                              memo(u"Relazione"_s)},
                   .primaryKey = u"Chiave"_s};
    for (int i = 1; i <= SpecialTables; ++i)
        table.fields.push_back(text(campoTabella(i), 50));
    table.fields.push_back(memo(CampoCodici));
    return table;
}

TableDef unita()
{
    return {.name = TabellaUnita.toString(),
            .fields = {key(5), number(u"Riferimento unità"_s), text(u"Riferimento"_s, 23),
                       text(u"Livello"_s, 20), text(u"Codice scala"_s, 1), text(u"H piano"_s, 10),
                       text(u"Flag tabelle"_s, 10)},
            .primaryKey = u"Chiave"_s};
}

TableDef vani()
{
    constexpr int TextSize = 15;
    TableDef table{.name = TabellaVani.toString(),
                   .fields = {key(10), number(u"Riferimento unità"_s), number(u"Posizione"_s),
                              text(u"Ambiente"_s, TextSize),
                              text(u"Consistenza reale"_s, TextSize)},
                   .primaryKey = u"Chiave"_s};
    for (const QStringView coefficient : std::span(GroupNames).subspan(1))
        table.fields.push_back(text(coefficient.toString(), TextSize));
    return table;
}

TableDef variabili()
{
    TableDef table{.name = TabellaVariabili.toString()};
    for (int group = 0; group < Groups; ++group)
        table.fields.push_back(memo(campoGruppo(group)));
    return table;
}

} // namespace

std::span<const TableDef> jobTables()
{
    static const std::array tables{zelto(), datiGenerali(), unita(), vani(), variabili()};
    return tables;
}

const TableDef& jobTable(QStringView name)
{
    const auto table = std::ranges::find(jobTables(), name, &TableDef::name);
    Q_ASSERT(table != jobTables().end());
    return *table;
}

int longestText(QStringView table, QStringView field)
{
    const auto& fields = jobTable(table).fields;
    const auto found = std::ranges::find(fields, field, &FieldDef::name);
    Q_ASSERT(found != fields.end());
    return found->size;
}

QString headingOf(QStringView field)
{
    if (field == u"Codice scala")
        return u"Scala"_s;
    if (field == u"H piano")
        return u"H"_s;
    return field == u"Consistenza reale" ? u"Consistenza"_s : field.toString();
}

void CreaTabelleBase(Database& database)
{
    Database::Transaction transaction(database);
    for (const TableDef& table : jobTables())
        database.appendTable(table);
    for (const QStringView table : {TabellaZelto, TabellaDatiGenerali, TabellaVariabili})
        addOnlyRecord(database, table);
    database.writer(jobTable(TabellaUnita)).add(Record{unitKey(1), 1});
    database.writer(jobTable(TabellaVani)).add(Record{roomKey(1, 1), 1, 1});
    transaction.commit();
}

void addOnlyRecord(Database& database, QStringView table)
{
    if (database.count(table) > 0)
        return;
    database.writer(jobTable(table))
        .add(table == TabellaZelto          ? Record{QString::number(VersioneFormato)}
             : table == TabellaDatiGenerali ? Record{1}
                                            : Record(Groups, u" "_s));
}

QString unitKey(int unit)
{
    return (u"     "_s + QString::number(unit)).right(5);
}

QString roomKey(int unit, int position)
{
    return unitKey(unit) + unitKey(position);
}

} // namespace zelto::store

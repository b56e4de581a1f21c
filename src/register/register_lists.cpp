// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_lists.h"

#include "coefficients/job_texts.h"
#include "store/job_queries.h"
#include "store/schema.h"
#include "text/table_text.h"

namespace zelto::registro {

using store::CampoUnita;
using Condition = store::Database::Condition;

namespace {

/// Lines of the table of codes that are looked at.
constexpr int MaxCodes = 100;

QStringList readCodes(const QString& tableText)
{
    QStringList codes;
    const text::CellTable table = text::TextToTable(tableText, MaxCodes, 1);
    for (int row = 1; row <= MaxCodes; ++row)
        if (!table.at(row, 1).isEmpty())
            codes << table.at(row, 1);
    return codes;
}

/// Up to the first row without anything in it, where pickers stop as well.
std::vector<CoefficientEntry> readEntries(const QString& groupText)
{
    std::vector<CoefficientEntry> entries;
    const text::CellTable table = text::TextToTable(groupText, store::MostGroupRows, 3);
    for (int row = 1; row <= store::MostGroupRows; ++row) {
        CoefficientEntry entry{table.at(row, 2), table.at(row, 1), table.at(row, 3)};
        if (entry.value.isEmpty() && entry.code.isEmpty())
            break;
        entries.push_back(std::move(entry));
    }
    return entries;
}

} // namespace

QString CoefficientEntry::text() const
{
    return code.isEmpty() ? value : u"[%1] %2"_s.arg(code, value);
}

QString chosenCoefficient(const CoefficientEntry& entry, const QString& cellText)
{
    const QString text = entry.text();
    if (!text.startsWith(u'['))
        return text.trimmed();
    const qsizetype end = text.indexOf(u']');
    return end < 0 ? cellText : text.left(end + 1);
}

std::vector<Record> readUnits(store::Database& lavoro, const UnitFilter& filter)
{
    std::vector<Condition> conditions;
    if (!filter.scala.trimmed().isEmpty())
        conditions.push_back({u"Codice scala", filter.scala});
    if (!filter.livello.trimmed().isEmpty())
        conditions.push_back({u"Livello", filter.livello});
    return lavoro.records(store::TabellaUnita, conditions, CampoUnita).records();
}

Record readUnit(store::Database& lavoro, int number)
{
    const store::Query unit = lavoro.records(store::TabellaUnita, {{CampoUnita, number}});
    return unit.atEnd() ? Record() : unit.record();
}

std::vector<Record> readRooms(store::Database& lavoro, int unit)
{
    return lavoro.records(store::TabellaVani, {{CampoUnita, unit}}, u"Posizione").records();
}

RegisterLists LeggiDatiGenerali(store::Database& lavoro)
{
    const coefficients::JobTexts texts =
        coefficients::loadTexts(lavoro, store::TabellaDatiGenerali);
    RegisterLists lists{.scale = readCodes(texts.value(store::CampoCodici)),
                        .livelli = store::levels(lavoro),
                        .tabelle = {},
                        .coefficienti = {}};
    for (int table = 1; QString & name : lists.tabelle)
        name = texts.value(store::campoTabella(table++)).trimmed();
    const coefficients::JobTexts groups = coefficients::loadTexts(lavoro, store::TabellaVariabili);
    for (int group = 1; std::vector<CoefficientEntry> & entries : lists.coefficienti)
        entries = readEntries(groups.value(store::campoGruppo(group++)));
    return lists;
}

} // namespace zelto::registro

// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_lists.h"

#include "coefficients/coefficient_groups.h"
#include "coefficients/job_texts.h"
#include "register/register_change.h"
#include "store/job_queries.h"
#include "store/schema.h"
#include "text/table_text.h"

#include <QHash>

namespace zelto::registro {

using store::CampoChiave;
using store::CampoUnita;
using store::Value;

namespace {

/// Lines of the table of codes that are looked at.
constexpr int MaxCodes = 100;

UnitRow unitRow(const store::Query& record)
{
    UnitRow row{.number = static_cast<int>(record.integer(UnitNumber)),
                .texts = {},
                .flags = record.text(UnitFlags)};
    int field = UnitRiferimento;
    for (QString& text : row.texts)
        text = record.text(field++);
    return row;
}

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
    const text::CellTable table = text::TextToTable(groupText, coefficients::MaxGroupRows, 3);
    for (int row = 1; row <= coefficients::MaxGroupRows; ++row) {
        CoefficientEntry entry{table.at(row, 2), table.at(row, 1), table.at(row, 3)};
        if (entry.value.isEmpty() && entry.code.isEmpty())
            break;
        entries.push_back(std::move(entry));
    }
    return entries;
}

using RoomsByUnit = QHash<int, std::vector<TreeRoom>>;

RoomsByUnit readAllRooms(store::Database& lavoro)
{
    RoomsByUnit rooms;
    store::Query record = lavoro.records(store::TabellaVani, {}, u"Posizione");
    for (; !record.atEnd(); record.next()) {
        const auto position = static_cast<int>(record.integer(RoomPosition));
        rooms[static_cast<int>(record.integer(RoomUnit))].push_back(
            {.position = position,
             .text = record.isNull(RoomAmbiente) ? u"V:%1"_s.arg(position)
                                                 : record.text(RoomAmbiente)});
    }
    return rooms;
}

std::vector<TreeUnit> readTreeUnits(store::Database& lavoro, const QString& code,
                                    const RoomsByUnit& rooms)
{
    const Value scala = code.trimmed().isEmpty() ? Value() : Value(code);
    std::vector<TreeUnit> units;
    store::Query record =
        lavoro.records(store::TabellaUnita, {{u"Codice scala", scala}}, CampoChiave);
    for (; !record.atEnd(); record.next()) {
        const auto number = static_cast<int>(record.integer(UnitNumber));
        units.push_back({.number = number,
                         .text = record.isNull(UnitRiferimento) ? u"UI:%1"_s.arg(number)
                                                                : record.text(UnitRiferimento),
                         .rooms = rooms.value(number)});
    }
    return units;
}

} // namespace

QString CoefficientEntry::text() const
{
    return code.isEmpty() ? value : u"[%1] %2"_s.arg(code, value);
}

QString chosenCoefficient(const QString& entry, const QString& cellText)
{
    if (!entry.startsWith(u'['))
        return entry.trimmed();
    const qsizetype end = entry.indexOf(u']');
    return end < 0 ? cellText : entry.left(end + 1);
}

std::vector<UnitRow> readUnits(store::Database& lavoro, const UnitFilter& filter)
{
    std::vector<store::Database::Condition> conditions;
    if (!filter.scala.trimmed().isEmpty())
        conditions.push_back({u"Codice scala", filter.scala});
    if (!filter.livello.trimmed().isEmpty())
        conditions.push_back({u"Livello", filter.livello});
    std::vector<UnitRow> units;
    store::Query record = lavoro.records(store::TabellaUnita, conditions, CampoUnita);
    for (; !record.atEnd(); record.next())
        units.push_back(unitRow(record));
    return units;
}

UnitRow readUnit(store::Database& lavoro, int number)
{
    const store::Query record = lavoro.records(store::TabellaUnita, {{CampoUnita, number}});
    return record.atEnd() ? UnitRow() : unitRow(record);
}

std::vector<RoomRow> readRooms(store::Database& lavoro, int unit)
{
    store::Query record = lavoro.records(store::TabellaVani, {{CampoUnita, unit}}, u"Posizione");
    std::vector<RoomRow> rooms;
    for (; !record.atEnd(); record.next()) {
        RoomRow row{.position = static_cast<int>(record.integer(RoomPosition)), .texts = {}};
        int field = RoomAmbiente;
        for (QString& text : row.texts)
            text = record.text(field++);
        rooms.push_back(std::move(row));
    }
    return rooms;
}

std::vector<TreeScala> readTree(store::Database& lavoro, const QStringList& scale)
{
    const RoomsByUnit rooms = readAllRooms(lavoro);
    std::vector<TreeScala> tree{{.code = {}, .units = readTreeUnits(lavoro, {}, rooms)}};
    for (const QString& code : scale)
        tree.push_back({.code = code, .units = readTreeUnits(lavoro, code, rooms)});
    return tree;
}

RegisterLists LeggiDatiGenerali(store::Database& lavoro)
{
    const coefficients::JobTexts texts =
        coefficients::loadTexts(lavoro, store::TabellaDatiGenerali);
    RegisterLists lists{.scale = readCodes(texts.value(u"Tabella Codici"_s)),
                        .livelli = store::levels(lavoro),
                        .tabelle = {},
                        .coefficienti = {}};
    for (int table = 1; QString & name : lists.tabelle)
        name = texts.value(u"Tabella %1"_s.arg(table++)).trimmed();
    const coefficients::JobTexts groups = coefficients::loadTexts(lavoro, store::TabellaVariabili);
    for (int group = 1; std::vector<CoefficientEntry> & entries : lists.coefficienti)
        entries = readEntries(groups.value(coefficients::groupField(group++)));
    return lists;
}

} // namespace zelto::registro

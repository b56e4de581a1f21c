// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_lists.h"

#include "coefficients/coefficient_groups.h"
#include "coefficients/general_data.h"
#include "register/register_change.h"
#include "store/database.h"
#include "store/schema.h"
#include "text/table_text.h"

#include <QHash>

namespace zelto::registro {

using store::QueryRecordset;
using store::Value;

namespace {

/// Lines of the table of codes that are looked at.
constexpr int MaxCodes = 100;

UnitRow unitRow(const store::Recordset& record)
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

QStringList readLevels(store::Database& lavoro)
{
    QStringList levels;
    QueryRecordset record = lavoro.OpenRecordset(
        u"SELECT Livello FROM [%1] WHERE Livello IS NOT NULL GROUP BY Livello"_s.arg(
            store::TabellaUnita));
    for (; !record.EndOfFile(); record.MoveNext())
        levels << record.text(0);
    return levels;
}

using RoomsByUnit = QHash<int, std::vector<TreeRoom>>;

RoomsByUnit readAllRooms(store::Database& lavoro)
{
    RoomsByUnit rooms;
    QueryRecordset record =
        lavoro.OpenRecordset(u"SELECT [Riferimento unità], Posizione, Ambiente FROM [%1] ORDER BY "
                             u"[Riferimento unità], Posizione"_s.arg(store::TabellaVani));
    for (; !record.EndOfFile(); record.MoveNext()) {
        const auto position = static_cast<int>(record.integer(1));
        rooms[static_cast<int>(record.integer(0))].push_back(
            {.position = position,
             .text = record.isNull(2) ? u"V:%1"_s.arg(position) : record.text(2)});
    }
    return rooms;
}

std::vector<TreeUnit> readTreeUnits(store::Database& lavoro, const QString& code,
                                    const RoomsByUnit& rooms)
{
    const bool none = code.trimmed().isEmpty();
    const QString sql =
        u"SELECT [Riferimento unità], Riferimento FROM [%1] WHERE %2 ORDER BY Chiave"_s.arg(
            store::TabellaUnita, none ? u"[Codice scala] IS NULL"_s : u"[Codice scala] = :1"_s);
    const std::array parameter{Value(code)};
    std::vector<TreeUnit> units;
    QueryRecordset record =
        lavoro.OpenRecordset(sql, none ? std::span<const Value>() : std::span(parameter));
    for (; !record.EndOfFile(); record.MoveNext()) {
        const auto number = static_cast<int>(record.integer(0));
        units.push_back({.number = number,
                         .text = record.isNull(1) ? u"UI:%1"_s.arg(number) : record.text(1),
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
    QStringList conditions;
    std::vector<Value> parameters;
    const auto require = [&](const QString& field, const QString& text) {
        if (text.trimmed().isEmpty())
            return;
        parameters.emplace_back(text);
        conditions << u"[%1] = :%2"_s.arg(field).arg(parameters.size());
    };
    require(u"Codice scala"_s, filter.scala);
    require(u"Livello"_s, filter.livello);
    QString sql = u"SELECT * FROM [%1]"_s.arg(store::TabellaUnita);
    if (!conditions.isEmpty())
        sql += u" WHERE "_s + conditions.join(u" AND "_s);
    QueryRecordset record =
        lavoro.OpenRecordset(sql + u" ORDER BY [Riferimento unità]"_s, parameters);
    std::vector<UnitRow> units;
    for (; !record.EndOfFile(); record.MoveNext())
        units.push_back(unitRow(record));
    return units;
}

UnitRow readUnit(store::Database& lavoro, int number)
{
    const QueryRecordset record = lavoro.OpenRecordset(
        u"SELECT * FROM [%1] WHERE [Riferimento unità] = :1"_s.arg(store::TabellaUnita),
        std::array{Value(number)});
    return record.EndOfFile() ? UnitRow() : unitRow(record);
}

int nearestUnit(store::Database& lavoro, int number)
{
    const QueryRecordset record = lavoro.OpenRecordset(
        u"SELECT [Riferimento unità] FROM [%1] ORDER BY abs([Riferimento unità] - "
        u":1) LIMIT 1"_s.arg(store::TabellaUnita),
        std::array{Value(number)});
    return record.EndOfFile() ? 0 : static_cast<int>(record.integer(0));
}

int countUnits(store::Database& lavoro)
{
    const QueryRecordset record =
        lavoro.OpenRecordset(u"SELECT COUNT(*) FROM [%1]"_s.arg(store::TabellaUnita));
    return static_cast<int>(record.integer(0));
}

std::vector<RoomRow> readRooms(store::Database& lavoro, int unit)
{
    QueryRecordset record = lavoro.OpenRecordset(
        u"SELECT * FROM [%1] WHERE [Riferimento unità] = :1 ORDER BY Posizione"_s.arg(
            store::TabellaVani),
        std::array{Value(unit)});
    std::vector<RoomRow> rooms;
    for (; !record.EndOfFile(); record.MoveNext()) {
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
    const coefficients::GeneralTexts texts = coefficients::loadGeneralData(lavoro);
    RegisterLists lists{.scale = readCodes(texts.at(coefficients::TextTabellaCodici)),
                        .livelli = readLevels(lavoro),
                        .tabelle = {},
                        .coefficienti = {}};
    std::size_t table = coefficients::TextFirstTable;
    for (QString& name : lists.tabelle)
        name = texts.at(table++).trimmed();
    const coefficients::GroupTexts groups = coefficients::loadGroups(lavoro);
    std::size_t group = 1;
    for (std::vector<CoefficientEntry>& entries : lists.coefficienti)
        entries = readEntries(groups.at(group++));
    return lists;
}

} // namespace zelto::registro

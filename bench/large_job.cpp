// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/large_job.h"

#include "store/database.h"
#include "store/schema.h"

#include <algorithm>
#include <vector>

namespace zelto::bench {

namespace {

using store::Database;
using store::TableRecordset;
using store::Value;

constexpr int Staircases = 6;
constexpr int SpecialTables = 10;

using Record = std::vector<Value>;

std::vector<Record> recordsOf(Database& job, QStringView table)
{
    std::vector<Record> records;
    for (TableRecordset source = job.openTable(table); !source.EndOfFile(); source.MoveNext()) {
        Record& record = records.emplace_back();
        for (int field = 0; field < source.fieldCount(); ++field)
            record.push_back(source.field(field));
    }
    return records;
}

void setFields(TableRecordset& target, const Record& record, int from)
{
    for (int field = from; field < static_cast<int>(record.size()); ++field)
        target.setField(field, record[static_cast<std::size_t>(field)]);
}

void writeGeneralData(Database& job, Record record)
{
    for (int t = 1; t <= SpecialTables; ++t)
        record[static_cast<std::size_t>(t) + 5] = u"Tabella di servizio %1"_s.arg(t);
    QString codes;
    for (int s = 0; s < Staircases; ++s)
        codes += u"%1\tScala %1 - corpo %2\t50\r\n"_s.arg(QChar(u'A' + s)).arg(s + 1);
    record[16] = codes;
    TableRecordset target = job.openTable(store::TabellaDatiGenerali);
    target.Edit();
    setFields(target, record, 1);
    target.Update();
}

void writeCoefficients(Database& job, const Record& record)
{
    TableRecordset target = job.openTable(store::TabellaVariabili);
    target.Edit();
    setFields(target, record, 0);
    target.Update();
}

/// Every unit belongs to one staircase and to two tables of three.
void addUnit(TableRecordset& units, Record record, int unit)
{
    QString flags(SpecialTables, u' ');
    for (int t = 0; t < SpecialTables; ++t)
        if ((unit + t) % 3 != 0)
            flags[t] = u'X';
    record[0] = store::unitKey(unit);
    record[1] = unit;
    record[4] = QString(QChar(u'A' + (unit - 1) * Staircases / Units));
    record[6] = flags;
    units.AddNew();
    setFields(units, record, 0);
    units.Update();
}

void addRoom(TableRecordset& rooms, Record record, int unit, int position)
{
    record[0] = store::roomKey(unit, position);
    record[1] = unit;
    record[2] = position;
    rooms.AddNew();
    setFields(rooms, record, 0);
    rooms.Update();
}

void writeUnits(Database& job, const std::vector<Record>& units, const std::vector<Record>& rooms)
{
    for (const QStringView table : {store::TabellaVani, store::TabellaUnita})
        job.Execute(u"DELETE FROM [%1]"_s.arg(table));
    TableRecordset unitTable = job.openTable(store::TabellaUnita);
    TableRecordset roomTable = job.openTable(store::TabellaVani);
    std::size_t next = 0;
    for (int unit = 1; unit <= Units; ++unit) {
        addUnit(unitTable, units[static_cast<std::size_t>(unit) % units.size()], unit);
        for (int position = 1; position <= RoomsOfUnit; ++position)
            addRoom(roomTable, rooms[next++ % rooms.size()], unit, position);
    }
}

} // namespace

void writeLargeJob(const QString& exampleJob, const QString& path)
{
    Database example = Database::openCopyInMemory(exampleJob);
    Database job = Database::create(path);
    store::CreaTabelleBase(job);
    Database::Transaction transaction(job);
    writeGeneralData(job, recordsOf(example, store::TabellaDatiGenerali).front());
    writeCoefficients(job, recordsOf(example, store::TabellaVariabili).front());
    writeUnits(job, recordsOf(example, store::TabellaUnita),
               recordsOf(example, store::TabellaVani));
    transaction.commit();
}

} // namespace zelto::bench

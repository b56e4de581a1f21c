// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/large_job.h"

#include "store/database.h"
#include "store/schema.h"

#include <algorithm>
#include <vector>

namespace zelto::bench {

namespace {

using store::Database;
using store::Record;
using store::RecordWriter;

constexpr int Staircases = 6;

void writeGeneralData(Database& job, Record record)
{
    for (int t = 1; t <= store::SpecialTables; ++t)
        record[static_cast<std::size_t>(t) + 5] = u"Tabella di servizio %1"_s.arg(t);
    QString codes;
    for (int s = 0; s < Staircases; ++s)
        codes += u"%1\tScala %1 - corpo %2\t50\r\n"_s.arg(QChar(u'A' + s)).arg(s + 1);
    record[16] = codes;
    job.writer(store::jobTable(store::TabellaDatiGenerali))
        .change(job.records(store::TabellaDatiGenerali).record(), record);
}

void writeCoefficients(Database& job, const Record& record)
{
    job.writer(store::jobTable(store::TabellaVariabili))
        .change(job.records(store::TabellaVariabili).record(), record);
}

/// Every unit belongs to one staircase and to two tables of three.
void addUnit(RecordWriter& units, Record record, int unit)
{
    QString flags(store::SpecialTables, u' ');
    for (int t = 0; t < store::SpecialTables; ++t)
        if ((unit + t) % 3 != 0)
            flags[t] = u'X';
    record[0] = store::unitKey(unit);
    record[1] = unit;
    record[4] = QString(QChar(u'A' + (unit - 1) * Staircases / Units));
    record[6] = flags;
    units.add(record);
}

void addRoom(RecordWriter& rooms, Record record, int unit, int position)
{
    record[0] = store::roomKey(unit, position);
    record[1] = unit;
    record[2] = position;
    rooms.add(record);
}

void writeUnits(Database& job, const std::vector<Record>& units, const std::vector<Record>& rooms)
{
    for (const QStringView table : {store::TabellaVani, store::TabellaUnita})
        job.Execute(u"DELETE FROM [%1]"_s.arg(table));
    RecordWriter unitTable = job.writer(store::jobTable(store::TabellaUnita));
    RecordWriter roomTable = job.writer(store::jobTable(store::TabellaVani));
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
    writeGeneralData(job, example.records(store::TabellaDatiGenerali).record());
    writeCoefficients(job, example.records(store::TabellaVariabili).record());
    writeUnits(job, example.records(store::TabellaUnita).records(),
               example.records(store::TabellaVani).records());
    transaction.commit();
}

} // namespace zelto::bench

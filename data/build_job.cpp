// SPDX-License-Identifier: GPL-3.0-or-later
// zelto_build_job FOLDER FILE.ZLT: makes a job file from its readable text.
#include "data/job_text.h"
#include "data/output_file.h"
#include "store/database.h"
#include "store/schema.h"

#include <array>

namespace zelto::data {
namespace {

using store::Database;
using store::TableRecordset;
using store::Value;

void setTexts(TableRecordset& records, int firstField, std::span<const QString> texts)
{
    for (const QString& text : texts)
        records.setField(firstField++, Value::nullIfEmpty(text));
}

void writeGeneralData(Database& job, const JobText& text)
{
    TableRecordset records = job.openTable(store::TabellaDatiGenerali);
    records.Edit();
    setTexts(records, 1, text.description);
    setTexts(records, 3, std::array{text.notes, text.date, text.report});
    setTexts(records, 6, text.tables);
    setTexts(records, 16, std::array{text.staircases});
    records.Update();
}

void writeCoefficients(Database& job, const JobText& text)
{
    TableRecordset records = job.openTable(store::TabellaVariabili);
    records.Edit();
    setTexts(records, 0, text.groups);
    records.Update();
}

void writeRoom(TableRecordset& rooms, const Row& row, int unit, int position)
{
    rooms.AddNew();
    rooms.setField(0, Value{store::roomKey(unit, position)});
    rooms.setField(1, Value{unit});
    rooms.setField(2, Value{position});
    setTexts(rooms, 3, row.cells);
    rooms.Update();
}

void writeUnit(TableRecordset& units, const UnitText& text, int unit)
{
    units.AddNew();
    units.setField(0, Value{store::unitKey(unit)});
    units.setField(1, Value{unit});
    setTexts(units, 2, std::span(text.row.cells).first(4));
    units.setField(6, Value{text.flags});
    units.Update();
}

/// Does the writing of a row; a refusal of the database becomes a fault of that row.
template <typename Write>
void writing(const QString& path, const Row& row, Write write)
{
    try {
        write();
    } catch (const store::DatabaseError& error) {
        throw DataFault(path, row.line, error.description());
    }
}

void writeUnits(Database& job, const JobText& text)
{
    job.Execute(QStringLiteral("DELETE FROM [%1]").arg(store::TabellaVani));
    job.Execute(QStringLiteral("DELETE FROM [%1]").arg(store::TabellaUnita));
    TableRecordset units = job.openTable(store::TabellaUnita);
    TableRecordset rooms = job.openTable(store::TabellaVani);
    int number = 0;
    for (const UnitText& unit : text.units) {
        ++number;
        writing(text.unitsPath, unit.row, [&] { writeUnit(units, unit, number); });
        int position = 0;
        for (const Row& room : unit.rooms) {
            ++position;
            writing(text.unitsPath, room, [&] { writeRoom(rooms, room, number, position); });
        }
    }
}

void writeJob(const QString& path, const JobText& text)
{
    Database job = Database::create(path);
    store::CreaTabelleBase(job);
    Database::Transaction transaction(job);
    writeGeneralData(job, text);
    writeCoefficients(job, text);
    writeUnits(job, text);
    transaction.commit();
}

void buildJob(const QString& folder, const QString& output)
{
    const JobText text = readJobText(folder);
    buildFile(output, [&](const QString& path) { writeJob(path, text); });
}

} // namespace
} // namespace zelto::data

int main(int argc, char* argv[])
{
    return zelto::data::runBuilder(argc, argv, "zelto_build_job CARTELLA LAVORO.ZLT",
                                   zelto::data::buildJob);
}

// SPDX-License-Identifier: GPL-3.0-or-later
// zelto_build_job FOLDER FILE.ZLT: makes a job file from its readable text.
#include "data/job_text.h"
#include "data/output_file.h"
#include "store/database.h"
#include "store/schema.h"

#include <algorithm>
#include <array>

namespace zelto::data {
namespace {

using store::Database;
using store::Record;
using store::RecordWriter;
using store::Value;

void putTexts(Record& record, std::size_t firstField, std::span<const QString> texts)
{
    record.resize(std::max(record.size(), firstField + texts.size()));
    for (const QString& text : texts)
        record[firstField++] = Value::nullIfEmpty(text);
}

void writeGeneralData(Database& job, const JobText& text)
{
    const Record blank = job.records(store::TabellaDatiGenerali).record();
    Record record = blank;
    putTexts(record, 1, text.description);
    putTexts(record, 3, std::array{text.notes, text.date, text.report});
    putTexts(record, 6, text.tables);
    putTexts(record, 16, std::array{text.staircases});
    job.writer(store::jobTable(store::TabellaDatiGenerali)).change(blank, record);
}

void writeCoefficients(Database& job, const JobText& text)
{
    const Record blank = job.records(store::TabellaVariabili).record();
    Record record;
    putTexts(record, 0, text.groups);
    job.writer(store::jobTable(store::TabellaVariabili)).change(blank, record);
}

Record roomRecord(const Row& row, int unit, int position)
{
    Record record{store::roomKey(unit, position), unit, position};
    putTexts(record, 3, row.cells);
    return record;
}

Record unitRecord(const UnitText& text, int unit)
{
    Record record{store::unitKey(unit), unit};
    putTexts(record, 2, std::span(text.row.cells).first(4));
    record.emplace_back(text.flags);
    return record;
}

/// Adds the record of a row; a refusal of the database becomes a fault of that row.
void addRecord(RecordWriter& writer, const Record& record, const QString& path, const Row& row)
{
    try {
        writer.add(record);
    } catch (const store::DatabaseError& error) {
        throw DataFault(path, row.line, error.description());
    }
}

void writeUnits(Database& job, const JobText& text)
{
    for (const QStringView table : {store::TabellaVani, store::TabellaUnita})
        job.Execute(u"DELETE FROM "_s + store::quoted(table));
    RecordWriter units = job.writer(store::jobTable(store::TabellaUnita));
    RecordWriter rooms = job.writer(store::jobTable(store::TabellaVani));
    int number = 0;
    for (const UnitText& unit : text.units) {
        addRecord(units, unitRecord(unit, ++number), text.unitsPath, unit.row);
        int position = 0;
        for (const Row& room : unit.rooms)
            addRecord(rooms, roomRecord(room, number, ++position), text.unitsPath, room);
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

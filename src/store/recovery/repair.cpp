// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/recovery/repair.h"

#include "store/big_endian.h"
#include "store/database.h"
#include "store/engine_file.h"
#include "store/file_check.h"
#include "store/file_operations.h"
#include "store/files/file_names.h"
#include "store/files/new_file.h"
#include "store/format_check.h"
#include "store/recovery/job_salvage.h"
#include "store/recovery/tree_page.h"
#include "store/schema.h"

#include <QFileInfo>

#include <algorithm>

namespace zelto::store {

namespace {

/// Damage within a text goes unnoticed by the engine. What other tables hold is not ours to judge.
void readEveryField(Database& job)
{
    const QStringList present = job.tableNames();
    for (const TableDef& table : jobTables()) {
        if (!present.contains(table.name, Qt::CaseInsensitive))
            continue;
        for (Query records = job.records(table.name); !records.atEnd(); records.next())
            (void)records.record();
    }
}

/// A job must be readable as a job; of another database nothing is known.
void checkJob(const QString& path)
{
    Database database = Database::open(path, OpenMode::ReadOnly);
    if (!isOfThisFormat(database))
        return;
    ControllaTabelle(database);
    readEveryField(database);
}

void rebuild(const QString& path)
{
    checkJob(path);
    NewFile rebuilt(path);
    const Database database = openExclusively(path);
    checkWhole(database);
    writeCompacted(database, rebuilt);
    rebuilt.replace();
}

/// Whether the error is about what stands in the file. Where changes wait in a log of their own,
/// the file alone is not the job.
bool isDamage(const DatabaseError& error, const QString& path)
{
    switch (error.number()) {
    case ErrorNumber::BadValue:
    case ErrorNumber::Damaged:
    case ErrorNumber::EmptyNotAllowed:
    case ErrorNumber::Internal:
    case ErrorNumber::NoCurrentRecord:
    case ErrorNumber::NotADatabase:
    case ErrorNumber::TableNotFound:
    case ErrorNumber::TextTooLong:
        return QFileInfo(path + u"-wal"_s).size() == 0;
    default:
        return false;
    }
}

/// A name that no file bears yet.
QString nameForDamaged(const QString& path)
{
    const QString stem = withUpperCaseName(withoutExtension(path));
    QString name = stem + u".DAN"_s;
    for (int n = 1; !findFile(name).isEmpty(); ++n)
        name = u"%1-%2.DAN"_s.arg(stem, QString::number(n));
    return name;
}

void requireRows(const SalvagedJob& job, const QString& path)
{
    if (!job.records.contains(TabellaUnita) && !job.records.contains(TabellaVani))
        throw DatabaseError(
            ErrorNumber::Damaged,
            u"Il file «%1» non contiene unità o vani leggibili e non può essere riparato."_s.arg(
                path));
}

/// Writes the tables and reads them as a job would be read.
RepairResult writeRepaired(const SalvagedJob& job, Database& database)
{
    RepairResult result;
    result.leftOut = writeSalvaged(database, job);
    ControllaTabelle(database);
    result.units = database.count(TabellaUnita);
    result.rooms = database.count(TabellaVani);
    return result;
}

void takePlace(NewFile& repaired, const QString& path, RepairResult& result)
{
    result.damagedOriginal = nameForDamaged(path);
    repaired.replaceKeeping(result.damagedOriginal);
}

/// Fields of ours that the records lack are Null.
void takeRecords(Query records, const TableDef& table, SalvagedJob& job)
{
    QStringList names;
    for (int place = 0; place < records.fieldCount(); ++place)
        names << records.fieldName(place).toCaseFolded();
    std::vector<qsizetype> places; // of our fields
    for (const FieldDef& field : table.fields)
        places.push_back(names.indexOf(field.name.toCaseFolded()));
    for (; !records.atEnd(); records.next()) {
        FoundRecord found;
        for (const qsizetype place : places)
            found.values.push_back(place < 0 ? Value() : records.field(static_cast<int>(place)));
        if (auto record = recordOfTable(table.name, found))
            job.records[table.name].push_back(std::move(*record));
        else
            ++job.broken;
    }
}

/// Takes the tables of ours out of the database.
SalvagedJob takeTables(Database& database)
{
    SalvagedJob job;
    for (const QString& name : database.tableNames()) {
        const auto table = std::ranges::find_if(jobTables(), [&](const TableDef& ours) {
            return ours.name.compare(name, Qt::CaseInsensitive) == 0;
        });
        if (table == jobTables().end())
            continue;
        takeRecords(database.records(name), *table, job);
        database.Execute(u"DROP TABLE "_s + quoted(name));
    }
    return job;
}

/// Of a file that is sound but for what it says of its tables: they are written as ours, and others
/// stay.
RepairResult replaceForeign(const QString& path)
{
    Database database = Database::openForRebuilding(path);
    const SalvagedJob job = takeTables(database);
    requireRows(job, path);
    RepairResult result = writeRepaired(job, database);
    NewFile repaired(path);
    writeCompacted(database, repaired);
    takePlace(repaired, path, result);
    return result;
}

/// A file that was cut tells in its header how long it was, unless an old program wrote it last.
void countPages(const QByteArray& bytes, RepairResult& result)
{
    constexpr std::size_t PageSizeAt = 16;
    constexpr std::size_t CounterAt = 24;
    constexpr std::size_t PagesAt = 28;
    constexpr std::size_t WrittenAtCounterAt = 92;
    const auto number = [&](std::size_t at, std::size_t length) {
        return static_cast<qint64>(numberAt(viewOf(bytes), at, length).value_or(0));
    };
    const qint64 pageSize = number(PageSizeAt, 2);
    if (bytes.size() < HeaderSize || number(CounterAt, 4) != number(WrittenAtCounterAt, 4) ||
        pageSize < 512)
        return;
    result.pages = number(PagesAt, 4);
    result.missingPages = std::max<qint64>(result.pages - bytes.size() / pageSize, 0);
}

RepairResult replaceDamaged(const QString& path)
{
    const QByteArray bytes = EngineFile(path).readAll();
    const SalvagedJob job = salvage(bytes);
    requireRows(job, path);
    NewFile repaired(path);
    RepairResult result;
    {
        Database database = Database::create(repaired.path());
        result = writeRepaired(job, database);
    }
    result.damaged = true;
    countPages(bytes, result);
    checkWhole(Database::open(repaired.path(), OpenMode::ReadOnly));
    repaired.takePermissions(path);
    takePlace(repaired, path, result);
    return result;
}

/// Runs the repair; false when the file is too damaged for it.
template <typename Repair>
bool succeeds(const QString& path, Repair repair)
{
    try {
        repair();
        return true;
    } catch (const DatabaseError& error) {
        if (!isDamage(error, path))
            throw;
        return false;
    }
}

} // namespace

RepairResult repair(const QString& path)
{
    const QString file = realPath(path);
    RepairResult result;
    if (!succeeds(file, [&] { rebuild(file); }) &&
        !succeeds(file, [&] { result = replaceForeign(file); }))
        result = replaceDamaged(file);
    return result;
}

} // namespace zelto::store

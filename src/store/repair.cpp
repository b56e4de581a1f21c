// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/repair.h"

#include "store/database.h"
#include "store/exclusive_access.h"
#include "store/file_names.h"
#include "store/format_check.h"
#include "store/job_salvage.h"
#include "store/new_file.h"
#include "store/salvage_writer.h"
#include "store/schema.h"
#include "store/schema_check.h"
#include "text/system_reason.h"

#include <QFile>
#include <QFileInfo>

namespace zelto::store {

using namespace Qt::StringLiterals;

namespace {

/// Far above any job, below what would exhaust the machine.
constexpr qint64 LargestFile = 256 << 20;

/// Damage within a text goes unnoticed by the engine.
void readEveryField(Database& job)
{
    for (const QString& table : job.tableNames())
        for (TableRecordset records = job.openTable(table); !records.EndOfFile();
             records.MoveNext())
            for (int field = 0; field < records.fieldCount(); ++field)
                (void)records.field(field);
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
    const ConnectionPtr database = openExclusively(path);
    checkWhole(*database);
    writeCompacted(*database, rebuilt);
    rebuilt.replace();
}

/// Whether it is about what stands in the file. Where changes wait in a log of
/// their own, the file alone is not the job.
bool isDamage(const DatabaseError& error, const QString& path)
{
    switch (error.number()) {
    case ErrorNumber::BadValue:
    case ErrorNumber::Damaged:
    case ErrorNumber::EmptyNotAllowed:
    case ErrorNumber::IndexNotFound:
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

QByteArray readAll(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        throw DatabaseError(ErrorNumber::CannotOpen, u"Impossibile aprire il file «%1» (%2)."_s.arg(
                                                         path, text::systemReason(file)));
    if (file.size() > LargestFile)
        throw DatabaseError(ErrorNumber::Damaged,
                            u"Il file «%1» è troppo grande per essere riparato."_s.arg(path));
    return file.readAll();
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

/// Writes what was salvaged and reads it as a job would be read.
RepairResult writeRepaired(const SalvagedJob& job, const QString& path)
{
    Database database = Database::create(path);
    RepairResult result;
    result.leftOut = writeSalvaged(database, job);
    ControllaTabelle(database);
    result.units = database.openTable(TabellaUnita).RecordCount();
    result.rooms = database.openTable(TabellaVani).RecordCount();
    return result;
}

RepairResult replaceDamaged(const QString& path)
{
    const SalvagedJob job = salvage(readAll(path));
    requireRows(job, path);
    NewFile repaired(path);
    RepairResult result = writeRepaired(job, repaired.path());
    checkWhole(*openFile(repaired.path(), OpenMode::ReadOnly));
    repaired.takePermissions(path);
    result.damagedOriginal = nameForDamaged(path);
    repaired.replaceKeeping(result.damagedOriginal);
    return result;
}

} // namespace

RepairResult repair(const QString& path)
{
    const QString file = realPath(path);
    try {
        rebuild(file);
        return {};
    } catch (const DatabaseError& error) {
        if (!isDamage(error, file))
            throw;
    }
    return replaceDamaged(file);
}

} // namespace zelto::store

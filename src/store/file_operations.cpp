// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/file_operations.h"

#include "store/database.h"
#include "store/engine_errors.h"
#include "store/files/file_names.h"
#include "store/files/new_file.h"
#include "store/format_check.h"
#include "store/schema.h"
#include "text/system_reason.h"

#include <QDir>
#include <QFile>

#include <SQLiteCpp/Statement.h>
#include <algorithm>
#include <sqlite3.h>

namespace zelto::store {

namespace {

void copyBytes(QFile& from, QFile& to)
{
    constexpr qint64 Piece = 1 << 16;
    while (!from.atEnd()) {
        const QByteArray bytes = from.read(Piece);
        if (from.error() != QFileDevice::NoError)
            throw DatabaseError(ErrorNumber::DiskError,
                                u"Il file «%1» non può essere letto (%2)."_s.arg(
                                    from.fileName(), text::systemReason(from)));
        if (to.write(bytes) != bytes.size())
            return;
    }
}

/// One who is writing the file keeps the lock for a moment only; one who merely has it open finds
/// out at the next change.
void requireNoWriter(const QString& path)
{
    try {
        (void)openExclusively(path);
    } catch (const DatabaseError& error) {
        // Anything else, such as damage, is no reason to keep a file.
        if (error.number() == ErrorNumber::InUse || error.number() == ErrorNumber::FileNotFound)
            throw;
    }
}

QString stemOf(const QString& jobName)
{
    return jobName.chopped(JobExtension.size());
}

/// How much of the name a job's stem accounts for, 0 when the file is not the job's. A stem in the
/// name's own letter case counts for more than the same in another.
qsizetype claim(const QString& stem, const QString& name)
{
    const QString beginning = stem + u'.';
    if (!name.startsWith(beginning, Qt::CaseInsensitive))
        return 0;
    return 2 * beginning.size() + (name.startsWith(beginning) ? 1 : 0);
}

bool belongsToAnother(const QString& name, const QString& stem, const QStringList& names)
{
    return std::ranges::any_of(names, [&](const QString& other) {
        return hasJobExtension(other) && claim(stemOf(other), name) > claim(stem, name);
    });
}

QStringList companions(const QString& folder, const QString& job)
{
    const QStringList all = QDir(folder + u'/').entryList(QDir::Files | QDir::Hidden, QDir::Name);
    const QString stem = nameOf(withoutExtension(job));
    const auto isEngines = [&](const QString& name) {
        return std::ranges::any_of(engineFilesOf({}), [&](const QString& suffix) {
            return name.endsWith(suffix, Qt::CaseInsensitive);
        });
    };
    QStringList names = all;
    names.removeIf([&](const QString& name) {
        return claim(stem, name) == 0 || name == job || isEngines(name) ||
               belongsToAnother(name, stem, all);
    });
    return names;
}

void requireDifferentTargets(const std::vector<FileCopy>& plan)
{
    for (auto one = plan.begin(); one != plan.end(); ++one)
        for (auto other = plan.begin(); other != one; ++other)
            if (one->target.compare(other->target, Qt::CaseInsensitive) == 0)
                throw DatabaseError(
                    ErrorNumber::FileExists,
                    u"I file «%1» e «%2» avrebbero la stessa copia «%3»: rinominarne uno."_s.arg(
                        other->source, one->source, one->target));
}

/// What says how the building is calculated, not which building it is.
bool isOfModel(const QString& field)
{
    static const QStringList OfBuilding{u"Chiave"_s, u"Descrizione"_s, u"Descrizionee"_s, u"Note"_s,
                                        u"Data"_s};
    return !OfBuilding.contains(field);
}

/// Of a table that has one record.
void takeFromModel(Database& job, Database& model, const TableDef& table)
{
    addOnlyRecord(model, table.name);
    const Record wanted = model.records(table.name, {}, table.primaryKey).record();
    const Record present = job.records(table.name).record();
    Record record = present;
    for (std::size_t i = 0; const FieldDef& field : table.fields) {
        if (isOfModel(field.name))
            record[i] = wanted[i];
        ++i;
    }
    job.writer(table).change(present, record);
}

} // namespace

void createJobFile(const QString& path)
{
    NewFile job(path);
    {
        Database database = Database::create(job.path());
        CreaTabelleBase(database);
    }
    job.publish();
}

void createJobFromModel(const QString& path, const QString& model)
{
    Database source = Database::openCopyInMemory(model);
    ControllaVersione(source);
    ControllaTabelle(source);
    NewFile job(path);
    {
        Database database = Database::create(job.path());
        CreaTabelleBase(database);
        for (const QStringView table : {TabellaDatiGenerali, TabellaVariabili})
            takeFromModel(database, source, jobTable(table));
    }
    job.publish();
}

void copyDatabase(const QString& source, const QString& target)
{
    NewFile copy(target);
    writeCompacted(Database::open(source, OpenMode::ReadOnly), copy);
    copy.publish();
}

void copyFile(const QString& source, const QString& target, Existing existing)
{
    NewFile copy(target);
    QFile from(source);
    if (!from.open(QIODevice::ReadOnly))
        throw DatabaseError(ErrorNumber::CannotOpen, u"Impossibile aprire il file «%1» (%2)."_s.arg(
                                                         source, text::systemReason(from)));
    QFile to(copy.path());
    if (to.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        copyBytes(from, to);
    to.close();
    if (to.error() != QFileDevice::NoError)
        throw DatabaseError(
            to.error() == QFileDevice::ResourceError ? ErrorNumber::DiskFull
                                                     : ErrorNumber::DiskError,
            u"Il file «%1» non può essere scritto (%2)."_s.arg(target, text::systemReason(to)));
    copy.takePermissions(source);
    if (existing == Existing::Replace)
        copy.replace();
    else
        copy.publish();
}

std::vector<FileCopy> duplicatePlan(const QString& job, const QString& target)
{
    const QString folder = folderOf(job);
    const QString name = nameOf(job);
    const qsizetype stemLength = nameOf(withoutExtension(job)).size();
    const QString targetStem = target.chopped(JobExtension.size());
    std::vector<FileCopy> plan;
    for (const QString& companion : companions(folder, name))
        plan.push_back({.source = folder + u'/' + companion,
                        .target = targetStem + companion.sliced(stemLength)});
    plan.push_back({.source = job, .target = target});
    requireDifferentTargets(plan);
    return plan;
}

bool deleteFile(const QString& path, const Trash& trash)
{
    requireNoWriter(path);
    const bool trashed = trash(path);
    if (!trashed)
        removeFile(path);
    for (const QString& file : engineFilesOf(path))
        if (!trashed || !QFile::exists(file) || !trash(file))
            removeFile(file);
    return trashed;
}

Database openExclusively(const QString& path)
{
    Database database = Database::open(path);
    SQLite::Database& engine = database.connection().handle;
    onFile(path, [&] {
        if (sqlite3_db_readonly(engine.getHandle(), "main") != 0)
            throw SQLite::Exception("", SQLITE_READONLY);
        // In this mode the lock of the first change stays.
        engine.exec("PRAGMA main.locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT;");
    });
    return database;
}

void writeCompacted(const Database& source, NewFile& target)
{
    try {
        SQLite::Statement vacuum(source.connection().handle, "VACUUM INTO ?");
        vacuum.bind(1, QFile::encodeName(target.path()).toStdString());
        vacuum.exec();
    } catch (const SQLite::Exception& failure) {
        const int code = failure.getErrorCode() & 0xff;
        const bool ofTarget = code == SQLITE_FULL || code == SQLITE_CANTOPEN;
        throw translated(failure, ofTarget ? target.target() : source.path());
    }
    checkWhole(Database::open(target.path(), OpenMode::ReadOnly));
    target.takePermissions(source.path());
}

void checkWhole(const Database& database)
{
    const std::string result = onFile(database.path(), [&] {
        return database.connection().handle.execAndGet("PRAGMA integrity_check(1)").getString();
    });
    if (result != "ok")
        throw damagedFile(database.path(), QString::fromStdString(result));
}

void compact(const QString& path, const QString& backup)
{
    if (isSameFile(path, backup))
        throw DatabaseError(ErrorNumber::FileExists,
                            u"Il file «%1» è già la copia di sicurezza."_s.arg(path));
    const QString file = realPath(path);
    NewFile compacted(file);
    const Database database = openExclusively(file);
    writeCompacted(database, compacted);
    compacted.replaceKeeping(folderOf(file) + u'/' + nameOf(backup));
}

} // namespace zelto::store

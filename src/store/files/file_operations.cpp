// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/file_operations.h"

#include "store/database.h"
#include "store/engine_errors.h"
#include "store/files/exclusive_access.h"
#include "store/files/file_names.h"
#include "store/files/new_file.h"
#include "store/schema.h"
#include "text/system_reason.h"

#include <QFile>

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

void copyDatabase(const QString& source, const QString& target)
{
    NewFile copy(target);
    writeCompacted(*openFile(source, OpenMode::ReadOnly), copy);
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

void compact(const QString& path, const QString& backup)
{
    if (isSameFile(path, backup))
        throw DatabaseError(ErrorNumber::FileExists,
                            u"Il file «%1» è già la copia di sicurezza."_s.arg(path));
    const QString file = realPath(path);
    NewFile compacted(file);
    const ConnectionPtr database = openExclusively(file);
    writeCompacted(*database, compacted);
    compacted.replaceKeeping(folderOf(file) + u'/' + nameOf(backup));
}

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
// Opening a file from a stranger: what the engine could be talked into is switched off and the
// file's structure is checked before the first record is read.
#include "store/database.h"
#include "store/engine_errors.h"
#include "store/engine_file.h"
#include "store/file_check.h"
#include "store/files/file_names.h"
#include "store/object_check.h"
#include "text/system_reason.h"

#include <QFile>
#include <QFileInfo>

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

namespace zelto::store {

namespace {

/// Marks our files among all files of the engine: the ASCII characters "ZLT9".
constexpr int ApplicationId = 0x5A4C5439;

/// Without the CHECK conditions: ControllaTabelle names the field that breaks one.
void checkStructure(Connection& connection)
{
    connection.handle.exec("PRAGMA ignore_check_constraints=ON");
    const std::string result = connection.handle.execAndGet("PRAGMA quick_check(1)").getString();
    connection.handle.exec("PRAGMA ignore_check_constraints=OFF");
    if (result != "ok")
        throw damagedFile(connection.path, QString::fromStdString(result));
}

/// Without links, and absolute: no name can then be taken for a URI or for ":memory:".
QString absolute(const QString& path)
{
    return QFileInfo(realPath(path)).absoluteFilePath();
}

void checkContents(Connection& connection)
{
    try {
        checkObjects(connection.handle, connection.path);
        checkStructure(connection);
    } catch (const SQLite::Exception& failure) {
        // Our own statements are sound: what does not run is a table definition of the file.
        if (failure.getErrorCode() == SQLITE_ERROR)
            throw damagedFile(connection.path, QString::fromUtf8(failure.what()));
        throw;
    }
}

/// Opens the file at the path, which is looked at already. Throws SQLite::Exception as well.
ConnectionPtr openEngine(const QString& path, const QString& shown, int flags,
                         int patience = BusyTimeoutMilliseconds)
{
    auto connection = std::make_shared<Connection>(shown, path, flags, patience);
    // The first read takes back what a journal says.
    connection->handle.exec("PRAGMA main.schema_version");
    checkHeader(connection->header(), shown);
    requireFileSize(QFileInfo(path).size(), shown);
    connection->handle.exec("PRAGMA journal_mode=DELETE");
    return connection;
}

ConnectionPtr openChecked(const QString& path, const QString& shown, int flags)
{
    ConnectionPtr connection = openEngine(path, shown, flags);
    checkContents(*connection);
    connection->remember();
    return connection;
}

/// After a power failure the file waits for its last change to be taken back, which only a writer
/// can do. A reader lets it be done on a copy.
ConnectionPtr openReadOnly(const QString& file, const QString& shown)
{
    try {
        return openChecked(file, shown, SQLite::OPEN_READONLY);
    } catch (const SQLite::Exception& failure) {
        if (failure.getExtendedErrorCode() != SQLITE_READONLY_ROLLBACK)
            throw;
    }
    auto folder = std::make_unique<PassingFolder>(QDir::tempPath());
    const QString copy = copyForReading(file, shown, *folder);
    (void)openEngine(copy, shown, SQLite::OPEN_READWRITE);
    ConnectionPtr connection = openChecked(copy, shown, SQLite::OPEN_READONLY);
    connection->copy = std::move(folder);
    return connection;
}

/// What a journal would make of the file is looked at on a copy before it happens.
ConnectionPtr openForWriting(const QString& file, const QString& shown)
{
    if (hasJournal(file))
        (void)openReadOnly(file, shown);
    return openChecked(file, shown, SQLite::OPEN_READWRITE);
}

/// Never touches what exists already, not even by a race.
void claimName(const QString& path)
{
    QFile file(path);
    if (file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        return;
    const QFileInfo info(path);
    if (info.exists() || info.isSymLink())
        throw DatabaseError(ErrorNumber::FileExists, u"Il file «%1» esiste già."_s.arg(path));
    throw DatabaseError(ErrorNumber::CannotOpen, u"Impossibile creare il file «%1» (%2)."_s.arg(
                                                     targetPath(path), text::systemReason(file)));
}

} // namespace

Database Database::create(const QString& path)
{
    claimName(path);
    try {
        return onFile(path, [&] {
            auto connection =
                std::make_shared<Connection>(path, absolute(path), SQLite::OPEN_READWRITE);
            connection->handle.exec("PRAGMA journal_mode=DELETE; PRAGMA application_id=" +
                                    std::to_string(ApplicationId));
            connection->remember();
            return Database(connection);
        });
    } catch (...) {
        QFile::remove(path);
        throw;
    }
}

Database Database::open(const QString& path, OpenMode mode)
{
    const QString file = absolute(path);
    checkFile(file, path);
    return onFile(path, [&] {
        return Database(mode == OpenMode::ReadOnly ? openReadOnly(file, path)
                                                   : openForWriting(file, path));
    });
}

Database Database::openForGlance(const QString& path)
{
    constexpr qint64 SmallFile = qint64{256} << 10;
    const QString file = absolute(path);
    checkFile(file, path);
    if (hasJournal(file))
        throw DatabaseError(
            ErrorNumber::InUse,
            u"Una modifica del file «%1» è in corso o è stata interrotta."_s.arg(path));
    return onFile(path, [&] {
        ConnectionPtr connection = openEngine(file, path, SQLite::OPEN_READONLY, 0);
        if (QFileInfo(file).size() <= SmallFile)
            checkContents(*connection);
        else
            checkObjects(connection->handle, path);
        connection->remember();
        return Database(connection);
    });
}

Database Database::openForRebuilding(const QString& path)
{
    auto folder = std::make_unique<PassingFolder>(QDir::tempPath());
    const QString copy = copyForReading(absolute(path), path, *folder);
    return onFile(path, [&] {
        ConnectionPtr connection = openEngine(copy, path, SQLite::OPEN_READWRITE);
        connection->copy = std::move(folder);
        removeForeignObjects(connection->handle);
        checkStructure(*connection);
        return Database(connection);
    });
}

Database Database::openCopyInMemory(const QString& path)
{
    const Database source = open(path, OpenMode::ReadOnly);
    return onFile(path, [&] {
        auto copy = std::make_shared<Connection>(path, u":memory:"_s, SQLite::OPEN_READWRITE);
        SQLite::Backup backup(copy->handle, source.connection().handle);
        if (const int result = backup.executeStep(); result != SQLITE_DONE)
            throw SQLite::Exception(sqlite3_errstr(result), result);
        return Database(copy);
    });
}

} // namespace zelto::store

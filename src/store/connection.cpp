// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/connection.h"

#include "store/engine_errors.h"
#include "store/passing_folder.h"
#include "text/system_reason.h"

#include <QFile>
#include <QFileInfo>

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/Statement.h>
#include <algorithm>
#include <array>
#include <sqlite3.h>
#include <string_view>
#include <utility>

namespace zelto::store {

using namespace Qt::StringLiterals;

namespace {

constexpr std::array<std::pair<int, int>, 9> Switches{{
    {SQLITE_DBCONFIG_DEFENSIVE, 1},
    {SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0},
    {SQLITE_DBCONFIG_ENABLE_VIEW, 0},
    {SQLITE_DBCONFIG_ENABLE_TRIGGER, 0},
    {SQLITE_DBCONFIG_ENABLE_FTS3_TOKENIZER, 0},
    {SQLITE_DBCONFIG_ENABLE_LOAD_EXTENSION, 0},
    {SQLITE_DBCONFIG_ENABLE_FKEY, 0},
    {SQLITE_DBCONFIG_DQS_DDL, 0},
    {SQLITE_DBCONFIG_DQS_DML, 0},
}};

/// Far above what a job needs, far below what would exhaust the machine. One attached database
/// must remain possible: VACUUM INTO attaches its target.
constexpr std::array<std::pair<int, int>, 10> Limits{{
    {SQLITE_LIMIT_LENGTH, 16 << 20},
    {SQLITE_LIMIT_SQL_LENGTH, 100'000},
    {SQLITE_LIMIT_COLUMN, 100},
    {SQLITE_LIMIT_EXPR_DEPTH, 100},
    {SQLITE_LIMIT_COMPOUND_SELECT, 10},
    {SQLITE_LIMIT_FUNCTION_ARG, 16},
    {SQLITE_LIMIT_ATTACHED, 1},
    {SQLITE_LIMIT_LIKE_PATTERN_LENGTH, 1000},
    {SQLITE_LIMIT_VARIABLE_NUMBER, 100},
    {SQLITE_LIMIT_TRIGGER_DEPTH, 1},
}};

/// Takes effect before anything of the file has been read.
void harden(SQLite::Database& handle)
{
    sqlite3* const engine = handle.getHandle();
    for (const auto& [option, value] : Switches)
        if (sqlite3_db_config(engine, option, value, nullptr) != SQLITE_OK)
            throw SQLite::Exception(engine);
    for (const auto& [limit, value] : Limits)
        sqlite3_limit(engine, limit, value);
    handle.exec("PRAGMA cell_size_check=ON; PRAGMA mmap_size=0; PRAGMA synchronous=EXTRA;");
}

DatabaseError notADatabase(QStringView description, const QString& path)
{
    return {ErrorNumber::NotADatabase, description.toString().arg(path)};
}

DatabaseError damaged(const QString& path, const char* detail)
{
    return damagedFile(path, QString::fromUtf8(detail));
}

/// Looks at the file's first bytes through the engine's own descriptor: closing another one would
/// drop the locks that this process holds on the file.
void checkHeader(SQLite::Database& handle, const QString& path)
{
    constexpr std::string_view Signature("SQLite format 3\0", 16);
    constexpr std::size_t WriteVersion = 18;
    constexpr std::size_t ReadVersion = 19;
    constexpr char RollbackJournal = 1;

    std::array<char, 100> header{};
    sqlite3_file* file = nullptr;
    sqlite3_file_control(handle.getHandle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (file == nullptr || file->pMethods == nullptr ||
        file->pMethods->xRead(file, header.data(), static_cast<int>(header.size()), 0) !=
            SQLITE_OK ||
        !std::string_view(header.data(), header.size()).starts_with(Signature))
        throw notADatabase(u"Il file «%1» non è un database riconosciuto.", path);
    if (header[WriteVersion] != RollbackJournal || header[ReadVersion] != RollbackJournal)
        throw notADatabase(u"Il file «%1» usa un registro separato (WAL), che non è ammesso.",
                           path);
}

/// Views, triggers and virtual tables run code of whoever made the file; a job has none.
void checkObjects(SQLite::Database& handle, const QString& path)
{
    SQLite::Statement objects(handle, "SELECT name FROM sqlite_schema WHERE type NOT IN ('table', "
                                      "'index') OR (type = 'table' AND rootpage = 0) LIMIT 1");
    if (!objects.executeStep())
        return;
    throw DatabaseError(ErrorNumber::NotADatabase,
                        u"Il file «%1» contiene un oggetto non ammesso («%2»)."_s.arg(
                            path, QString::fromUtf8(objects.getColumn(0).getText())));
}

void checkStructure(SQLite::Database& handle, const QString& path)
{
    SQLite::Statement check(handle, "PRAGMA quick_check(1)");
    const std::string result = check.executeStep() ? check.getColumn(0).getString() : std::string();
    if (result != "ok")
        throw damaged(path, result.c_str());
}

ConnectionPtr connect(const QString& path, int flags)
{
    // Always an absolute path: no name can then be taken for a URI or for ":memory:".
    const std::string name = QFile::encodeName(QFileInfo(path).absoluteFilePath()).toStdString();
    return std::make_shared<Connection>(
        path, SQLite::Database(name, flags | SQLite::OPEN_NOMUTEX, BusyTimeoutMilliseconds));
}

void checkContents(SQLite::Database& handle, const QString& path)
{
    try {
        checkObjects(handle, path);
        checkStructure(handle, path);
    } catch (const SQLite::Exception& failure) {
        // Our own statements are sound: what does not run is a table definition of the file.
        if (failure.getErrorCode() == SQLITE_ERROR)
            throw damaged(path, failure.what());
        throw;
    }
}

/// Throws SQLite::Exception as well.
ConnectionPtr openChecked(const QString& path, int flags)
{
    ConnectionPtr connection = connect(path, flags);
    checkHeader(connection->handle, path);
    harden(connection->handle);
    connection->handle.exec("PRAGMA journal_mode=DELETE");
    checkContents(connection->handle, path);
    connection->witness.remember(connection->handle, path);
    return connection;
}

/// After a power failure the file waits for its last change to be undone, which only a writer
/// can do; the reader then starts over.
ConnectionPtr openReadOnly(const QString& path)
{
    try {
        return openChecked(path, SQLite::OPEN_READONLY);
    } catch (const SQLite::Exception& failure) {
        if (failure.getExtendedErrorCode() != SQLITE_READONLY_ROLLBACK)
            throw;
    }
    openChecked(path, SQLite::OPEN_READWRITE);
    return openChecked(path, SQLite::OPEN_READONLY);
}

void requireFile(const QString& path)
{
    const QFileInfo info(path);
    if (!info.exists())
        throw DatabaseError(ErrorNumber::FileNotFound,
                            u"Il file «%1» non è stato trovato."_s.arg(path));
    if (!info.isFile())
        throw DatabaseError(ErrorNumber::CannotOpen, u"«%1» non è un file."_s.arg(path));
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

ConnectionPtr createFile(const QString& path)
{
    claimName(path);
    try {
        return onFile(path, [&] {
            ConnectionPtr connection = connect(path, SQLite::OPEN_READWRITE);
            harden(connection->handle);
            connection->handle.exec("PRAGMA journal_mode=DELETE; PRAGMA application_id=" +
                                    std::to_string(ApplicationId));
            connection->witness.remember(connection->handle, path);
            return connection;
        });
    } catch (...) {
        QFile::remove(path);
        throw;
    }
}

ConnectionPtr openFile(const QString& path, OpenMode mode)
{
    requireFile(path);
    return onFile(path, [&] {
        return mode == OpenMode::ReadOnly ? openReadOnly(path)
                                          : openChecked(path, SQLite::OPEN_READWRITE);
    });
}

ConnectionPtr copyToMemory(const QString& path)
{
    const ConnectionPtr source = openFile(path, OpenMode::ReadOnly);
    return onFile(path, [&] {
        auto copy = std::make_shared<Connection>(
            path, SQLite::Database(":memory:", SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX));
        harden(copy->handle);
        SQLite::Backup backup(copy->handle, source->handle);
        if (const int result = backup.executeStep(); result != SQLITE_DONE)
            throw SQLite::Exception(sqlite3_errstr(result), result);
        return copy;
    });
}

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/connection.h"

#include "store/engine_errors.h"
#include "store/file_check.h"
#include "store/files/file_names.h"
#include "store/files/passing_folder.h"
#include "store/job_limits.h"
#include "store/object_check.h"
#include "text/system_reason.h"

#include <QFile>
#include <QFileInfo>

#include <SQLiteCpp/Backup.h>
#include <SQLiteCpp/Statement.h>
#include <array>
#include <sqlite3.h>
#include <utility>

namespace zelto::store {

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

DatabaseError damaged(const QString& path, const char* detail)
{
    return damagedFile(path, QString::fromUtf8(detail));
}

/// The header as the engine has it, after what a journal took back.
QByteArray headerOf(SQLite::Database& handle)
{
    QByteArray header(HeaderSize, '\0');
    sqlite3_file* file = nullptr;
    sqlite3_file_control(handle.getHandle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    const bool read =
        file != nullptr && file->pMethods != nullptr &&
        file->pMethods->xRead(file, header.data(), static_cast<int>(header.size()), 0) == SQLITE_OK;
    return read ? header : QByteArray();
}

constexpr int StepsBetweenLooks = 100'000;

int statementBegins(unsigned int /*event*/, void* count, void* /*statement*/, void* /*sql*/)
{
    static_cast<StepCount*>(count)->taken = 0;
    return 0;
}

/// Not 0 ends the statement.
int statementGoesOn(void* count)
{
    auto* const steps = static_cast<StepCount*>(count);
    steps->taken += StepsBetweenLooks;
    return steps->taken > steps->most ? 1 : 0;
}

/// Checking a file of rooms and nothing else takes about ten steps for each of its bytes.
void limitSteps(Connection& connection, qint64 fileSize)
{
    constexpr qint64 Always = 100'000'000;
    constexpr qint64 ForEachByte = 100;
    connection.steps->most = Always + ForEachByte * fileSize;
    sqlite3* const engine = connection.handle.getHandle();
    sqlite3_trace_v2(engine, SQLITE_TRACE_STMT, statementBegins, connection.steps.get());
    sqlite3_progress_handler(engine, StepsBetweenLooks, statementGoesOn, connection.steps.get());
}

/// Without the CHECK conditions: ControllaTabelle names the field that breaks one.
void checkStructure(SQLite::Database& handle, const QString& path)
{
    handle.exec("PRAGMA ignore_check_constraints=ON");
    SQLite::Statement check(handle, "PRAGMA quick_check(1)");
    const std::string result = check.executeStep() ? check.getColumn(0).getString() : std::string();
    handle.exec("PRAGMA ignore_check_constraints=OFF");
    if (result != "ok")
        throw damaged(path, result.c_str());
}

/// The path has no links, and is absolute: no name can then be taken for a URI or for ":memory:".
ConnectionPtr connect(const QString& path, const QString& shown, int flags)
{
    auto connection = std::make_shared<Connection>(
        shown, SQLite::Database(QFile::encodeName(path).toStdString(), flags | SQLite::OPEN_NOMUTEX,
                                BusyTimeoutMilliseconds));
    limitSteps(*connection, QFileInfo(path).size());
    return connection;
}

QString absolute(const QString& path)
{
    return QFileInfo(realPath(path)).absoluteFilePath();
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

/// Opens the file at the path, which is looked at already. Throws SQLite::Exception as well.
ConnectionPtr openEngine(const QString& path, const QString& shown, int flags)
{
    ConnectionPtr connection = connect(path, shown, flags);
    harden(connection->handle);
    // The first read takes back what a journal says.
    connection->handle.exec("PRAGMA main.schema_version");
    checkHeader(headerOf(connection->handle), shown);
    requireFileSize(QFileInfo(path).size(), shown);
    connection->handle.exec("PRAGMA journal_mode=DELETE");
    return connection;
}

ConnectionPtr openChecked(const QString& path, const QString& shown, int flags)
{
    ConnectionPtr connection = openEngine(path, shown, flags);
    checkContents(connection->handle, shown);
    connection->witness.remember(connection->handle, path);
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
    auto copy = std::make_unique<PrivateCopy>(file, shown);
    (void)openEngine(copy->path(), shown, SQLite::OPEN_READWRITE);
    ConnectionPtr connection = openChecked(copy->path(), shown, SQLite::OPEN_READONLY);
    connection->copy = std::move(copy);
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

ConnectionPtr createFile(const QString& path)
{
    claimName(path);
    try {
        return onFile(path, [&] {
            ConnectionPtr connection = connect(absolute(path), path, SQLite::OPEN_READWRITE);
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
    const QString file = absolute(path);
    checkFile(file, path);
    return onFile(path, [&] {
        return mode == OpenMode::ReadOnly ? openReadOnly(file, path) : openForWriting(file, path);
    });
}

ConnectionPtr openForRebuilding(const QString& path)
{
    auto copy = std::make_unique<PrivateCopy>(absolute(path), path);
    return onFile(path, [&] {
        ConnectionPtr connection = openEngine(copy->path(), path, SQLite::OPEN_READWRITE);
        connection->copy = std::move(copy);
        removeForeignObjects(connection->handle);
        checkStructure(connection->handle, path);
        return connection;
    });
}

ConnectionPtr copyToMemory(const QString& path)
{
    const ConnectionPtr source = openFile(path, OpenMode::ReadOnly);
    return onFile(path, [&] {
        auto copy = std::make_shared<Connection>(
            path, SQLite::Database(":memory:", SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX));
        limitSteps(*copy, QFileInfo(path).size());
        harden(copy->handle);
        SQLite::Backup backup(copy->handle, source->handle);
        if (const int result = backup.executeStep(); result != SQLITE_DONE)
            throw SQLite::Exception(sqlite3_errstr(result), result);
        return copy;
    });
}

} // namespace zelto::store

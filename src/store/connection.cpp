// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/connection.h"

#include "store/file_check.h"
#include "store/files/database_error.h"

#include <QFile>
#include <QFileInfo>
#include <QtEndian>

#include <array>
#include <sqlite3.h>
#include <sys/stat.h>
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

} // namespace

Connection::Connection(QString shown, const QString& file, int flags, int patience)
    : path(std::move(shown)),
      handle(QFile::encodeName(file).toStdString(), flags | SQLite::OPEN_NOMUTEX, patience),
      m_inMemory(file == u":memory:")
{
    // Checking a file of rooms and nothing else takes about ten steps for each of its bytes.
    constexpr qint64 Always = 100'000'000;
    constexpr qint64 ForEachByte = 100;
    steps.most = Always + ForEachByte * QFileInfo(path).size();
    sqlite3* const engine = handle.getHandle();
    sqlite3_trace_v2(engine, SQLITE_TRACE_STMT, statementBegins, &steps);
    sqlite3_progress_handler(engine, StepsBetweenLooks, statementGoesOn, &steps);
    harden(handle);
}

QByteArray Connection::header()
{
    QByteArray bytes(HeaderSize, '\0');
    sqlite3_file* file = nullptr;
    sqlite3_file_control(handle.getHandle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    const bool read =
        file != nullptr && file->pMethods != nullptr &&
        file->pMethods->xRead(file, bytes.data(), static_cast<int>(bytes.size()), 0) == SQLITE_OK;
    return read ? bytes : QByteArray();
}

FileState Connection::state()
{
    constexpr qsizetype CounterAt = 24;
    struct stat found = {};
    if (::stat(QFile::encodeName(path).constData(), &found) != 0)
        return {};
    const QByteArray bytes = header().leftJustified(HeaderSize, '\0');
    return {.device = found.st_dev,
            .file = found.st_ino,
            .size = found.st_size,
            .seconds = found.st_mtim.tv_sec,
            .nanoseconds = found.st_mtim.tv_nsec,
            .counter = qFromBigEndian<std::uint32_t>(bytes.constData() + CounterAt)};
}

void Connection::remember()
{
    if (!m_inMemory)
        m_known = state();
}

void Connection::requireUnchanged()
{
    if (m_inMemory)
        return;
    const FileState now = state();
    const bool replaced = now.device != m_known.device || now.file != m_known.file;
    if (now.file == 0)
        throw DatabaseError(ErrorNumber::RecordChanged,
                            u"Il file «%1» non c'è più: è stato spostato o eliminato mentre era "
                            "aperto. Nulla è stato memorizzato."_s.arg(path));
    if (replaced || (now.counter == m_known.counter && now != m_known))
        throw DatabaseError(ErrorNumber::RecordChanged,
                            u"Il file «%1» è stato sostituito o riscritto da un altro programma "
                            "mentre era aperto. Nulla è stato memorizzato: chiudere la finestra, "
                            "riaprire il lavoro e ripetere."_s.arg(path));
    m_known = now;
}

} // namespace zelto::store

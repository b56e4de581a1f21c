// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/file_witness.h"

#include "store/database_error.h"

#include <QFile>
#include <QtEndian>

#include <array>
#include <sqlite3.h>
#include <sys/stat.h>

namespace zelto::store {

namespace {

bool isInMemory(SQLite::Database& handle)
{
    const char* const name = sqlite3_db_filename(handle.getHandle(), "main");
    return name == nullptr || *name == '\0';
}

/// Through the engine's own descriptor: closing another one would drop the locks that this process
/// holds on the file.
std::uint32_t changeCounter(SQLite::Database& handle)
{
    constexpr int Place = 24;
    std::array<char, 4> bytes{};
    sqlite3_file* file = nullptr;
    sqlite3_file_control(handle.getHandle(), "main", SQLITE_FCNTL_FILE_POINTER, &file);
    if (file != nullptr && file->pMethods != nullptr)
        file->pMethods->xRead(file, bytes.data(), static_cast<int>(bytes.size()), Place);
    return qFromBigEndian<std::uint32_t>(bytes.data());
}

} // namespace

/// A file that is no longer there has a state without number.
FileWitness::State FileWitness::stateOf(SQLite::Database& handle, const QString& path)
{
    struct stat found = {};
    State state{.counter = changeCounter(handle)};
    if (::stat(QFile::encodeName(path).constData(), &found) != 0)
        return state;
    state.device = found.st_dev;
    state.file = found.st_ino;
    state.size = found.st_size;
    state.seconds = found.st_mtim.tv_sec;
    state.nanoseconds = found.st_mtim.tv_nsec;
    return state;
}

void FileWitness::remember(SQLite::Database& handle, const QString& path)
{
    if (!isInMemory(handle))
        m_state = stateOf(handle, path);
}

void FileWitness::check(SQLite::Database& handle, const QString& path)
{
    if (isInMemory(handle))
        return;
    const State now = stateOf(handle, path);
    const bool same = now.device == m_state.device && now.file == m_state.file;
    const bool touched = now.size != m_state.size || now.seconds != m_state.seconds ||
                         now.nanoseconds != m_state.nanoseconds;
    if (now.file == 0)
        throw DatabaseError(ErrorNumber::RecordChanged,
                            u"Il file «%1» non c'è più: è stato spostato o eliminato mentre era "
                            "aperto. Nulla è stato memorizzato."_s.arg(path));
    if (!same || (touched && now.counter == m_state.counter))
        throw DatabaseError(ErrorNumber::RecordChanged,
                            u"Il file «%1» è stato sostituito o riscritto da un altro programma "
                            "mentre era aperto. Nulla è stato memorizzato: chiudere la finestra, "
                            "riaprire il lavoro e ripetere."_s.arg(path));
    m_state = now;
}

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/engine_file.h"

#include "store/engine_errors.h"
#include "store/files/database_error.h"
#include "store/job_limits.h"
#include "text/system_reason.h"

#include <QElapsedTimer>
#include <QFile>
#include <QThread>

#include <algorithm>
#include <cerrno>
#include <sqlite3.h>
#include <sys/stat.h>

namespace zelto::store {

namespace {

constexpr qint64 Piece = 1 << 20;

/// Runs a call of the engine's layer.
void require(int result, const QString& shown)
{
    if (result != SQLITE_OK)
        throw translated(SQLite::Exception(sqlite3_errstr(result), result), shown);
}

} // namespace

EngineFile::EngineFile(const QString& path, const QString& shown)
    : m_shown(shown),
      m_name(sqlite3_create_filename(QFile::encodeName(path).constData(), "", "", 0, nullptr),
             [](const char* name) { sqlite3_free_filename(const_cast<char*>(name)); })
{
    requirePlainFile(path, shown);
    sqlite3_vfs* const layer = sqlite3_vfs_find(nullptr);
    m_memory.resize(static_cast<std::size_t>(layer->szOsFile));
    const int result = layer->xOpen(layer, m_name.get(), file(),
                                    SQLITE_OPEN_READONLY | SQLITE_OPEN_MAIN_DB, nullptr);
    if (result != SQLITE_OK)
        requirePlainFile(path, shown); // it may be gone meanwhile
    require(result, shown);
}

EngineFile::~EngineFile()
{
    if (file()->pMethods != nullptr)
        file()->pMethods->xClose(file());
}

sqlite3_file* EngineFile::file() const
{
    return reinterpret_cast<sqlite3_file*>(const_cast<std::byte*>(m_memory.data()));
}

qint64 EngineFile::size() const
{
    sqlite3_int64 size = 0;
    require(file()->pMethods->xFileSize(file(), &size), m_shown);
    return size;
}

QByteArray EngineFile::read(qint64 offset, qint64 length) const
{
    const qint64 there = std::clamp<qint64>(size() - offset, 0, length);
    QByteArray bytes(there, '\0');
    for (qint64 done = 0; done < there; done += Piece)
        require(file()->pMethods->xRead(file(), bytes.data() + done,
                                        static_cast<int>(std::min(Piece, there - done)),
                                        offset + done),
                m_shown);
    return bytes;
}

QByteArray EngineFile::readAll() const
{
    requireFileSize(size(), m_shown);
    return read(0, size());
}

void EngineFile::lockForReading()
{
    constexpr unsigned long Pause = 20; // milliseconds
    QElapsedTimer waited;
    waited.start();
    int result = SQLITE_BUSY;
    while ((result = file()->pMethods->xLock(file(), SQLITE_LOCK_SHARED)) == SQLITE_BUSY &&
           waited.elapsed() < BusyTimeoutMilliseconds)
        QThread::msleep(Pause);
    require(result, m_shown);
}

void EngineFile::copyTo(const QString& target) const
{
    QFile copy(target);
    bool written = copy.open(QIODevice::WriteOnly | QIODevice::NewOnly);
    const qint64 length = size();
    for (qint64 done = 0; written && done < length; done += Piece) {
        const QByteArray bytes = read(done, Piece);
        written = copy.write(bytes) == bytes.size();
    }
    copy.close();
    if (!written || copy.error() != QFileDevice::NoError)
        throw DatabaseError(
            ErrorNumber::DiskFull,
            u"Il file «%1» non può essere copiato per la lettura in «%2» (%3)."_s.arg(
                m_shown, target, text::systemReason(copy)));
}

void requirePlainFile(const QString& path, const QString& shown)
{
    struct stat found = {};
    if (::lstat(QFile::encodeName(path).constData(), &found) != 0) {
        if (errno == ENOENT || errno == ENOTDIR)
            throw DatabaseError(ErrorNumber::FileNotFound,
                                u"Il file «%1» non è stato trovato."_s.arg(shown));
        throw DatabaseError(ErrorNumber::CannotOpen, u"Impossibile aprire il file «%1» (%2)."_s.arg(
                                                         shown, text::systemReason(errno)));
    }
    if (!S_ISREG(found.st_mode))
        throw DatabaseError(ErrorNumber::CannotOpen, u"«%1» non è un file."_s.arg(shown));
}

void requireFileSize(qint64 size, const QString& path)
{
    constexpr int Megabyte = 20; // as a power of 2
    if (size > LargestFile)
        throw DatabaseError(
            ErrorNumber::Damaged,
            u"Il file «%1» è troppo grande per un lavoro: %2 MB, al massimo %3."_s.arg(path)
                .arg(size >> Megabyte)
                .arg(LargestFile >> Megabyte));
}

} // namespace zelto::store

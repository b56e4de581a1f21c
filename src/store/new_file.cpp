// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/new_file.h"

#include "store/file_names.h"

#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace zelto::store {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView PassingFolder = u".zelto-";

/// What a program that was killed left behind. Nothing that still runs takes that long.
void removeLeftovers(const QString& folder)
{
    const QDateTime longAgo = QDateTime::currentDateTimeUtc().addSecs(-3600);
    const auto hidden = QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot | QDir::NoSymLinks;
    for (const QFileInfo& left :
         QDir(folder).entryInfoList({PassingFolder.toString() + u"??????"_s}, hidden))
        if (left.lastModified() < longAgo)
            QDir(left.absoluteFilePath()).removeRecursively();
}

QString passingFolder(const QString& target)
{
    const QString folder = QFileInfo(target).absolutePath();
    removeLeftovers(folder);
    return u"%1/%2XXXXXX"_s.arg(folder, PassingFolder);
}

/// Waits until the file, or the names in the folder, have reached the disk.
void syncToDisk(const QString& path)
{
    const int descriptor = ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CLOEXEC);
    const bool done = descriptor >= 0 && ::fsync(descriptor) == 0;
    const int error = errno;
    if (descriptor >= 0)
        ::close(descriptor);
    // Some network file systems cannot be asked.
    if (!done && error != EINVAL && error != ENOTSUP)
        throw systemError(error, path);
}

void syncFolderOf(const QString& path)
{
    syncToDisk(QFileInfo(path).absolutePath());
}

int renameWith(const QString& from, const QString& to, unsigned int flags)
{
    return ::renameat2(AT_FDCWD, QFile::encodeName(from).constData(), AT_FDCWD,
                       QFile::encodeName(to).constData(), flags);
}

/// The file system does not know such a rename.
bool isUnsupported(int error)
{
    return error == EINVAL || error == ENOSYS || error == ENOTSUP;
}

/// Engine files of a file that is no more would be taken for those of the one that comes.
void removeEngineFiles(const QString& path)
{
    for (const QString& file : engineFilesOf(path))
        removeFile(file);
}

/// A damaged file may have some that the engine could not use; they belong to it.
void moveEngineFiles(const QString& path, const QString& newPath)
{
    removeEngineFiles(newPath);
    const QStringList from = engineFilesOf(path);
    const QStringList to = engineFilesOf(newPath);
    for (qsizetype i = 0; i < from.size(); ++i)
        if (renameWith(from[i], to[i], 0) != 0 && errno != ENOENT)
            throw systemError(errno, to[i]);
}

DatabaseError fileExists(const QString& path)
{
    return {ErrorNumber::FileExists, u"Il file «%1» esiste già."_s.arg(path)};
}

} // namespace

NewFile::NewFile(QString target) : m_target(std::move(target)), m_folder(passingFolder(m_target))
{
    if (m_folder.isValid())
        return;
    const QString folder = QFileInfo(m_target).absolutePath();
    if (!QFileInfo(folder).isDir())
        throw DatabaseError(ErrorNumber::FileNotFound,
                            u"La cartella «%1» non è stata trovata."_s.arg(folder));
    throw DatabaseError(
        ErrorNumber::CannotOpen,
        u"Impossibile scrivere nella cartella «%1» (%2)."_s.arg(folder, m_folder.errorString()));
}

void NewFile::takePermissions(const QString& model)
{
    struct stat found = {};
    if (::stat(QFile::encodeName(model).constData(), &found) != 0)
        throw systemError(errno, model);
    const QByteArray name = QFile::encodeName(path());
    // Only an administrator may give a file away, and some file systems know no owners.
    if (::chown(name.constData(), found.st_uid, found.st_gid) != 0 && errno != EPERM)
        throw systemError(errno, m_target);
    if (::chmod(name.constData(), (found.st_mode & 0777U) | S_IWUSR) != 0 && errno != EPERM)
        throw systemError(errno, m_target);
}

void NewFile::publish()
{
    requireFreeName(m_target);
    sync();
    removeEngineFiles(m_target);
    if (renameWith(path(), m_target, RENAME_NOREPLACE) != 0) {
        if (errno == EEXIST)
            throw fileExists(m_target);
        if (!isUnsupported(errno))
            throw systemError(errno, m_target);
        rename(path(), m_target);
    }
    syncFolderOf(m_target);
}

void NewFile::replace()
{
    sync();
    rename(path(), m_target);
    syncFolderOf(m_target);
}

void NewFile::replaceKeeping(const QString& backup)
{
    sync();
    moveEngineFiles(m_target, backup);
    if (renameWith(path(), m_target, RENAME_EXCHANGE) == 0)
        exchangeKeeping(backup);
    else if (isUnsupported(errno))
        moveKeeping(backup);
    else
        throw systemError(errno, m_target);
    syncFolderOf(m_target);
}

/// The target is the new file already, and the passing name leads to the old one.
void NewFile::exchangeKeeping(const QString& backup)
{
    try {
        syncFolderOf(m_target);
        rename(path(), backup);
    } catch (const DatabaseError&) {
        renameWith(path(), m_target, RENAME_EXCHANGE);
        throw;
    }
}

/// For a moment the target's name is free, and the old file bears the backup's.
void NewFile::moveKeeping(const QString& backup)
{
    rename(m_target, backup);
    try {
        syncFolderOf(m_target);
        rename(path(), m_target);
    } catch (const DatabaseError&) {
        renameWith(backup, m_target, 0);
        throw;
    }
}

void NewFile::sync() const
{
    syncToDisk(path());
}

void NewFile::rename(const QString& from, const QString& to) const
{
    if (renameWith(from, to, 0) != 0)
        throw systemError(errno, to);
}

DatabaseError systemError(int error, const QString& path)
{
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        return {ErrorNumber::FileNotFound, u"Il file «%1» non è stato trovato."_s.arg(path)};
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return {ErrorNumber::DiskFull,
                u"Spazio su disco esaurito durante la scrittura del file «%1»."_s.arg(path)};
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case EBUSY:
        return {ErrorNumber::CannotOpen,
                u"Il file «%1» non può essere scritto o eliminato (%2)."_s.arg(
                    path, qt_error_string(error))};
    default:
        return {ErrorNumber::DiskError,
                u"Errore di disco o di rete nell'accesso al file «%1» (%2)."_s.arg(
                    path, qt_error_string(error))};
    }
}

void requireFreeName(const QString& path)
{
    if (const QString found = findFile(path); !found.isEmpty())
        throw fileExists(found);
}

void removeFile(const QString& path)
{
    if (::unlink(QFile::encodeName(path).constData()) != 0 && errno != ENOENT)
        throw systemError(errno, path);
}

} // namespace zelto::store

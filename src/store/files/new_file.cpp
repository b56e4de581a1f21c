// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/new_file.h"

#include "store/files/file_names.h"
#include "store/files/passing_folder.h"
#include "text/system_reason.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace zelto::store {

namespace {

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

void rename(const QString& from, const QString& to)
{
    if (renameWith(from, to, 0) != 0)
        throw systemError(errno, to);
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

DatabaseError notWritable(const QString& folder, const QString& reason)
{
    return {ErrorNumber::CannotOpen,
            u"Impossibile scrivere nella cartella «%1» (%2)."_s.arg(folder, reason)};
}

DatabaseError fileExists(const QString& path)
{
    return {ErrorNumber::FileExists, u"Il file «%1» esiste già."_s.arg(path)};
}

} // namespace

NewFile::NewFile(QString target)
    : m_target(std::move(target)),
      m_folder(std::make_shared<PassingFolder>(QFileInfo(m_target).absolutePath()))
{
    if (m_folder->isValid())
        return;
    const QString folder = QFileInfo(m_target).absolutePath();
    if (!QFileInfo(folder).isDir())
        throw DatabaseError(ErrorNumber::FileNotFound,
                            u"La cartella «%1» non è stata trovata."_s.arg(folder));
    const int error = m_folder->error();
    throw error == ENOSPC || error == EDQUOT ? systemError(error, m_target)
                                             : notWritable(folder, text::systemReason(error));
}

NewFile::NewFile(QString target, const NewFile& neighbour)
    : m_target(std::move(target)), m_folder(neighbour.m_folder)
{}

QString NewFile::path() const
{
    return m_folder->filePath(QFileInfo(m_target).fileName());
}

void NewFile::write(const QByteArray& bytes) const
{
    QFile file(path());
    if (!file.open(QIODevice::WriteOnly | QIODevice::NewOnly) || file.write(bytes) < 0 ||
        !file.flush())
        throw notWritable(QFileInfo(m_target).absolutePath(), text::systemReason(file));
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
    syncToDisk(path());
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
    syncToDisk(path());
    rename(path(), m_target);
    syncFolderOf(m_target);
}

void NewFile::replaceKeeping(const QString& backup)
{
    syncToDisk(path());
    moveEngineFiles(m_target, backup);
    if (renameWith(path(), m_target, RENAME_EXCHANGE) == 0)
        exchangeKeeping(backup);
    else if (isUnsupported(errno))
        moveKeeping(backup);
    else
        throw systemError(errno, m_target);
    syncFolderOf(m_target);
}

void NewFile::replaceAll(const std::vector<std::unique_ptr<NewFile>>& files)
{
    for (const auto& file : files)
        syncToDisk(file->path());
    std::size_t named = 0;
    try {
        for (; named < files.size(); ++named)
            files[named]->takeName();
    } catch (const DatabaseError&) {
        while (named > 0)
            files[--named]->giveNameBack();
        throw;
    }
    for (const auto& file : files)
        syncFolderOf(file->m_target);
}

/// What bore the name goes to the passing folder.
void NewFile::takeName()
{
    struct stat found = {};
    if (::lstat(QFile::encodeName(m_target).constData(), &found) != 0) {
        rename(path(), m_target);
        return;
    }
    if (S_ISDIR(found.st_mode))
        throw systemError(EISDIR, m_target);
    if (renameWith(path(), m_target, RENAME_EXCHANGE) == 0) {
        m_replaced = path();
        return;
    }
    const QString former = path() + u".prima"_s;
    if (S_ISREG(found.st_mode) && QFile::copy(m_target, former))
        m_replaced = former;
    rename(path(), m_target);
}

void NewFile::giveNameBack() const
{
    if (m_replaced.isEmpty())
        ::unlink(QFile::encodeName(m_target).constData());
    else
        renameWith(m_replaced, m_target, 0);
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

DatabaseError systemError(int error, const QString& path)
{
    const QString file = targetPath(path);
    switch (error) {
    case ENOENT:
    case ENOTDIR:
        return {ErrorNumber::FileNotFound, u"Il file «%1» non è stato trovato."_s.arg(file)};
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return {ErrorNumber::DiskFull,
                u"Spazio su disco esaurito durante la scrittura del file «%1»."_s.arg(file)};
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
    case EBUSY:
        return {ErrorNumber::CannotOpen,
                u"Il file «%1» non può essere scritto o eliminato (%2)."_s.arg(
                    file, text::systemReason(error))};
    default:
        return {ErrorNumber::DiskError,
                u"Errore di disco o di rete nell'accesso al file «%1» (%2)."_s.arg(
                    file, text::systemReason(error))};
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

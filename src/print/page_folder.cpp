// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/page_folder.h"

#include "print/page_file.h"
#include "print/print_error.h"

#include <QDir>
#include <QFileInfo>
#include <QLockFile>

#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace zelto::print {

namespace {

constexpr int MaxInstances = 100;

QString lockPath(const QString& folder)
{
    return QDir{folder}.filePath(QStringLiteral("~VKM.lock"));
}

/// A folder made by us that nobody else can write to. In a folder that others share, anybody may
/// have put something there under the name.
bool isPrivate(const QString& path)
{
    struct stat found = {};
    return lstat(QFile::encodeName(path).constData(), &found) == 0 && S_ISDIR(found.st_mode) &&
           found.st_uid == geteuid() && (found.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

} // namespace

PageFolder::PageFolder(QString root) : m_root(std::move(root)) {}

PageFolder::~PageFolder()
{
    clear();
    m_lock.reset();
    if (!m_folder.isEmpty() && m_folder != m_root)
        QDir().rmdir(m_folder);
}

void PageFolder::claim()
{
    if (!m_folder.isEmpty())
        return clear();
    if (!QFileInfo{m_root}.isDir() || !QFileInfo{m_root}.isWritable())
        throw PrintError(
            PrintErrorNumber::PathAccess,
            QStringLiteral("La cartella dei file di pagina «%1» non esiste o non si può scrivere.")
                .arg(m_root));
    bool taken = take(m_root);
    for (int number = 1; !taken && number < MaxInstances; ++number)
        taken = takeSubfolder(number);
    if (!taken)
        throw PrintError(
            PrintErrorNumber::PathAccess,
            QStringLiteral("Impossibile usare la cartella dei file di pagina «%1».").arg(m_root));
}

QString PageFolder::pagePath(int index) const
{
    return pageFilePath(m_folder.isEmpty() ? m_root : m_folder, index);
}

void PageFolder::clear()
{
    if (!m_folder.isEmpty())
        deletePageFiles(m_folder);
}

bool PageFolder::take(const QString& folder)
{
    auto lock = std::make_unique<QLockFile>(lockPath(folder));
    lock->setStaleLockTime(0); // a program may stay open for days: only its end frees the folder
    if (!lock->tryLock(0))
        return false;
    deletePageFiles(folder);
    if (hasPageFiles(folder))
        return false; // somebody else's, and we could not replace them
    m_lock = std::move(lock);
    m_folder = folder;
    return true;
}

bool PageFolder::takeSubfolder(int number)
{
    const QString folder = QDir{m_root}.filePath(QStringLiteral("~VKM%1").arg(number));
    mkdir(QFile::encodeName(folder).constData(), S_IRWXU);
    return isPrivate(folder) && take(folder);
}

} // namespace zelto::print

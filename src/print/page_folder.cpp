// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/page_folder.h"

#include "print/page_file.h"
#include "print/print_error.h"

#include <QDir>
#include <QFileInfo>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <utility>

namespace zelto::print {

namespace {

constexpr int MaxInstances = 100;

QString lockPath(const QString& folder)
{
    return QDir{folder}.filePath(u"~VKM.lock"_s);
}

/// The lock file, locked. It goes when a folder is given back: what was opened before that must
/// still be what the name leads to.
std::optional<store::OwnFile> lockOf(const QString& folder)
{
    const QByteArray path = QFile::encodeName(lockPath(folder));
    store::OwnFile lock(path, O_RDWR | O_CREAT);
    struct stat opened = {};
    struct stat named = {};
    const bool isOurs = lock.isOpen() && ::flock(lock.descriptor(), LOCK_EX | LOCK_NB) == 0 &&
                        ::fstat(lock.descriptor(), &opened) == 0 &&
                        ::lstat(path.constData(), &named) == 0 && opened.st_ino == named.st_ino;
    return isOurs ? std::optional(std::move(lock)) : std::nullopt;
}

} // namespace

PageFolder::PageFolder(QString root) : m_root(std::move(root)) {}

PageFolder::~PageFolder()
{
    clear();
    giveBack();
}

void PageFolder::claim()
{
    if (!m_folder.isEmpty())
        return clear();
    if (!QFileInfo{m_root}.isDir() || !QFileInfo{m_root}.isWritable())
        throw PrintError(
            PrintErrorNumber::PathAccess,
            u"La cartella dei file di pagina «%1» non esiste o non si può scrivere."_s.arg(m_root));
    bool taken = take(m_root);
    for (int number = 1; !taken && number < MaxInstances; ++number)
        taken = takeSubfolder(number);
    if (!taken)
        throw PrintError(PrintErrorNumber::PathAccess,
                         u"Impossibile usare la cartella dei file di pagina «%1»."_s.arg(m_root));
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
    if (hasForeignPageFiles(folder))
        return false;
    m_lock = lockOf(folder);
    if (!m_lock)
        return false;
    m_folder = folder;
    clear();
    return true;
}

void PageFolder::giveBack()
{
    if (!m_lock)
        return;
    QFile::remove(lockPath(m_folder));
    m_lock.reset();
    if (m_folder != m_root)
        QDir().rmdir(m_folder);
}

bool PageFolder::takeSubfolder(int number)
{
    const QString folder = QDir{m_root}.filePath(u"~VKM%1"_s.arg(number));
    mkdir(QFile::encodeName(folder).constData(), S_IRWXU);
    return store::isPrivateFolder(folder) && take(folder);
}

} // namespace zelto::print

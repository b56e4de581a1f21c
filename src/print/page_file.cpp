// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/page_file.h"

#include "print/print_error.h"

#include <QDir>
#include <QFileInfo>
#include <QScopeGuard>

#include <algorithm>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace zelto::print {

namespace {

/// Whatever bears the name of a page file, of any kind and anybody's.
QStringList pageFiles(const QString& folder)
{
    const auto anything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::CaseSensitive;
    QStringList paths;
    for (const QString& name : QDir{folder}.entryList({u"~VKM*.Tmp"_s}, anything))
        paths += QDir{folder}.filePath(name);
    return paths;
}

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

QString TempFolder(const QString& applicationFolder)
{
    const QString folder = qEnvironmentVariable("TEMP");
    return folder.isEmpty() ? applicationFolder : folder;
}

QString pageFilePath(const QString& folder, int index)
{
    return QDir{folder}.filePath(u"~VKM%1.Tmp"_s.arg(index, 4, 10, QLatin1Char{'0'}));
}

void deletePageFiles(const QString& folder)
{
    for (const QString& path : pageFiles(folder))
        if (store::isOwnFile(path))
            QFile::remove(path);
}

PageFolder::~PageFolder()
{
    if (!m_lock)
        return;
    clear();
    QFile::remove(lockPath(m_folder));
    m_lock.reset();
    if (m_folder != m_root)
        QDir().rmdir(m_folder);
}

void PageFolder::claim()
{
    if (!m_folder.isEmpty())
        return clear();
    if (!QFileInfo{m_root}.isDir() || !QFileInfo{m_root}.isWritable())
        throw PrintError(
            PrintErrorNumber::PathAccess,
            u"La cartella dei file di pagina «%1» non esiste o non si può scrivere."_s.arg(m_root));
    constexpr int MaxInstances = 100;
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
    if (!std::ranges::all_of(pageFiles(folder), store::isOwnFile))
        return false;
    m_lock = lockOf(folder);
    if (!m_lock)
        return false;
    m_folder = folder;
    clear();
    return true;
}

bool PageFolder::takeSubfolder(int number)
{
    const QString folder = QDir{m_root}.filePath(u"~VKM%1"_s.arg(number));
    mkdir(QFile::encodeName(folder).constData(), S_IRWXU);
    return store::isPrivateFolder(folder) && take(folder);
}

void PageFileWriter::open(const QString& path)
{
    abandon();
    m_file.setFileName(path);
    const auto create = [this] {
        return m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered,
                           QFileDevice::ReadOwner | QFileDevice::WriteOwner);
    };
    // Never through what somebody else left under the name: a page holds personal figures.
    if (!create() && !(QFile::remove(path) && create()))
        throw PrintError(PrintErrorNumber::PathAccess, u"Impossibile creare il file di pagina"_s,
                         m_file);
}

qint64 PageFileWriter::close()
{
    writeOut();
    const qint64 length = m_file.pos();
    m_file.close();
    return length;
}

void PageFileWriter::abandon()
{
    m_file.close();
    m_records.clear();
}

void PageFileWriter::writeOut()
{
    std::string_view rest = m_records.bytes();
    while (!rest.empty()) {
        // A full disk takes a part first; only the next attempt tells the reason.
        const qint64 written = m_file.write(rest.data(), static_cast<qint64>(rest.size()));
        if (written <= 0)
            fail();
        rest.remove_prefix(static_cast<std::size_t>(written));
    }
    m_records.clear();
}

void PageFileWriter::fail()
{
    [[maybe_unused]] const auto closing = qScopeGuard([this] { abandon(); });
    throw PrintError(PrintErrorNumber::DeviceFailed, u"Impossibile scrivere il file di pagina"_s,
                     m_file);
}

} // namespace zelto::print

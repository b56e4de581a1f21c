// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/job_lock.h"

#include "text/literals.h"

#include <QDir>
#include <QFile>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelto::store {

namespace {

/// A folder that only the user can write to, of the session or below that for temporary files;
/// empty when there is none.
QString privateFolder()
{
    const QString session = qEnvironmentVariable("XDG_RUNTIME_DIR");
    for (const QString& folder :
         {session.isEmpty() ? QString() : session + u"/zelto"_s,
          u"%1/zelto-finestre-%2"_s.arg(QDir::tempPath()).arg(::geteuid())}) {
        ::mkdir(QFile::encodeName(folder).constData(), S_IRWXU);
        if (isPrivateFolder(folder))
            return folder;
    }
    return {};
}

std::optional<OwnFile> lockFile(const QString& job, int flags)
{
    struct stat found = {};
    const QString folder = privateFolder();
    if (folder.isEmpty() || ::stat(QFile::encodeName(job).constData(), &found) != 0)
        return std::nullopt;
    const QString name = u"%1/lavoro-%2-%3"_s.arg(folder).arg(found.st_dev).arg(found.st_ino);
    return OwnFile(QFile::encodeName(name), flags);
}

} // namespace

JobLock::JobLock(const QString& job) : m_file(lockFile(job, O_RDWR | O_CREAT))
{
    // Waits for those who look whether they are alone, which takes them a moment.
    if (m_file && m_file->isOpen())
        ::flock(m_file->descriptor(), LOCK_SH);
}

bool JobLock::isHeld(const QString& job)
{
    const std::optional<OwnFile> file = lockFile(job, O_RDWR);
    return file && file->isOpen() && ::flock(file->descriptor(), LOCK_EX | LOCK_NB) != 0;
}

bool JobLock::isAlone() const
{
    if (!m_file || !m_file->isOpen())
        return true;
    const bool alone = ::flock(m_file->descriptor(), LOCK_EX | LOCK_NB) == 0;
    // One that was refused has lost the shared lock, too.
    ::flock(m_file->descriptor(), LOCK_SH);
    return alone;
}

} // namespace zelto::store

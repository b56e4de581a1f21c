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

bool isOurs(const QByteArray& folder)
{
    struct stat found = {};
    return ::lstat(folder.constData(), &found) == 0 && S_ISDIR(found.st_mode) &&
           found.st_uid == ::geteuid() && (found.st_mode & 0077U) == 0;
}

/// A folder that only the user can enter, of the session or below that for temporary files; empty
/// when there is none.
QString privateFolder()
{
    const QString session = qEnvironmentVariable("XDG_RUNTIME_DIR");
    for (const QString& folder :
         {session.isEmpty() ? QString() : session + u"/zelto"_s,
          u"%1/zelto-finestre-%2"_s.arg(QDir::tempPath()).arg(::geteuid())}) {
        const QByteArray name = QFile::encodeName(folder);
        ::mkdir(name.constData(), S_IRWXU);
        if (isOurs(name))
            return folder;
    }
    return {};
}

int openLockFile(const QString& job)
{
    struct stat found = {};
    if (::stat(QFile::encodeName(job).constData(), &found) != 0)
        return -1;
    const QString folder = privateFolder();
    if (folder.isEmpty())
        return -1;
    const QString name = u"%1/lavoro-%2-%3"_s.arg(folder).arg(found.st_dev).arg(found.st_ino);
    return ::open(QFile::encodeName(name).constData(), O_RDWR | O_CREAT | O_NOFOLLOW | O_CLOEXEC,
                  S_IRUSR | S_IWUSR);
}

} // namespace

JobLock::JobLock(const QString& job) : m_descriptor(openLockFile(job))
{
    // Waits for those who look whether they are alone, which takes them a moment.
    if (m_descriptor >= 0)
        ::flock(m_descriptor, LOCK_SH);
}

JobLock::~JobLock()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool JobLock::isAlone() const
{
    if (m_descriptor < 0)
        return true;
    const bool alone = ::flock(m_descriptor, LOCK_EX | LOCK_NB) == 0;
    // One that was refused has lost the shared lock, too.
    ::flock(m_descriptor, LOCK_SH);
    return alone;
}

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/own_file.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zelto::store {

namespace {

/// Why it is no plain file of the user's: an error number, 0 if it is one.
int objectionTo(const struct stat& found)
{
    if (!S_ISREG(found.st_mode))
        return S_ISDIR(found.st_mode) ? EISDIR : ENXIO;
    return found.st_uid == ::geteuid() ? 0 : EACCES;
}

struct stat lookAt(const QString& path)
{
    struct stat found = {};
    if (::lstat(QFile::encodeName(path).constData(), &found) != 0)
        found.st_mode = 0;
    return found;
}

} // namespace

OwnFile::OwnFile(const QByteArray& path, int flags)
    : m_descriptor(
          ::open(path.constData(), flags | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, S_IRUSR | S_IWUSR))
{
    struct stat found = {};
    m_error = m_descriptor < 0 || ::fstat(m_descriptor, &found) != 0 ? errno : objectionTo(found);
    if (m_error != 0 && m_descriptor >= 0)
        ::close(release());
}

OwnFile::~OwnFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

bool isOwnFile(const QString& path)
{
    return objectionTo(lookAt(path)) == 0;
}

bool isPrivateFolder(const QString& path)
{
    const struct stat found = lookAt(path);
    return S_ISDIR(found.st_mode) && found.st_uid == ::geteuid() &&
           (found.st_mode & (S_IWGRP | S_IWOTH)) == 0;
}

} // namespace zelto::store

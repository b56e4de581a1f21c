// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/passing_folder.h"

#include "store/files/own_file.h"
#include "text/literals.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <mutex>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace zelto::store {

namespace {

constexpr QByteArrayView Proof = "Zelto: cartella di passaggio\n";

/// The folders of this program. Never destroyed: a thread that ends the program may need it.
struct OwnFolders
{
    std::mutex mutex;
    std::vector<QString> paths;
};

OwnFolders& ownFolders()
{
    static auto* const folders = new OwnFolders;
    return *folders;
}

QByteArray proofPath(const QString& folder)
{
    return QFile::encodeName(folder + u'/' + QDir(folder).dirName());
}

/// Removes the files, the proof last, and the folder, unless there is a folder in it.
bool removeFolder(const QString& folder)
{
    // Links to folders count as folders here and are yet removed as files.
    const auto everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QString& name : QDir(folder).entryList(everything))
        if (name != QDir(folder).dirName())
            ::unlink(QFile::encodeName(folder + u'/' + name).constData());
    ::unlink(proofPath(folder).constData());
    return ::rmdir(QFile::encodeName(folder).constData()) == 0 || errno == ENOENT;
}

/// A folder for the user alone with our proof in it, which nobody holds any more.
bool isLeftBehind(const QString& folder)
{
    if (!isPrivateFolder(folder))
        return false;
    const OwnFile proof(proofPath(folder), O_RDONLY);
    std::array<char, Proof.size() + 1> bytes = {};
    return proof.isOpen() &&
           ::read(proof.descriptor(), bytes.data(), bytes.size()) == Proof.size() &&
           std::equal(Proof.begin(), Proof.end(), bytes.begin()) &&
           ::flock(proof.descriptor(), LOCK_EX | LOCK_NB) == 0;
}

void removeLeftovers(const QString& parent)
{
    const auto folders = QDir::Dirs | QDir::Hidden | QDir::NoDotAndDotDot | QDir::NoSymLinks;
    for (const QString& name : QDir(parent).entryList({u".zelto-??????"_s}, folders)) {
        const QString folder = parent + u'/' + name;
        if (!isLeftBehind(folder))
            continue;
        removeLeftovers(folder);
        removeFolder(folder);
    }
}

} // namespace

PassingFolder::PassingFolder(const QString& parent)
{
    const std::scoped_lock lock(ownFolders().mutex);
    removeLeftovers(parent);
    if (make(parent))
        ownFolders().paths.push_back(m_path);
    else
        m_error = errno;
}

bool PassingFolder::make(const QString& parent)
{
    QByteArray folder = QFile::encodeName(parent + u"/.zelto-XXXXXX"_s);
    if (::mkdtemp(folder.data()) == nullptr)
        return false;
    m_path = QFile::decodeName(folder);
    // Locked before it says whose it is, so that nobody finds an unlocked proof of a new folder.
    m_lock = ::open(proofPath(m_path).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC,
                    S_IRUSR | S_IWUSR);
    if (m_lock >= 0) {
        // Where files cannot be locked nobody can take this lock, either.
        ::flock(m_lock, LOCK_EX | LOCK_NB);
        if (::write(m_lock, Proof.data(), static_cast<std::size_t>(Proof.size())) == Proof.size())
            return true;
    }
    const int error = errno;
    removeFolder(m_path);
    if (m_lock >= 0)
        ::close(std::exchange(m_lock, -1));
    errno = error;
    return false;
}

PassingFolder::~PassingFolder()
{
    if (!isValid())
        return;
    const std::scoped_lock lock(ownFolders().mutex);
    removeFolder(m_path);
    std::erase(ownFolders().paths, m_path);
    ::close(m_lock);
}

void PassingFolder::removeAll()
{
    ownFolders().mutex.lock();
    constexpr int Attempts = 100; // while others go on making files
    auto& folders = ownFolders().paths;
    for (int attempt = 0; !folders.empty() && attempt < Attempts; ++attempt)
        std::erase_if(folders, removeFolder);
}

QString targetPath(const QString& path)
{
    static const QRegularExpression passing(u"/\\.zelto-[^/]{6}(?=/)"_s);
    return QString(path).remove(passing);
}

} // namespace zelto::store

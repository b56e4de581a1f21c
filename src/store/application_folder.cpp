// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/application_folder.h"

#include "store/database_error.h"
#include "store/file_operations.h"

#include <QDir>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>

namespace zelto::store {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView MasterName = u"Zelto.mdb";

/// What root could write there does not belong to the program's user.
bool isSystemFolder(const QString& folder)
{
    static const QStringList SystemFolders{u"/bin"_s, u"/usr/bin"_s, u"/usr/games"_s,
                                           u"/usr/local/bin"_s};
    return SystemFolders.contains(QDir::cleanPath(folder));
}

bool isPortable(const QString& programFolder)
{
    return !isSystemFolder(programFolder) && QFileInfo(programFolder).isWritable();
}

} // namespace

ApplicationFolder::ApplicationFolder(const QString& programFolder, const QString& userFolder)
    : m_programFolder(programFolder), m_path(isPortable(programFolder) ? programFolder : userFolder)
{
    QDir().mkpath(m_path);
}

QString ApplicationFolder::userFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/zelto"_s;
}

QString ApplicationFolder::masterPath() const
{
    return u"%1/%2"_s.arg(m_path, MasterName);
}

QString ApplicationFolder::settingsPath() const
{
    return m_path + u"/Zelto.ini"_s;
}

QString ApplicationFolder::copiesFolder() const
{
    return m_path + u"/copie"_s;
}

void ApplicationFolder::provideMaster() const
{
    const QFileInfo own(masterPath());
    const QFileInfo delivered(u"%1/../share/zelto/%2"_s.arg(m_programFolder, MasterName));
    if (!delivered.exists()) {
        if (own.exists())
            return;
        throw DatabaseError(
            ErrorNumber::FileNotFound,
            u"Il database principale «%1» non è stato trovato."_s.arg(masterPath()));
    }
    if (!own.exists() || own.lastModified() < delivered.lastModified())
        copyFile(delivered.absoluteFilePath(), own.absoluteFilePath(), Existing::Replace);
}

} // namespace zelto::store

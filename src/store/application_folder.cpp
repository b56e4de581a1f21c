// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/application_folder.h"

#include "store/file_operations.h"
#include "store/files/database_error.h"
#include "store/master_database.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>
#include <QStringList>

namespace zelto::store {

namespace {

constexpr QStringView MasterName = u"Zelto.mdb";

/// A file that is delivered with the program.
QString deliveredPath(const QString& programFolder, QStringView name)
{
    return u"%1/../share/zelto/%2"_s.arg(programFolder, name);
}

/// What root could write there does not belong to the program's user.
bool isPortable(const QString& programFolder)
{
    static const QStringList SystemFolders{u"/bin"_s, u"/usr/bin"_s, u"/usr/games"_s,
                                           u"/usr/local/bin"_s};
    return !SystemFolders.contains(QDir::cleanPath(programFolder)) &&
           QFileInfo(programFolder).isWritable();
}

/// Why the master database cannot be used; empty when it can, and while another program writes it.
QString faultOf(const QFileInfo& master)
{
    if (!master.isFile())
        return u"«%1» non è un file."_s.arg(master.filePath());
    try {
        (void)groupDescriptions(master.filePath());
    } catch (const DatabaseError& error) {
        if (error.number() != ErrorNumber::InUse)
            return error.description();
    }
    return {};
}

} // namespace

ApplicationFolder::ApplicationFolder(const QString& programFolder, const QString& userFolder)
    : m_programFolder(programFolder), m_path(isPortable(programFolder) ? programFolder : userFolder)
{
    QDir().mkpath(m_path);
    if (!QFileInfo(m_path).isWritable())
        useRuntimeFolder();
    m_masterPath = u"%1/%2"_s.arg(m_path, MasterName);
}

void ApplicationFolder::useRuntimeFolder()
{
    const QString folder =
        QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation) + u"/zelto"_s;
    if (!QDir().mkpath(folder) || !QFileInfo(folder).isWritable())
        return;
    m_remarks << u"La cartella «%1» non si può scrivere: impostazioni, copie dei lavori e file di "
                 "testo vanno in «%2», che resta solo fino alla fine della sessione."_s.arg(m_path,
                                                                                            folder);
    m_path = folder;
}

QString ApplicationFolder::userFolder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation) + u"/zelto"_s;
}

QString ApplicationFolder::examplePath() const
{
    return QFileInfo(deliveredPath(m_programFolder, u"CONDOMINIO-ESEMPIO.ZLT")).canonicalFilePath();
}

void ApplicationFolder::provideMaster()
{
    const QFileInfo own(m_masterPath);
    const QFileInfo delivered(deliveredPath(m_programFolder, MasterName));
    if (!delivered.exists()) {
        if (own.exists())
            return;
        throw DatabaseError(
            ErrorNumber::FileNotFound,
            u"Il database principale «%1» non è stato trovato."_s.arg(m_masterPath));
    }
    const QString fault = own.exists() ? faultOf(own) : QString();
    const bool isFit = own.exists() && fault.isEmpty();
    if (isFit && own.lastModified() >= delivered.lastModified())
        return;
    if (!fault.isEmpty()) {
        const QString damaged = m_path + u"/Zelto.mdb.DAN"_s;
        QFile::remove(damaged);
        QFile::rename(m_masterPath, damaged);
        m_remarks << u"Il database principale è stato sostituito da quello del programma: %1\n"
                     "Il file di prima è «%2»."_s.arg(fault, damaged);
    }
    try {
        copyFile(delivered.absoluteFilePath(), m_masterPath, Existing::Replace);
    } catch (const DatabaseError&) {
        if (!isFit)
            m_masterPath = delivered.absoluteFilePath();
    }
}

} // namespace zelto::store

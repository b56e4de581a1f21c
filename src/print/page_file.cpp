// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/page_file.h"

#include "print/print_error.h"
#include "store/files/own_file.h"

#include <QDir>
#include <QScopeGuard>

#include <algorithm>

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

} // namespace

QString TempFolder(const QString& applicationFolder)
{
    const QString folder = qEnvironmentVariable("TEMP");
    return folder.isEmpty() ? applicationFolder : folder;
}

QString pageFileName(int index)
{
    return u"~VKM%1.Tmp"_s.arg(index % 10'000, 4, 10, QLatin1Char{'0'});
}

QString pageFilePath(const QString& folder, int index)
{
    return QDir{folder}.filePath(pageFileName(index));
}

void deletePageFiles(const QString& folder)
{
    for (const QString& path : pageFiles(folder))
        if (store::isOwnFile(path))
            QFile::remove(path);
}

bool hasForeignPageFiles(const QString& folder)
{
    return !std::ranges::all_of(pageFiles(folder), store::isOwnFile);
}

void PageFileWriter::open(const QString& path)
{
    abandon();
    // Never through what somebody else left under the name: a page holds personal figures.
    QFile::remove(path);
    m_file.setFileName(path);
    const auto mode = QIODevice::WriteOnly | QIODevice::NewOnly | QIODevice::Unbuffered;
    if (!m_file.open(mode, QFileDevice::ReadOwner | QFileDevice::WriteOwner))
        throw PrintError(PrintErrorNumber::PathAccess, u"Impossibile creare il file di pagina"_s,
                         m_file);
}

qint64 PageFileWriter::close()
{
    writeOut();
    const qint64 length = m_file.size();
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

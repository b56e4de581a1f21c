// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/complete_file.h"

#include "print/print_error.h"
#include "store/file_check.h"
#include "store/files/file_names.h"

#include <QDir>
#include <QFileInfo>

namespace zelto::print {

namespace {

/// The user gets the same words from the layer below.
template <typename Operation>
auto asPrintError(PrintErrorNumber number, Operation&& operation)
{
    try {
        return operation();
    } catch (const store::DatabaseError& error) {
        throw PrintError(number, error.description());
    }
}

} // namespace

CompleteFile::CompleteFile(const QString& path)
    : m_newFile(asPrintError(PrintErrorNumber::PathAccess,
                             [&] { return std::make_unique<store::NewFile>(path); })),
      m_file(m_newFile->path())
{
    open();
}

CompleteFile::CompleteFile(const QString& path, const CompleteFile& neighbour)
    : m_newFile(std::make_unique<store::NewFile>(path, *neighbour.m_newFile)),
      m_file(m_newFile->path())
{
    open();
}

void CompleteFile::open()
{
    if (const QString target = m_newFile->target(); store::isDatabaseFile(target))
        throw PrintError(PrintErrorNumber::PathAccess,
                         u"«%1» è un lavoro e non viene sostituito."_s.arg(target));
    if (!m_file.open(QIODevice::WriteOnly | QIODevice::NewOnly))
        throw PrintError(PrintErrorNumber::PathAccess, u"Impossibile creare il file"_s, m_file);
}

void CompleteFile::finish()
{
    if (!m_file.isOpen())
        return;
    // The file takes what fits on a full disk for written; only flushing again tells the reason.
    if (!m_file.flush() && !m_file.flush())
        throw PrintError(PrintErrorNumber::DeviceFailed, u"Impossibile scrivere il file"_s, m_file);
    m_file.close();
}

void CompleteFile::commit()
{
    finish();
    asPrintError(PrintErrorNumber::DeviceFailed, [this] {
        keepPermissions();
        m_newFile->replace();
    });
}

/// Of the file that it replaces; a link has none of its own.
void CompleteFile::keepPermissions() const
{
    const QFileInfo former(m_newFile->target());
    if (former.isFile() && !former.isSymLink())
        m_newFile->takePermissions(former.filePath());
}

void CompleteFile::commitAll(std::vector<std::unique_ptr<CompleteFile>>& files)
{
    std::vector<std::unique_ptr<store::NewFile>> newFiles;
    for (const auto& file : files) {
        file->finish();
        asPrintError(PrintErrorNumber::DeviceFailed, [&] { file->keepPermissions(); });
        newFiles.push_back(std::move(file->m_newFile));
    }
    asPrintError(PrintErrorNumber::DeviceFailed, [&] { store::NewFile::replaceAll(newFiles); });
}

QString chosenPath(const QString& path)
{
    const QFileInfo found(path);
    if (found.exists() && !found.isFile())
        throw PrintError(PrintErrorNumber::PathAccess, u"«%1» non è un file."_s.arg(path));
    return store::realPath(path);
}

void makeFolder(const QString& path)
{
    if (!QDir().mkpath(path))
        throw PrintError(PrintErrorNumber::PathAccess,
                         u"Impossibile creare la cartella «%1»."_s.arg(path));
}

void makeOwnFolder(const QString& path)
{
    if (QFileInfo(path).isSymLink())
        throw PrintError(PrintErrorNumber::PathAccess,
                         u"«%1» non è una cartella, ma un collegamento."_s.arg(path));
    makeFolder(path);
}

} // namespace zelto::print

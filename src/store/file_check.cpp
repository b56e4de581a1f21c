// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/file_check.h"

#include "store/engine_file.h"
#include "store/files/database_error.h"
#include "store/files/file_names.h"
#include "store/files/passing_folder.h"
#include "store/jet/jet_file.h"
#include "store/job_limits.h"
#include "text/system_reason.h"

#include <QFileInfo>
#include <QtEndian>

#include <string_view>

namespace zelto::store {

namespace {

/// At the head of a journal, and at the end of one that belongs to changes of several files. Those
/// name the file that holds the list of them, and the engine deletes it.
constexpr std::string_view JournalMagic("\xd9\xd5\x05\xf9\x20\xa1\x63\xd7", 8);

/// At the head of a database of this edition.
constexpr QByteArrayView Signature("SQLite format 3\0", 16);

// Places in a journal's head.
constexpr qsizetype PagesAt = 16;
constexpr qsizetype PageSizeAt = 24;
constexpr qint64 JournalHead = 28;

QString journalOf(const QString& path)
{
    return path + u"-journal"_s;
}

DatabaseError refused(QStringView description, const QString& shown)
{
    return {ErrorNumber::NotADatabase, description.toString().arg(shown)};
}

/// The engine gives the file the size that the journal says it had.
void checkFormerSize(const QByteArray& head, const QString& shown)
{
    const auto number = [&](qsizetype place) {
        return qFromBigEndian<quint32>(head.constData() + place);
    };
    // 0 stands for the size that the file has.
    constexpr quint32 LargestPage = 65536;
    const bool given = number(PageSizeAt) != 0 && number(PageSizeAt) < LargestPage;
    requireFileSize(qint64{number(PagesAt)} * (given ? number(PageSizeAt) : LargestPage), shown);
}

void checkJournal(const QString& path, const QString& shown)
{
    const EngineFile journal(path, shown);
    // Every page of the file once, and a little around each.
    constexpr qint64 LargestJournal = LargestFile + LargestFile / 16;
    if (journal.size() > LargestJournal)
        requireFileSize(journal.size(), shown);
    const auto magic = QByteArray::fromRawData(JournalMagic.data(), JournalMagic.size());
    // However short the journal: the engine looks at its end alone.
    if (journal.size() >= magic.size() &&
        journal.read(journal.size() - magic.size(), magic.size()) == magic)
        throw refused(u"«%1» nomina un altro file, come non fa nessun lavoro, e non viene usato. "
                      "«Riparazione archivio» ricostruisce il lavoro senza.",
                      shown);
    const QByteArray head = journal.read(0, JournalHead);
    if (head.size() == JournalHead && head.startsWith(magic))
        checkFormerSize(head, shown);
}

/// Looks at a file beside the job, unless it is gone: another program may just have ended its
/// change.
template <typename Look>
void ifStillThere(Look look)
{
    try {
        look();
    } catch (const DatabaseError& error) {
        if (error.number() != ErrorNumber::FileNotFound)
            throw;
    }
}

} // namespace

void checkFile(const QString& file, const QString& shown)
{
    requirePlainFile(file, shown);
    const QStringList beside = engineFilesOf(file);
    const QStringList besideShown = engineFilesOf(shown);
    for (qsizetype i = 0; i < beside.size(); ++i)
        ifStillThere([&] { requirePlainFile(beside[i], besideShown[i]); });
    const EngineFile bytes(file, shown);
    requireFileSize(bytes.size(), shown);
    checkHeader(bytes.read(0, HeaderSize), shown);
    if (QFileInfo::exists(file + u"-wal"_s))
        throw refused(u"Accanto al file «%1» c'è un registro separato (WAL), che non è ammesso.",
                      shown);
    if (hasJournal(file))
        ifStillThere([&] { checkJournal(journalOf(file), journalOf(shown)); });
}

bool isDatabaseFile(const QString& path)
{
    try {
        const EngineFile bytes(realPath(path), path);
        return bytes.read(0, HeaderSize).startsWith(Signature) || jet::isJetFile(path);
    } catch (const DatabaseError&) {
        return false;
    }
}

void checkHeader(const QByteArray& header, const QString& shown)
{
    constexpr qsizetype WriteVersion = 18;
    constexpr qsizetype ReadVersion = 19;
    constexpr char RollbackJournal = 1;
    if (header.size() < HeaderSize || !header.startsWith(Signature))
        throw refused(u"Il file «%1» non è un database riconosciuto.", shown);
    if (header[WriteVersion] != RollbackJournal || header[ReadVersion] != RollbackJournal)
        throw refused(u"Il file «%1» usa un registro separato (WAL), che non è ammesso.", shown);
}

bool hasJournal(const QString& path)
{
    return QFileInfo(journalOf(path)).size() > 0;
}

QString copyForReading(const QString& path, const QString& shown, const PassingFolder& folder)
{
    if (!folder.isValid())
        throw DatabaseError(ErrorNumber::CannotOpen,
                            u"Il file «%1» non può essere copiato per la lettura (%2)."_s.arg(
                                shown, text::systemReason(folder.error())));
    const QString copy = folder.filePath(u"copia"_s);
    EngineFile source(path, shown);
    source.lockForReading();
    source.copyTo(copy);
    if (hasJournal(path))
        EngineFile(journalOf(path), journalOf(shown)).copyTo(journalOf(copy));
    // Another program may have changed what was looked at before.
    checkFile(copy, shown);
    return copy;
}

} // namespace zelto::store

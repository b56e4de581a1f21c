// SPDX-License-Identifier: GPL-3.0-or-later
// zelto_fuzz_seeds JOB.ZLT FOLDER: small jobs cut out of a whole one. Small files are fuzzed
// faster, and more of their bytes matter. In the folder's subfolder "journals" one of them in the
// midst of a change.
#include "fuzz_journal.h"
#include "store/database.h"
#include "store/schema.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <SQLiteCpp/Database.h>
#include <cstdio>
#include <string_view>

using namespace Qt::StringLiterals;

using namespace zelto::store;

namespace {

/// The job with its first units only, without its long texts and on the smallest pages.
void writeSeed(const QString& example, int units, const QString& path)
{
    QFile::copy(example, path);
    Database job = Database::open(path);
    for (const QStringView table : {TabellaUnita, TabellaVani})
        job.Execute(u"DELETE FROM [%1] WHERE [Riferimento unità] > %2"_s.arg(table).arg(units));
    job.Execute(u"UPDATE [Dati Generali] SET Relazione = NULL, Note = NULL"_s);
    job.Execute(u"UPDATE Variabili SET Var0 = NULL"_s);
    job.Execute(u"PRAGMA page_size = 512"_s);
    job.Execute(u"VACUUM"_s);
}

QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// The job in the midst of a change, with the file beside it that says what was.
void writeInterrupted(const QString& job, const char* mode, const QString& target)
{
    const QTemporaryDir passing;
    const QString path = passing.filePath(u"LAVORO.ZLT"_s);
    QFile::copy(job, path);
    SQLite::Database engine(path.toStdString(), SQLite::OPEN_READWRITE);
    // So small a cache has changed pages written before the end.
    engine.exec(std::string("PRAGMA journal_mode=") + mode +
                "; PRAGMA cache_size=1; BEGIN; UPDATE Vani SET Ambiente = 'x';"
                "UPDATE Variabili SET Var1 = hex(zeroblob(2000))");
    const bool isWal = QFile::exists(path + u"-wal"_s);
    if (isWal)
        engine.exec("COMMIT");
    const QByteArray beside = bytesOf(path + QString::fromLatin1(isWal ? "-wal" : "-journal"));
    QByteArray bytes = bytesOf(path);
    if (isWal) // where the job itself does not tell
        bytes[18] = bytes[19] = '\1';
    const auto view = [](const QByteArray& part) {
        return std::string_view(part.constData(), static_cast<std::size_t>(part.size()));
    };
    QFile file(target);
    file.open(QIODevice::WriteOnly);
    file.write(QByteArray::fromStdString(
        zelto::fuzz::inputOf({.journal = view(isWal ? QByteArray() : beside),
                              .wal = view(isWal ? beside : QByteArray()),
                              .job = view(bytes)})));
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3)
        return 1;
    try {
        writeSeed(arguments[1], 8, QDir(arguments[2]).filePath(u"medium.zlt"_s));
        const QDir folder(arguments[2]);
        const QString small = folder.filePath(u"small.zlt"_s);
        writeSeed(arguments[1], 1, small);
        folder.mkdir(u"journals"_s);
        writeInterrupted(small, "DELETE", folder.filePath(u"journals/journal"_s));
        writeInterrupted(small, "WAL", folder.filePath(u"journals/wal"_s));
    } catch (const DatabaseError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
    return 0;
}

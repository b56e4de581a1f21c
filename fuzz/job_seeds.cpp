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

using namespace zelto::store;

namespace {

/// The job with its first units only, without its long texts and on the smallest pages.
void writeSeed(const QString& example, int units, const QString& path)
{
    QFile::copy(example, path);
    Database job = Database::open(path);
    for (const QStringView table : {TabellaUnita, TabellaVani})
        job.Execute(QStringLiteral("DELETE FROM [%1] WHERE [Riferimento unità] > %2")
                        .arg(table)
                        .arg(units));
    job.Execute(QStringLiteral("UPDATE [Dati Generali] SET Relazione = NULL, Note = NULL"));
    job.Execute(QStringLiteral("UPDATE Variabili SET Var0 = NULL"));
    job.Execute(QStringLiteral("PRAGMA page_size = 512"));
    job.Execute(QStringLiteral("VACUUM"));
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
    const QString path = passing.filePath(QStringLiteral("LAVORO.ZLT"));
    QFile::copy(job, path);
    SQLite::Database engine(path.toStdString(), SQLite::OPEN_READWRITE);
    // So small a cache has changed pages written before the end.
    engine.exec(std::string("PRAGMA journal_mode=") + mode +
                "; PRAGMA cache_size=1; BEGIN; UPDATE Vani SET Ambiente = 'x';"
                "UPDATE Variabili SET Var1 = hex(zeroblob(2000))");
    const bool isWal = QFile::exists(path + QStringLiteral("-wal"));
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
        writeSeed(arguments[1], 8, QDir(arguments[2]).filePath(QStringLiteral("medium.zlt")));
        const QDir folder(arguments[2]);
        const QString small = folder.filePath(QStringLiteral("small.zlt"));
        writeSeed(arguments[1], 1, small);
        folder.mkdir(QStringLiteral("journals"));
        writeInterrupted(small, "DELETE", folder.filePath(QStringLiteral("journals/journal")));
        writeInterrupted(small, "WAL", folder.filePath(QStringLiteral("journals/wal")));
    } catch (const DatabaseError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
    return 0;
}

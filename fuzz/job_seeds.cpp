// SPDX-License-Identifier: GPL-3.0-or-later
// zelto_fuzz_seeds JOB.ZLT FOLDER: small jobs cut out of a whole one. Small files are fuzzed
// faster, and more of their bytes matter.
#include "store/database.h"
#include "store/schema.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>

#include <cstdio>

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

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.size() != 3)
        return 1;
    try {
        writeSeed(arguments[1], 8, QDir(arguments[2]).filePath(QStringLiteral("medium.zlt")));
        writeSeed(arguments[1], 1, QDir(arguments[2]).filePath(QStringLiteral("small.zlt")));
    } catch (const DatabaseError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 2;
    }
    return 0;
}

// SPDX-License-Identifier: GPL-3.0-or-later
// zelto_fuzz_seeds JOB.ZLT FOLDER: small jobs cut out of a whole one. Small files are fuzzed faster,
// and more of their bytes matter.
#include "store/database.h"
#include "store/schema.h"

#include <QCoreApplication>
#include <QDir>

#include <cstdio>

using namespace zelto::store;

namespace {

/// The job with its first units only and without its long texts.
void writeSeed(const QString& job, int units, const QString& path)
{
    Database cut = Database::openCopyInMemory(job);
    for (const QStringView table : {TabellaUnita, TabellaVani})
        cut.Execute(
            QStringLiteral("DELETE FROM [%1] WHERE [Riferimento unità] > %2").arg(table).arg(units));
    cut.Execute(QStringLiteral("UPDATE [Dati Generali] SET Relazione = NULL"));
    cut.Execute(QStringLiteral("VACUUM INTO '%1'").arg(path));
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

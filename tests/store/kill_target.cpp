// SPDX-License-Identifier: GPL-3.0-or-later
// zelto_kill_target OPERATION FOLDER [plain]: works on LAVORO.ZLT of the folder, over and over,
// until it is killed. Writes a line when it begins. With "plain" the file system knows plain
// renames only.
#include "simple_rename.h"
#include "store/database.h"
#include "store/file_operations.h"
#include "store/repair.h"

#include <QCoreApplication>
#include <QDir>

#include <cstdio>
#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace zelto::store;

namespace {

/// So that the job and its backup differ.
void changeJob(const QString& job, int round)
{
    Database database = Database::open(job);
    database.Execute(u"UPDATE ZELTO SET Utente = '%1'"_s.arg(round));
}

void work(const QString& operation, const QDir& folder, int round)
{
    const QString job = folder.filePath(u"LAVORO.ZLT"_s);
    if (operation == u"duplicate"_s) {
        const QString copy = folder.filePath(u"COPIA.ZLT"_s);
        copyDatabase(job, copy);
        deleteFile(copy, [](const QString& /*path*/) { return false; });
        return;
    }
    changeJob(job, round);
    if (operation == u"compact"_s)
        compact(job, folder.filePath(u"LAVORO.BAK"_s));
    else
        repair(job);
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    if (arguments.contains(u"plain"_s))
        zelto::test::allowPlainRenamesOnly();
    std::puts("begin");
    std::fflush(stdout);
    try {
        for (int round = 0;; ++round)
            work(arguments.at(1), QDir(arguments.at(2)), round);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    return EXIT_FAILURE;
}

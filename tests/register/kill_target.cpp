// SPDX-License-Identifier: GPL-3.0-or-later
// zelto_register_kill_target JOB.ZLT: edits two rooms, copies five units and deletes the copies, by
// turns as an operation or by taking the copy back, until it is killed.
#include "register/register.h"
#include "store/database.h"

#include <QCoreApplication>

#include <cstdio>
#include <cstdlib>

int main(int argc, char* argv[])
{
    using namespace zelto;
    const QCoreApplication application(argc, argv);
    std::puts("begin");
    std::fflush(stdout);
    try {
        store::Database job = store::Database::open(QCoreApplication::arguments().at(1));
        registro::Register registro(job);
        registro.EliminaUI({33, 34, 35, 36, 37}); // left by one that was killed
        for (int round = 0;; ++round) {
            const QString name = QString::number(round);
            registro.MemorizzaVano(
                1, {{1, registro::RoomAmbiente, name}, {2, registro::RoomAmbiente, name}});
            registro.DuplicaUI({1, 2, 3, 4, 5});
            if (round % 2 == 0)
                registro.EliminaUI({33, 34, 35, 36, 37});
            else
                registro.undo();
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
    }
    return EXIT_FAILURE;
}

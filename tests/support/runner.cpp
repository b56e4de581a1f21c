// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/runner.h"

#include <QApplication>

#include <cstdio>

using zelto::test::tests;

int main(int argc, char** argv)
{
    const auto test = argc > 1 ? tests().find(QString::fromLocal8Bit(argv[1])) : tests().end();
    if (test == tests().end()) {
        std::fputs("Usage: PROGRAM TEST [options of Qt Test], of the tests\n", stderr);
        for (const auto& [name, maker] : tests())
            std::fprintf(stderr, "  %s\n", qPrintable(name));
        return 1;
    }
    // Qt Test sees a program of this one test.
    argv[1] = argv[0];
    --argc;
    ++argv;
    QApplication application(argc, argv);
    QTEST_SET_MAIN_SOURCE_PATH
    return QTest::qExec(test->second().get(), argc, argv);
}

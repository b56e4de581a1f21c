// SPDX-License-Identifier: GPL-3.0-or-later
// The tests of one folder are one program; its first argument names the one to run.
#pragma once

#include <QTest>

#include <memory>

namespace zelto::test {

// For all tests, so that no file says it again.
using namespace Qt::StringLiterals;

/// One test of the program.
struct Registered
{
    using Maker = std::unique_ptr<QObject> (*)();

    /// file is the source, by whose name the test is run.
    Registered(const char* file, Maker maker);
};

} // namespace zelto::test

#define ZELTO_TEST(Test)                                                                           \
    static const zelto::test::Registered registered(                                               \
        __FILE__, +[]() -> std::unique_ptr<QObject> { return std::make_unique<Test>(); });

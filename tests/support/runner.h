// SPDX-License-Identifier: GPL-3.0-or-later
// The tests of one folder are one program; its first argument names the one to run.
#pragma once

#include <QFileInfo>
#include <QTest>

#include <map>
#include <memory>

namespace zelto::test {

// For all tests, so that no file says it again.
using namespace Qt::StringLiterals;

/// The tests of the program, by the names of their sources.
inline auto& tests()
{
    static std::map<QString, std::unique_ptr<QObject> (*)()> all;
    return all;
}

} // namespace zelto::test

#define ZELTO_TEST(Test)                                                                           \
    [[maybe_unused]] static const auto registered = zelto::test::tests().emplace(                  \
        QFileInfo(QStringLiteral(__FILE__)).completeBaseName(),                                    \
        []() -> std::unique_ptr<QObject> { return std::make_unique<Test>(); });

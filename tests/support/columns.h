// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTest>

namespace zelto::test {

template <typename>
using ColumnName = const char*;

/// The columns of a data-driven test; what it gives adds a row: its name, and a value of each.
template <typename... Values>
auto columns(ColumnName<Values>... names)
{
    (QTest::addColumn<Values>(names), ...);
    return [](const char* row, const Values&... values) { (QTest::newRow(row) << ... << values); };
}

} // namespace zelto::test

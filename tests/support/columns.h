// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QTest>

namespace zelto::test {

/// The columns of a data-driven test. Called with a name and a value for each, it adds a row.
template <typename... Types>
class Columns
{
public:
    template <typename... Names>
    explicit Columns(Names... names)
    {
        (QTest::addColumn<Types>(names), ...);
    }

    void operator()(const char* name, const Types&... values) const
    {
        (QTest::addRow("%s", name) << ... << values);
    }
};

} // namespace zelto::test

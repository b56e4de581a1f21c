// SPDX-License-Identifier: GPL-3.0-or-later
// RapidCheck properties inside Qt Test functions.
#pragma once

#include <QTest>

#include <rapidcheck.h>
#include <string>
#include <utility>

namespace zelto::test {

/// Runs the property on random input; a counterexample fails the running test function.
template <typename Testable>
bool holds(const std::string& description, Testable&& property)
{
    return rc::check(description, std::forward<Testable>(property));
}

} // namespace zelto::test

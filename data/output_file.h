// SPDX-License-Identifier: GPL-3.0-or-later
// What the programs that build the delivered databases have in common.
#pragma once

#include <QString>

#include <functional>

namespace zelto::data {

/// Has the file written beside the output and swaps names at the end, so that a fault leaves the
/// old one.
void buildFile(const QString& output, const std::function<void(const QString& path)>& write);

/// The main function of a program with two arguments, what it reads and what it builds. Returns
/// its exit status.
int runBuilder(int argc, char** argv, const char* usage,
               const std::function<void(const QString& input, const QString& output)>& build);

} // namespace zelto::data

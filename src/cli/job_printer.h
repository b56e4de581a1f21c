// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/console.h"
#include "cli/options.h"

namespace zelto::cli {

/// Prints one of the jobs as the command line asks, leaving its file as it is. What cannot be read
/// or printed is reported to the user and gives false.
bool printJob(const Options& options, const QString& lavoro, Console& user);

} // namespace zelto::cli

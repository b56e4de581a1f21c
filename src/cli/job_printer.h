// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "cli/console.h"
#include "cli/options.h"

namespace zelto::cli {

/// Prints one of the jobs as the command line asks, leaving its file as it is. The user hears of
/// what makes its figures wrong. What cannot be read or printed is reported and gives JobFailed.
ExitStatus printJob(const Options& options, const QString& lavoro, Console& user);

/// Writes what is odd in the job to standard output, a line for each remark. ErrorsFound when one
/// is an error; a job that cannot be read is reported to the user and gives JobFailed.
ExitStatus checkJob(const QString& lavoro, Console& user);

} // namespace zelto::cli

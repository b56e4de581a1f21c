// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/job_check.h"

namespace zelto::reports {

/// The names of a job as paper shows them where they have the least room, for the check of the job.
[[nodiscard]] calc::SullaCarta sullaCarta();

} // namespace zelto::reports

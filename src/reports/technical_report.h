// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reports/report_context.h"

namespace zelto::reports {

/// Draws the technical report as justified text over as many pages as it needs; nothing when the
/// job has none.
void StampaRelazione(const ReportContext& context);

} // namespace zelto::reports

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reports/report_context.h"

namespace zelto::reports {

/// Draws the cover page: job reference, title, descriptions, date and as much of the notes as fits.
void StampaPrimaPagina(const ReportContext& context);

} // namespace zelto::reports

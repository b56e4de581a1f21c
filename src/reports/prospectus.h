// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reports/report_page.h"
#include "reports/table_kinds.h"

namespace zelto::reports {

enum class FormatoDettaglio {
    Esteso,  ///< every unit on a page of its own
    Compatto ///< units follow each other as long as they fit
};

/// The calculation prospectus: every unit with its rooms, their sizes and coefficients. Also writes
/// "consistenza.out", one line per room. A building without units prints nothing.
void StampaProspetto(ReportPage& page, const ReportContext& context, const SizedJob& job,
                     FormatoDettaglio formato);

/// Throws CalcError, naming unit, room and column, when a figure of the prospectus does not fit its
/// column.
void controllaProspetto(const SizedJob& job);

} // namespace zelto::reports

// SPDX-License-Identifier: GPL-3.0-or-later
// What is drawn beside the tables; each has a source of its own.
#pragma once

#include "reports/report_page.h"
#include "reports/table_kinds.h"

namespace zelto::reports {

/// The cover page: job reference, title, descriptions, date and as much of the notes as fits.
void StampaPrimaPagina(const ReportContext& context);

/// The technical report as justified text over as many pages as it needs; nothing when the job has
/// none.
void StampaRelazione(const ReportContext& context);

/// The shares of a table as bars in the order of the units, on pages of their own: those of the
/// units that the table is about.
void StampaGrafico(ReportPage& page, const ReportContext& context, const TableReport& table);

enum class FormatoDettaglio {
    Esteso,  ///< every unit on a page of its own
    Compatto ///< units follow each other as long as they fit
};

/// The calculation prospectus: every unit with its rooms, their sizes and coefficients. Also writes
/// its text file, one line per room. A building without units prints nothing.
void StampaProspetto(ReportPage& page, const ReportContext& context, const SizedJob& job,
                     FormatoDettaglio formato);

/// The name of a room as the prospectus prints it left of its size.
[[nodiscard]] QString roomNameOnPaper(const print::PrintEngine& engine, const QString& name,
                                      float CR);

/// The name of its text file.
inline const QString ConsistenzaOut = u"consistenza.out"_s;

/// Throws CalcError, naming unit, room and column, when a figure of the prospectus does not fit its
/// column.
void controllaProspetto(const SizedJob& job);

} // namespace zelto::reports

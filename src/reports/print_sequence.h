// SPDX-License-Identifier: GPL-3.0-or-later
// What one press of a print button draws, in its order.
#pragma once

#include "reports/allocation_section.h"
#include "reports/prospectus.h"
#include "reports/report_context.h"
#include "reports/table_report.h"

#include <vector>

namespace zelto::reports {

// What the two documents are called.
inline const QString DocumentoCalcolo = u"Tabelle millesimali"_s;
inline const QString DocumentoRiparto = u"Riparto importo"_s;

/// The sections of a print, in the order in which they are drawn.
struct SezioniStampa
{
    bool primaPagina = true;
    bool relazione = true;
    bool calcolo = true;
};

/// What belongs to the calculation sections.
struct OpzioniCalcolo
{
    bool dettaglio = true;
    bool generali = true;
    bool tabelle = true;
    bool scale = true;
    FormatoDettaglio formato = FormatoDettaglio::Compatto;
    calc::IndicePiano indice = calc::IndicePiano::PerConsistenza;
    int primaPagina = 1; ///< number of the first calculation page
};

/// The tables among the calculation sections, in the order of printing.
std::vector<TableReport> tabelleScelte(const calc::ModelloLavoro& modello,
                                       const OpzioniCalcolo& opzioni);

/// The table of the allocation; none without units.
std::vector<TableReport> tabelleScelte(const calc::ModelloLavoro& modello,
                                       const OpzioniRiparto& opzioni);

/// Cover page, technical report and calculation sections, with their text files. Throws CalcError,
/// and then has drawn and written nothing, when a figure does not fit its column.
void StampaMillesimi(const ReportContext& context, const SezioniStampa& sezioni,
                     const OpzioniCalcolo& opzioni);

/// Cover page, technical report and the allocation of an amount. Throws CalcError likewise.
void StampaRiparto(const ReportContext& context, const SezioniStampa& sezioni,
                   const OpzioniRiparto& opzioni);

} // namespace zelto::reports

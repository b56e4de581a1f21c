// SPDX-License-Identifier: GPL-3.0-or-later
// The tables of shares: general, special and by staircase.
#pragma once

#include "calc/modello_lavoro.h"
#include "calc/shares.h"
#include "calc/staircase_shares.h"
#include "reports/report_page.h"
#include "reports/table_report.h"

namespace zelto::reports {

// They throw CalcError when a figure does not fit its column.

TableReport tabellaGenerale(const calc::ModelloLavoro& modello);

/// Special table t, 1 to 10.
TableReport tabellaSpeciale(const calc::ModelloLavoro& modello, int t);

TableReport tabellaScala(const calc::ModelloLavoro& modello, const calc::QuoteScala& quote);

/// "  DETERMINAZIONE MILLESIMI " and the staircase's title, or "SCALA " and its code without one.
QString titoloScala(const calc::ModelloLavoro& modello, const QString& codice);

/// Each section starts on a page of its own. The general table and the staircases also write
/// "calcolo.out" and "scale.out"; a building without units, tables or staircases prints nothing.
void StampaMillesimiGenerali(ReportPage& page, const ReportContext& context);
void StampaTabelle(ReportPage& page, const ReportContext& context);
void StampaScale(ReportPage& page, const ReportContext& context, calc::IndicePiano indice);

} // namespace zelto::reports

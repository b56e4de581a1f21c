// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/print_sequence.h"

#include "reports/cover_page.h"
#include "reports/tables.h"
#include "reports/technical_report.h"

namespace zelto::reports {

namespace {

void stampaPezziIniziali(const ReportContext& context, const SezioniStampa& sezioni)
{
    if (sezioni.primaPagina)
        StampaPrimaPagina(context);
    if (sezioni.relazione)
        StampaRelazione(context);
}

void stampaCalcolo(const ReportContext& context, const OpzioniCalcolo& opzioni)
{
    context.user.SetStatus(QStringLiteral("Stampa prospetto dei calcoli"), true);
    ReportPage page(context, opzioni.primaPagina);
    if (opzioni.dettaglio)
        StampaProspetto(page, context, opzioni.formato);
    if (opzioni.generali)
        StampaMillesimiGenerali(page, context);
    if (opzioni.tabelle)
        StampaTabelle(page, context);
    if (opzioni.scale)
        StampaScale(page, context, opzioni.indice);
}

} // namespace

void StampaMillesimi(const ReportContext& context, const SezioniStampa& sezioni,
                     const OpzioniCalcolo& opzioni)
{
    stampaPezziIniziali(context, sezioni);
    if (sezioni.calcolo)
        stampaCalcolo(context, opzioni);
}

void StampaRiparto(const ReportContext& context, const SezioniStampa& sezioni,
                   const OpzioniRiparto& opzioni)
{
    stampaPezziIniziali(context, sezioni);
    if (sezioni.calcolo)
        StampaSezioneRiparto(context, opzioni);
}

} // namespace zelto::reports

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

/// Throws CalcError when a figure cannot be printed whole.
void controllaCalcolo(const calc::ModelloLavoro& modello, const OpzioniCalcolo& opzioni)
{
    if (opzioni.dettaglio)
        controllaProspetto(modello);
    (void)tabelleScelte(modello, opzioni);
}

void stampaCalcolo(const ReportContext& context, const OpzioniCalcolo& opzioni)
{
    context.user.SetStatus(u"Stampa prospetto dei calcoli"_s, true);
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

std::vector<TableReport> tabelleScelte(const calc::ModelloLavoro& modello,
                                       const OpzioniCalcolo& opzioni)
{
    std::vector<TableReport> tables;
    if (modello.unita.empty())
        return tables;
    if (opzioni.generali)
        tables.push_back(tabellaGenerale(modello));
    for (int t = 1; opzioni.tabelle && t <= modello.NumTabelle(); ++t)
        tables.push_back(tabellaSpeciale(modello, t));
    if (opzioni.scale) {
        const calc::Consistenze consistenze = calc::calcolaConsistenze(modello);
        for (const QString& codice : calc::elencoScale(modello))
            tables.push_back(tabellaScala(
                modello, calc::calcolaScala(modello, consistenze, codice, opzioni.indice)));
    }
    return tables;
}

std::vector<TableReport> tabelleScelte(const calc::ModelloLavoro& modello,
                                       const OpzioniRiparto& opzioni)
{
    if (modello.unita.empty())
        return {};
    return {tabellaRiparto(modello, opzioni)};
}

// What is refused is so first of all, and leaves nothing on paper and in files.

void StampaMillesimi(const ReportContext& context, const SezioniStampa& sezioni,
                     const OpzioniCalcolo& opzioni)
{
    if (sezioni.calcolo)
        controllaCalcolo(context.modello, opzioni);
    stampaPezziIniziali(context, sezioni);
    if (sezioni.calcolo)
        stampaCalcolo(context, opzioni);
}

void StampaRiparto(const ReportContext& context, const SezioniStampa& sezioni,
                   const OpzioniRiparto& opzioni)
{
    const TableReport tabella =
        sezioni.calcolo ? tabellaRiparto(context.modello, opzioni) : TableReport();
    stampaPezziIniziali(context, sezioni);
    if (sezioni.calcolo)
        StampaSezioneRiparto(context, tabella);
}

} // namespace zelto::reports

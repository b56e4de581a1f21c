// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/allocation_section.h"

#include "reports/figures.h"
#include "reports/tables.h"
#include "text/decimal_text.h"
#include "text/format_mask.h"

namespace zelto::reports {

namespace {

using calc::Millesimi;
using calc::ModelloLavoro;

/// Hundredths in the mask, then grouped by thousands; nothing for 0.
QString importoTesto(double cent, QStringView mask)
{
    return text::FormatGroupedComma(text::FormatMask(mask, text::decimalText(cent / 100)));
}

std::vector<TableColumn> shareColumns()
{
    return {{.head = u"RIFERIMENTO"_s, .position = 10, .side = Side::Left, .width = 29},
            {.head = u"LIVELLO"_s, .position = 40, .side = Side::Left, .width = 27},
            {.head = u"CONS.TOT."_s, .position = 80, .decimals = 4},
            {.head = u"MILLESIMI"_s, .position = 100, .decimals = 3},
            {.head = u"IMPORTO"_s, .position = 120, .decimals = 2}};
}

std::vector<TableColumn> staircaseColumns()
{
    return {{.head = u"RIFERIMENTO"_s, .position = 8, .side = Side::Left, .width = 26},
            {.head = u"LIVELLO"_s, .position = 35, .side = Side::Left, .width = 18},
            {.head = u"CONS.VIRT."_s, .position = 65, .decimals = 4},
            {.head = u"M.PROP."_s, .position = 77, .decimals = 3},
            {.head = u"IND.H.P."_s, .position = 88, .decimals = 4},
            {.head = u"M.PIANO"_s, .position = 100, .decimals = 3},
            {.head = u"M.SCALA"_s, .position = 112, .decimals = 3},
            {.head = u"IMPORTO"_s, .position = 127, .decimals = 2}};
}

/// The table of the shares with a column of parts behind it.
TableReport withParts(TableReport table, std::vector<TableColumn> columns,
                      const ModelloLavoro& modello, const std::vector<Millesimi>& shares,
                      const OpzioniRiparto& opzioni)
{
    const double totale = calc::importoCent(opzioni.importo);
    const std::vector<double> quote =
        calc::calcolaQuote(modello, shares, totale, opzioni.arrotondamento);
    table.name = u"Riparto "_s + table.name;
    if (opzioni.arrotondamento == calc::Arrotondamento::AQuadratura)
        table.note = u"IMPORTI CON QUADRATURA AL CENTESIMO"_s;
    table.columns = std::move(columns);
    for (std::size_t u = 0; u < table.rows.size(); ++u)
        table.rows[u] << importoTesto(quote[u], u"######0.00");
    table.totals << importoTesto(totale, u"########0.00");
    return table;
}

/// Builds the table for each kind of share set.
struct TableOf
{
    const ModelloLavoro& modello;
    const OpzioniRiparto& opzioni;

    TableReport operator()(const MillesimiGenerali&) const
    {
        return withParts(tabellaGenerale(modello), shareColumns(), modello,
                         calc::calcolaMillGen(calc::calcolaConsistenze(modello)), opzioni);
    }

    TableReport operator()(const TabellaSpecifica& scelta) const
    {
        const auto consistenze = calc::calcolaConsistenze(modello);
        return withParts(tabellaSpeciale(modello, scelta.t), shareColumns(), modello,
                         calc::calcolaMillTab(modello, consistenze, scelta.t), opzioni);
    }

    TableReport operator()(const MillesimiScala& scelta) const
    {
        const auto quote = calc::calcolaScala(modello, calc::calcolaConsistenze(modello),
                                              scelta.codice, scelta.indice);
        return withParts(tabellaScala(modello, quote), staircaseColumns(), modello, quote.MillScala,
                         opzioni);
    }
};

} // namespace

TableReport tabellaRiparto(const ModelloLavoro& modello, const OpzioniRiparto& opzioni)
{
    return std::visit(TableOf{modello, opzioni}, opzioni.quote);
}

void StampaSezioneRiparto(const ReportContext& context, const TableReport& tabella)
{
    context.user.SetStatus(u"Stampa riparto importo"_s, true);
    ReportPage page(context, 1);
    printTable(page, tabella, Paging::FortyFiveUnits);
}

} // namespace zelto::reports

// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/allocation_table.h"

#include "text/decimal_text.h"
#include "text/format_mask.h"

#include <algorithm>

namespace zelto::reports {

namespace {

/// Hundredths in the mask, then grouped by thousands; nothing for 0.
Cell importo(double cent, QStringView mask)
{
    QString text = text::FormatGroupedComma(text::FormatMask(mask, text::decimalText(cent / 100)));
    return text.isEmpty() ? Cell() : Cell{std::move(text), cent / 100};
}

TableReport tabellaQuote(const SizedJob& job, const InsiemeQuote& quote)
{
    const std::vector<TableChoice> choices = quote.kind->choices(job.modello);
    const auto choice = std::ranges::find(choices, quote.key, &TableChoice::key);
    if (choice == choices.end())
        throw calc::CalcError(quote.kind->missing(quote.key, choices.size()));
    return quote.kind->table(job, *choice, quote.indice);
}

} // namespace

TableReport tabellaRiparto(const SizedJob& job, const OpzioniRiparto& opzioni)
{
    TableReport table = tabellaQuote(job, opzioni.quote);
    const double totale = calc::importoCent(opzioni.importo);
    const std::vector<double> quote =
        calc::calcolaQuote(job.modello, table.shares, totale, opzioni.arrotondamento);
    table.name = u"Riparto "_s + table.name;
    if (opzioni.arrotondamento == calc::Arrotondamento::AQuadratura)
        table.note = u"IMPORTI CON QUADRATURA AL CENTESIMO"_s;
    table.paging = Paging::FortyFiveUnits;
    table.columns = opzioni.quote.kind->allocationColumns;
    for (std::size_t u = 0; u < table.rows.size(); ++u)
        table.rows[u].cells.push_back(importo(quote[u], u"######0.00"));
    table.totals.push_back(importo(totale, u"########0.00"));
    return table;
}

} // namespace zelto::reports

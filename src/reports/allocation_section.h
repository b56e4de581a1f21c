// SPDX-License-Identifier: GPL-3.0-or-later
// The allocation of an amount among the units, as a printed section.
#pragma once

#include "calc/allocation.h"
#include "calc/staircase_shares.h"
#include "reports/report_context.h"
#include "reports/table_report.h"

#include <QString>

#include <variant>

namespace zelto::reports {

/// The set of shares an amount is divided by.
struct MillesimiGenerali
{};
struct TabellaSpecifica
{
    int t = 1; ///< special table, 1 to 10
};
struct MillesimiScala
{
    QString codice;
    calc::IndicePiano indice = calc::IndicePiano::PerConsistenza;
};
using InsiemeQuote = std::variant<MillesimiGenerali, TabellaSpecifica, MillesimiScala>;

struct OpzioniRiparto
{
    QString importo; ///< as typed, with either decimal separator
    InsiemeQuote quote;
    calc::Arrotondamento arrotondamento = calc::Arrotondamento::PerQuota;
};

/// The section as a table: shares and part of every unit, the amount below. Throws CalcError when
/// the amount cannot be printed whole.
TableReport tabellaRiparto(const calc::ModelloLavoro& modello, const OpzioniRiparto& opzioni);

/// Prints the section, 45 units to a page, pages numbered from 1.
void StampaSezioneRiparto(const ReportContext& context, const TableReport& tabella);

} // namespace zelto::reports

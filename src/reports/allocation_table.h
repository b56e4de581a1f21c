// SPDX-License-Identifier: GPL-3.0-or-later
// The allocation of an amount among the units.
#pragma once

#include "calc/allocation.h"
#include "reports/table_kinds.h"

#include <QString>

namespace zelto::reports {

/// The set of shares an amount is divided by: a table of one of the kinds.
struct InsiemeQuote
{
    const TableKind* kind = &tableKinds().front();
    QString key = {};
    calc::IndicePiano indice = calc::IndicePiano::PerConsistenza;
};

struct OpzioniRiparto
{
    QString importo; ///< as typed, with either decimal separator
    InsiemeQuote quote = {};
    calc::Arrotondamento arrotondamento = calc::Arrotondamento::PerQuota;
};

/// The table of the shares with the part of every unit, the amount below. Throws CalcError when the
/// job has no such shares or the amount cannot be printed whole.
TableReport tabellaRiparto(const SizedJob& job, const OpzioniRiparto& opzioni);

} // namespace zelto::reports

// SPDX-License-Identifier: GPL-3.0-or-later
// The parts of an amount that fall to the units.
#pragma once

#include "calc/calc_error.h"
#include "calc/millesimi.h"
#include "calc/modello_lavoro.h"

#include <QString>

#include <span>
#include <vector>

namespace zelto::calc {

/// The amount of a text in hundredths: both separators are read, blanks do not count, a text
/// without a number is 0.
double importoCent(const QString& importo);

/// The part of a share: share × amount / 1000 in whole hundredths, halves to the even one.
double quotaCent(Millesimi share, double importoCent);

/// How parts become whole hundredths.
enum class Arrotondamento {
    PerQuota,   ///< each is rounded by itself: together they may miss the amount
    AQuadratura ///< by largest remainder, the first of equal ones first: together they are the
                ///< amount, where the shares are 1000
};

/// One part in hundredths for every unit. Throws CalcError, naming the unit, when a part or the
/// amount is too large to be printed whole (999 999 999,99 in all, 9 999 999,99 for a unit).
std::vector<double> calcolaQuote(const ModelloLavoro& modello, std::span<const Millesimi> shares,
                                 double importoCent,
                                 Arrotondamento arrotondamento = Arrotondamento::PerQuota);

} // namespace zelto::calc

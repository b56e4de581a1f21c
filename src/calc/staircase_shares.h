// SPDX-License-Identifier: GPL-3.0-or-later
// Shares of a staircase: ownership, floor and the two combined.
#pragma once

#include "calc/millesimi.h"
#include "calc/modello_lavoro.h"
#include "calc/shares.h"

#include <QString>

#include <vector>

namespace zelto::calc {

/// Weight of the floor share, in per cent, where the table of codes gives none: half, as article
/// 1124 of the civil code has it.
inline constexpr double PercentualeUsuale = 50;

/// How the height-weighted size of a unit is formed.
enum class IndicePiano {
    PerConsistenza, ///< height factor times size
    Proporzionale,  ///< the height factor divided among the units of equal height by size
};

/// The shares of one staircase, one entry for every unit of the model; units of other staircases
/// hold 0.
struct QuoteScala
{
    QString codice;
    std::vector<Millesimi> MillProp;  ///< ownership within the staircase
    std::vector<float> IndHP;         ///< height-weighted size, base of the floor share
    std::vector<Millesimi> MillPiano; ///< floor share
    std::vector<Millesimi> MillScala; ///< staircase share
};

/// The staircase codes of the units in the order of their first appearance; blank ones are none.
std::vector<QString> elencoScale(const ModelloLavoro& modello);

/// Weight of the floor share in a staircase share, 0.5 for 50 per cent.
double pesoDelPiano(const ModelloLavoro& modello, const QString& codice);

/// Shares of the units whose staircase code equals the given one (article 1124 of the civil code).
/// The floor share weighs with the percentage of the table of codes, one half when none is given.
QuoteScala calcolaScala(const ModelloLavoro& modello, const Consistenze& consistenze,
                        const QString& codice, IndicePiano indice);

} // namespace zelto::calc

// SPDX-License-Identifier: GPL-3.0-or-later
// Sizes of units, general shares and the shares of the special tables.
#pragma once

#include "calc/millesimi.h"
#include "calc/modello_lavoro.h"

#include <vector>

namespace zelto::calc {

/// Sizes of the units and their sum, in the unit order of the model.
struct Consistenze
{
    std::vector<double> CTUI;
    double TotaleCT = 0;
};

/// Fills in the sizes CF, CVT and CT of a room. The products are formed in double precision and
/// each is stored as a single before the next uses it.
void calcolaVano(Vano& vano);

/// The sizes of the units with their sum.
Consistenze consistenzeDi(std::vector<double> CTUI);

/// Total size of every unit.
Consistenze calcolaConsistenze(const ModelloLavoro& modello);

/// General shares (article 68 of the implementing rules of the civil code), one per unit, together
/// exactly 1000 unless the building has no size at all.
std::vector<Millesimi> calcolaMillGen(const Consistenze& consistenze);

/// Shares of special table t (1 to 10; article 1123 of the civil code): 0 for units that take no
/// part, together exactly 1000 unless those that do have no size.
std::vector<Millesimi> calcolaMillTab(const ModelloLavoro& modello, const Consistenze& consistenze,
                                      int t);

} // namespace zelto::calc

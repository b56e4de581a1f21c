// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/shares.h"

#include "calc/share_rule.h"

#include <numeric>
#include <utility>

namespace zelto::calc {

void calcolaVano(Vano& vano)
{
    vano.CF = static_cast<float>(double{vano.CR} * vano.CD);
    vano.CVT = static_cast<float>(double{vano.CF} * vano.CO * vano.CP * vano.CL * vano.CFU);
    vano.CT = static_cast<float>(double{vano.CVT} * vano.PR);
}

Consistenze consistenzeDi(std::vector<double> CTUI)
{
    Somma TotaleCT;
    for (const double totale : CTUI)
        TotaleCT.add(totale);
    return {.CTUI = std::move(CTUI), .TotaleCT = TotaleCT.value()};
}

Consistenze calcolaConsistenze(const ModelloLavoro& modello)
{
    std::vector<double> CTUI;
    CTUI.reserve(modello.unita.size());
    for (const UnitaImmobiliare& unita : modello.unita) {
        double totale = 0;
        for (const Vano& vano : unita.vani)
            totale += vano.CT;
        CTUI.push_back(totale);
    }
    return consistenzeDi(std::move(CTUI));
}

std::vector<Millesimi> calcolaMillGen(const Consistenze& consistenze)
{
    Partecipanti tutte(consistenze.CTUI.size());
    std::iota(tutte.begin(), tutte.end(), 0U);
    return quoteChiuse(consistenze.CTUI, tutte);
}

std::vector<Millesimi> calcolaMillTab(const ModelloLavoro& modello, const Consistenze& consistenze,
                                      int t)
{
    Partecipanti partecipanti;
    for (std::size_t u = 0; u < modello.unita.size(); ++u)
        if (modello.unita[u].isInTable(t))
            partecipanti.push_back(u);
    return quoteChiuse(consistenze.CTUI, partecipanti);
}

} // namespace zelto::calc

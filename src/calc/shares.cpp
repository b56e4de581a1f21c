// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/shares.h"

#include "calc/share_rule.h"

#include <numeric>

namespace zelto::calc {

void calcolaVano(Vano& vano)
{
    vano.CF = static_cast<float>(double{vano.CR} * vano.CD);
    vano.CVT = static_cast<float>(double{vano.CF} * vano.CO * vano.CP * vano.CL * vano.CFU);
    vano.CT = static_cast<float>(double{vano.CVT} * vano.PR);
}

Consistenze calcolaConsistenze(const ModelloLavoro& modello)
{
    Consistenze consistenze;
    consistenze.CTUI.reserve(modello.unita.size());
    Somma TotaleCT;
    for (const UnitaImmobiliare& unita : modello.unita) {
        double totale = 0;
        for (const Vano& vano : unita.vani)
            totale += vano.CT;
        consistenze.CTUI.push_back(totale);
        TotaleCT.add(totale);
    }
    consistenze.TotaleCT = TotaleCT.value();
    return consistenze;
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

// SPDX-License-Identifier: GPL-3.0-or-later
// Shares and indices that would be cut in print.
#include "calc/check_parts.h"
#include "calc/figures.h"
#include "calc/staircase_shares.h"
#include "text/literals.h"

namespace zelto::calc {

namespace {

/// Looks at one column of figures.
template <typename Figura>
void controllaColonna(const Fabbricato& fabbricato, const std::vector<Figura>& figure,
                      const QString& colonna, Osservazioni& osservazioni)
{
    for (std::size_t u = 0; u < figure.size(); ++u) {
        double figura = 0;
        bool isIntera = false;
        if constexpr (std::is_same_v<Figura, Millesimi>) {
            figura = figure[u].toDouble();
            isIntera = MascheraMillesimi.fits(figura);
        } else {
            figura = figure[u];
            isIntera = MascheraConsistenza.fits(figure[u]);
        }
        if (!isIntera)
            osservazioni.push_back(osservaUnita(Regola::CifraTagliata,
                                                fabbricato.stato.scritto.unita[u], 0,
                                                colonna + u": "_s + cifraTroppoLarga(figura)));
    }
}

} // namespace

void controllaCifre(const Fabbricato& fabbricato, Osservazioni& osservazioni)
{
    const ModelloLavoro& modello = fabbricato.modello;
    if (modello.unita.size() > store::MostUnits)
        return; // nothing of it is ever calculated
    controllaColonna(fabbricato, calcolaMillGen(fabbricato.consistenze), u"millesimi generali"_s,
                     osservazioni);
    for (int t = 1; t <= modello.NumTabelle(); ++t)
        controllaColonna(fabbricato, calcolaMillTab(modello, fabbricato.consistenze, t),
                         u"millesimi di «%1»"_s.arg(modello.NomeTabella[std::size_t(t - 1)]),
                         osservazioni);
    for (const QString& scala : elencoScale(modello)) {
        const QuoteScala quote =
            calcolaScala(modello, fabbricato.consistenze, scala, IndicePiano::PerConsistenza);
        controllaColonna(fabbricato, quote.MillProp, u"millesimi di proprietà"_s, osservazioni);
        controllaColonna(fabbricato, quote.IndHP, u"indice di piano"_s, osservazioni);
        controllaColonna(fabbricato, quote.MillPiano, u"millesimi di piano"_s, osservazioni);
        controllaColonna(fabbricato, quote.MillScala, u"millesimi di scala"_s, osservazioni);
    }
}

} // namespace zelto::calc

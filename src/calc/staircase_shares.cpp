// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/staircase_shares.h"

#include "calc/share_rule.h"

#include <algorithm>

namespace zelto::calc {

namespace {

Partecipanti unitaDellaScala(const ModelloLavoro& modello, const QString& codice)
{
    Partecipanti unita;
    for (std::size_t u = 0; u < modello.unita.size(); ++u)
        if (modello.unita[u].CodScala == codice)
            unita.push_back(u);
    return unita;
}

/// Size of all units of the staircase on the same floor as unit u.
double consistenzaDelPiano(const ModelloLavoro& modello, const Consistenze& consistenze,
                           const Partecipanti& scala, std::size_t u)
{
    Somma totale;
    for (const std::size_t altra : scala)
        if (modello.unita[altra].HPiano == modello.unita[u].HPiano)
            totale.add(consistenze.CTUI[altra]);
    return totale.value();
}

std::vector<float> calcolaIndHP(const ModelloLavoro& modello, const Consistenze& consistenze,
                                const Partecipanti& scala, IndicePiano indice)
{
    std::vector<float> IndHP(modello.unita.size());
    for (const std::size_t u : scala) {
        double valore = modello.unita[u].HPiano * consistenze.CTUI[u];
        if (indice == IndicePiano::Proporzionale) {
            const double gruppo = consistenzaDelPiano(modello, consistenze, scala, u);
            valore = gruppo == 0 ? 0 : valore / gruppo;
        }
        IndHP[u] = static_cast<float>(valore);
    }
    return IndHP;
}

} // namespace

double pesoDelPiano(const ModelloLavoro& modello, const QString& codice)
{
    const CodiceScala* riga = modello.codiceScala(codice);
    const bool data = riga != nullptr && riga->percentuale != 0;
    return (data ? riga->percentuale : PercentualeUsuale) / 100;
}

std::vector<QString> elencoScale(const ModelloLavoro& modello)
{
    std::vector<QString> scale;
    for (const UnitaImmobiliare& unita : modello.unita) {
        const bool blank = unita.CodScala.trimmed().isEmpty();
        if (!blank && std::find(scale.begin(), scale.end(), unita.CodScala) == scale.end())
            scale.push_back(unita.CodScala);
    }
    return scale;
}

QuoteScala calcolaScala(const ModelloLavoro& modello, const Consistenze& consistenze,
                        const QString& codice, IndicePiano indice)
{
    const Partecipanti scala = unitaDellaScala(modello, codice);
    QuoteScala quote;
    quote.codice = codice;
    quote.MillProp = quoteChiuse(consistenze.CTUI, scala);
    quote.IndHP = calcolaIndHP(modello, consistenze, scala, indice);
    const std::vector<double> indici(quote.IndHP.begin(), quote.IndHP.end());
    quote.MillPiano = quoteChiuse(indici, scala);

    const double peso = pesoDelPiano(modello, codice);
    std::vector<double> combinati(modello.unita.size());
    for (const std::size_t u : scala)
        combinati[u] =
            quote.MillPiano[u].toDouble() * peso + quote.MillProp[u].toDouble() * (1 - peso);
    quote.MillScala = quoteChiuse(combinati, scala);
    return quote;
}

} // namespace zelto::calc

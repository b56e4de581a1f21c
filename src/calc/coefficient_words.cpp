// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/coefficient_words.h"

#include "calc/job_loader.h"

#include <algorithm>

namespace zelto::calc {

namespace {

/// The rows of a list in words, as references count them.
std::vector<QString> paroleElenco(const QString& elenco)
{
    std::vector<QString> parole;
    for (const Riga& riga : righeScritte(elenco))
        parole.push_back(u"[%1] %2"_s.arg(riga.celle[1], riga.celle[2]).trimmed());
    return parole;
}

/// The lists of a job, and their rows in words.
struct Elenchi
{
    explicit Elenchi(const ElenchiScritti& scritti) : liste(formaListe(scritti))
    {
        std::ranges::transform(scritti, parole.begin(), paroleElenco);
    }

    QString parola(std::size_t elenco, std::string_view testo)
    {
        if (!testo.starts_with('['))
            return {};
        const int riga = liste[elenco].rowOf(testo);
        return riga > 0 ? parole[elenco].at(static_cast<std::size_t>(riga - 1))
                        : QString::fromUtf8(testo.data(), static_cast<qsizetype>(testo.size()));
    }

    Liste liste;
    std::array<std::vector<QString>, store::Coefficients> parole;
};

ParoleVano paroleVano(const Vano& vano, const VanoScritto& scritto, Elenchi& elenchi)
{
    ParoleVano parole;
    const TestiVano testi = scritto.testi();
    if (formaVano(scritto.ambiente, testi, elenchi.liste) == vano)
        for (std::size_t i = 0; i < parole.size(); ++i)
            parole[i] = elenchi.parola(i, testi[i + 1]);
    return parole;
}

} // namespace

std::vector<std::vector<ParoleVano>> paroleVani(const ModelloLavoro& modello,
                                                const LavoroScritto& scritto)
{
    Elenchi elenchi(scritto.elenchi);
    std::vector<std::vector<ParoleVano>> tutte;
    for (std::size_t u = 0; u < modello.unita.size(); ++u) {
        const auto& vani = modello.unita[u].vani;
        auto& parole = tutte.emplace_back(vani.size());
        for (std::size_t v = 0; v < vani.size(); ++v)
            if (u < scritto.unita.size() && v < scritto.unita[u].vani.size())
                parole[v] = paroleVano(vani[v], scritto.unita[u].vani[v], elenchi);
    }
    return tutte;
}

} // namespace zelto::calc

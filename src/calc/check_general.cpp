// SPDX-License-Identifier: GPL-3.0-or-later
// What is odd in the general data: texts, special tables, staircases.
#include "calc/check_parts.h"
#include "calc/figure_remarks.h"
#include "store/schema.h"
#include "text/decimal_text.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>

namespace zelto::calc {

namespace {

constexpr double MassimaPercentuale = 100;
constexpr int ColonnaPercentuale = 2;

Osservazione osservaDati(Regola regola, Scheda scheda, int riga, const QString& dove,
                         const QString& che)
{
    return {.regola = regola,
            .posto = {.scheda = scheda, .riga = riga},
            .dove = dove.isEmpty() ? u"Dati generali"_s : u"Dati generali, "_s + dove,
            .che = che};
}

Osservazione osservaTabella(Regola regola, int riga, const QString& che)
{
    return osservaDati(regola, Scheda::Tabelle, riga, u"tabella %1"_s.arg(riga), che);
}

/// How far the shares of the tables move if each has the participants of its own column.
double spostamentoDeiNomi(const Fabbricato& fabbricato)
{
    double massimo = 0;
    int tabella = 0; // as it counts
    int colonna = 0; // as it stands
    for (const std::optional<QString>& nome : fabbricato.stato.scritto.dati.NomeTabella) {
        ++colonna;
        if (!nome || ++tabella == colonna)
            continue;
        const auto valgono = calcolaMillTab(fabbricato.modello, fabbricato.consistenze, tabella);
        const auto intesi = calcolaMillTab(fabbricato.modello, fabbricato.consistenze, colonna);
        for (std::size_t u = 0; u < valgono.size(); ++u)
            massimo = std::max(massimo, std::abs((valgono[u] - intesi[u]).toDouble()));
    }
    return massimo;
}

void controllaPercentuale(const Riga& riga, const QString& dove, Osservazioni& osservazioni)
{
    const QString& testo = riga.celle[ColonnaPercentuale];
    const double percentuale = text::readNumber(testo);
    const auto rileva = [&](Regola regola, const QString& che) {
        osservazioni.push_back(osservaDati(regola, Scheda::Scale, riga.numero, dove, che));
        osservazioni.back().posto.campo = ColonnaPercentuale;
    };
    if (testo.isEmpty())
        return;
    if (const QString che = osservaPercentuale(testo); !che.isEmpty())
        rileva(Regola::TestoNonNumero, che);
    else if (percentuale == 0)
        rileva(Regola::PercentualeZero, u"la percentuale 0 vale 50."_s);
    if (percentuale < 0 || percentuale > MassimaPercentuale)
        rileva(Regola::PercentualeFuoriMisura,
               u"la percentuale è %1, fuori da 0 a 100: dà quote negative."_s.arg(
                   text::decimalText(percentuale)));
}

} // namespace

void controllaDati(const Fabbricato& fabbricato, Osservazioni& osservazioni)
{
    const DatiScritti& dati = fabbricato.stato.scritto.dati;
    const auto richiedi = [&](bool isPresente, Regola regola, QStringView campo,
                              const QString& che) {
        if (isPresente)
            return;
        osservazioni.push_back(osservaDati(regola, Scheda::Generale, 0, {}, che));
        const auto& campi = store::jobTable(store::TabellaDatiGenerali).fields;
        osservazioni.back().posto.campo = static_cast<int>(
            std::ranges::find(campi, campo, &store::FieldDef::name) - campi.begin());
    };
    richiedi(!(dati.testi[u"Descrizione"_s] + dati.testi[u"Descrizionee"_s]).trimmed().isEmpty(),
             Regola::DescrizioneMancante, u"Descrizione", u"la descrizione manca."_s);
    richiedi(!fabbricato.modello.datiGenerali[u"Data"_s].isEmpty(), Regola::DataMancante, u"Data",
             u"la data manca."_s);
    richiedi(!dati.testi[u"Relazione"_s].trimmed().isEmpty(), Regola::RelazioneMancante,
             u"Relazione", u"la relazione manca."_s);
}

void controllaTabelle(const Fabbricato& fabbricato, Osservazioni& osservazioni)
{
    const auto& nomi = fabbricato.stato.scritto.dati.NomeTabella;
    const auto isPresente = [](const std::optional<QString>& nome) { return nome.has_value(); };
    std::optional<double> spostamento;
    int tabella = 0; // as it counts
    for (int riga = 1; riga <= store::SpecialTables; ++riga) {
        const auto* const nome = nomi.begin() + (riga - 1);
        if (!nome->has_value()) {
            const auto* const seguente = std::find_if(nome, nomi.end(), isPresente);
            if (seguente == nomi.end())
                return;
            if (!spostamento)
                spostamento = spostamentoDeiNomi(fabbricato);
            osservazioni.push_back(
                osservaTabella(Regola::NomeMancante, riga,
                               u"il nome manca: da «%1» in poi ogni tabella prende i "
                               u"partecipanti di una colonna più a sinistra."_s.arg(**seguente)));
            osservazioni.back().spostamento = spostamento;
            continue;
        }
        ++tabella;
        const auto isPartecipe = [&](const UnitaImmobiliare& unita) {
            return unita.isInTable(tabella);
        };
        const auto& unita = fabbricato.modello.unita;
        if (!unita.empty() && std::ranges::none_of(unita, isPartecipe))
            osservazioni.push_back(osservaTabella(
                Regola::TabellaVuota, riga,
                u"nessuna unità partecipa a «%1»: la spesa non è di nessuno."_s.arg(**nome)));
    }
}

void controllaScale(const Fabbricato& fabbricato, Osservazioni& osservazioni)
{
    std::set<QString> usate;
    for (const UnitaImmobiliare& unita : fabbricato.modello.unita)
        usate.insert(unita.CodScala);
    std::map<QString, int> prime;
    for (const Riga& riga : righeScritte(fabbricato.stato.scritto.dati.tabellaCodici)) {
        const QString codice = riga.celle[0].toUpper();
        if (codice.isEmpty())
            continue;
        const QString dove = u"scala %1 (riga %2)"_s.arg(codice, QString::number(riga.numero));
        const auto rileva = [&](Regola regola, const QString& che) {
            osservazioni.push_back(osservaDati(regola, Scheda::Scale, riga.numero, dove, che));
        };
        if (const auto [prima, isNuova] = prime.emplace(codice, riga.numero); !isNuova)
            rileva(Regola::ScalaDoppia, u"il codice è già alla riga %1, che vale."_s.arg(
                                            QString::number(prima->second)));
        else if (codice.size() > 1)
            rileva(Regola::CodiceLungo, u"il codice ha più di un carattere: nessuna unità lo può "
                                        u"portare."_s);
        else if (!usate.contains(codice))
            rileva(Regola::ScalaSenzaUnita, u"nessuna unità la usa."_s);
        controllaPercentuale(riga, dove, osservazioni);
    }
}

} // namespace zelto::calc

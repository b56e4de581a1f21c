// SPDX-License-Identifier: GPL-3.0-or-later
// What is odd in the lists of coefficients.
#include "calc/check_parts.h"
#include "calc/figure_remarks.h"
#include "store/schema.h"
#include "text/decimal_text.h"

#include <algorithm>
#include <map>

namespace zelto::calc {

namespace {

QString riferimento(const QString& codice)
{
    return u'[' + codice + u']';
}

/// What a row that counts for something else changes: by how much it would change the sizes of the
/// units, and how many rooms use it.
struct Effetto
{
    int vani = 0;
    std::vector<double> variazioni;
};
/// By list and row.
using Effetti = std::map<std::pair<int, int>, Effetto>;

Effetti raccogli(const std::vector<UnitaControllata>& unita)
{
    Effetti effetti;
    for (std::size_t u = 0; u < unita.size(); ++u)
        for (const EffettoElenco& uno : unita[u].effetti) {
            Effetto& effetto = effetti[{uno.elenco, uno.riga}];
            ++effetto.vani;
            effetto.variazioni.resize(unita.size());
            effetto.variazioni[u] += uno.variazione;
        }
    return effetti;
}

/// One list under way.
class Elenco
{
public:
    Elenco(const Fabbricato& fabbricato, int numero, const Effetti& effetti,
           Osservazioni& osservazioni)
        : m_fabbricato(fabbricato), m_numero(numero), m_effetti(effetti),
          m_osservazioni(osservazioni)
    {
        const std::size_t k = static_cast<std::size_t>(numero) - 1;
        m_elenco = &fabbricato.stato.elenchi[k];
        for (const UnitaControllata& unita : fabbricato.stato.unita)
            m_usate |= unita.righeUsate[k];
    }

    void controlla()
    {
        for (int riga = 1; riga <= m_elenco->usate; ++riga)
            controllaRiga(m_elenco->righe[static_cast<std::size_t>(riga) - 1]);
        controllaEscluse();
    }

private:
    void rileva(Regola regola, int riga, const QString& che, const Effetto* effetto = nullptr)
    {
        const bool delCodice =
            regola == Regola::CodiceDoppio || regola == Regola::CodiceInutilizzato;
        Osservazione& una = m_osservazioni.emplace_back();
        una.regola = regola;
        una.posto = {
            .scheda = Scheda::Elenco, .elenco = m_numero, .campo = delCodice ? 1 : 0, .riga = riga};
        una.dove = u"Variabili, %1, riga %2"_s.arg(store::GroupNames[std::size_t(m_numero)],
                                                   QString::number(riga));
        una.che = che;
        const auto isNothing = [](double variazione) { return variazione == 0; };
        if (effetto != nullptr && !std::ranges::all_of(effetto->variazioni, isNothing))
            una.spostamento = spostamento(m_fabbricato.consistenze.CTUI, effetto->variazioni);
    }

    [[nodiscard]] const Effetto* effettoDi(int riga) const
    {
        const auto trovato = m_effetti.find({m_numero, riga});
        return trovato == m_effetti.end() ? nullptr : &trovato->second;
    }

    void controllaRiga(const Riga& riga)
    {
        const auto& [valore, codice, descrizione] = riga.celle;
        if (!text::isNumber(valore))
            rileva(Regola::ValoreNonNumero, riga.numero, osservaCifra(valore),
                   effettoDi(riga.numero));
        else if (!isFattoreUsuale(text::leadingNumber(valore)))
            rileva(Regola::FattoreFuoriMisura, riga.numero, fattoreInsolito(valore.toStdString()));
        if (codice.isEmpty())
            return;
        if (const auto [prima, isNuovo] = m_codici.emplace(codice, riga.numero); !isNuovo)
            rileva(Regola::CodiceDoppio, riga.numero,
                   u"il codice «%1» è già alla riga %2, che vale."_s.arg(
                       codice, QString::number(prima->second)));
        else if (!m_usate.test(static_cast<std::size_t>(riga.numero)))
            rileva(Regola::CodiceInutilizzato, riga.numero,
                   u"nessun vano usa il codice «%1»."_s.arg(codice));
    }

    void controllaEscluse()
    {
        const auto isUsabile = [](const Riga& riga) {
            return !riga.celle[0].isEmpty() || !riga.celle[1].isEmpty();
        };
        const auto escluse = std::count_if(m_elenco->righe.begin() + m_elenco->usate,
                                           m_elenco->righe.end(), isUsabile);
        if (escluse == 0)
            return;
        const Effetto* effetto = effettoDi(0);
        const QString fine = m_elenco->usate == store::MostGroupRows
                                 ? u"l'elenco finisce alla riga prima"_s
                                 : u"la riga è senza valore e l'elenco finisce qui"_s;
        rileva(Regola::RigheEscluse, m_elenco->usate + 1,
               u"%1: restano fuori righe che servono (%2), e valgono 0 i vani che le usano (%3)."_s
                   .arg(fine, QString::number(escluse),
                        QString::number(effetto == nullptr ? 0 : effetto->vani)),
               effetto);
    }

    const Fabbricato& m_fabbricato;
    int m_numero;
    const Effetti& m_effetti;
    Osservazioni& m_osservazioni;
    const ElencoLetto* m_elenco = nullptr;
    std::bitset<store::MostGroupRows + 1> m_usate;
    std::map<QString, int> m_codici;
};

} // namespace

ElencoLetto leggiElenco(const QString& tableText)
{
    ElencoLetto elenco{.righe = righeScritte(tableText), .usate = 0, .intesi = {}, .escluse = {}};
    bool isFinito = false;
    for (const Riga& riga : elenco.righe) {
        const QString& valore = riga.celle[0];
        isFinito = isFinito || valore.isEmpty() || elenco.usate == store::MostGroupRows;
        const bool isNumero = text::isNumber(valore);
        if (!isFinito) {
            ++elenco.usate;
            elenco.intesi.push_back(isNumero ? std::nullopt : numeroInteso(valore));
        } else if (!riga.celle[1].isEmpty()) {
            elenco.escluse.emplace(riferimento(riga.celle[1]).toStdString(),
                                   isNumero ? text::leadingNumber(valore) : numeroInteso(valore));
        }
    }
    return elenco;
}

void controllaElenchi(const Fabbricato& fabbricato, Osservazioni& osservazioni)
{
    const Effetti effetti = raccogli(fabbricato.stato.unita);
    for (int numero = 1; numero <= store::Coefficients; ++numero)
        Elenco(fabbricato, numero, effetti, osservazioni).controlla();
}

} // namespace zelto::calc

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/job_check.h"

#include "calc/check_parts.h"
#include "calc/staircase_shares.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace zelto::calc {

namespace {

/// Less than this does not show in print.
constexpr double MinimoSpostamento = 0.0005;

Fabbricato riunisci(const StatoControllo& stato)
{
    Fabbricato fabbricato{stato, formaDati(stato.scritto.dati), {}};
    std::vector<double> CTUI;
    for (const UnitaControllata& unita : stato.unita) {
        fabbricato.modello.unita.push_back(unita.formata);
        CTUI.push_back(unita.CTUI);
    }
    fabbricato.consistenze = consistenzeDi(std::move(CTUI));
    return fabbricato;
}

/// How far the shares of its staircase move if unit u is at another height.
double spostamentoDellaScala(const ModelloLavoro& modello, const Consistenze& consistenze,
                             std::size_t u, double altezza)
{
    const UnitaImmobiliare& unita = modello.unita[u];
    std::vector<double> indici(modello.unita.size());
    if (!unita.CodScala.trimmed().isEmpty())
        for (std::size_t i = 0; i < indici.size(); ++i)
            if (modello.unita[i].CodScala == unita.CodScala)
                indici[i] = double{modello.unita[i].HPiano} * consistenze.CTUI[i];
    return Bilancia(indici).spostamento(u, (altezza - unita.HPiano) * consistenze.CTUI[u]) *
           pesoDelPiano(modello, unita.CodScala);
}

/// The remarks on the units by themselves, with what they move.
void aggiungiRilievi(const Fabbricato& fabbricato, Osservazioni& osservazioni)
{
    const Bilancia bilancia(fabbricato.consistenze.CTUI);
    for (std::size_t u = 0; u < fabbricato.stato.unita.size(); ++u)
        for (const Rilievo& rilievo : fabbricato.stato.unita[u].rilievi) {
            Osservazione& una = osservazioni.emplace_back(rilievo.osservazione);
            if (rilievo.variazione)
                una.spostamento = bilancia.spostamento(u, *rilievo.variazione);
            if (rilievo.altezza)
                una.spostamento = spostamentoDellaScala(fabbricato.modello, fabbricato.consistenze,
                                                        u, *rilievo.altezza);
        }
}

/// Where a remark stands among the others.
auto ordine(const Osservazione& osservazione)
{
    const Posto& posto = osservazione.posto;
    return std::tuple(std::min(posto.scheda, Scheda::Unita), posto.elenco, posto.unita, posto.vano,
                      posto.riga, posto.campo);
}

} // namespace

ControlloLavoro::ControlloLavoro(LavoroScritto lavoro, SullaCarta sullaCarta)
    : m_stato(std::make_unique<StatoControllo>())
{
    m_stato->sullaCarta = std::move(sullaCarta);
    m_stato->scritto = std::move(lavoro);
    m_stato->liste = formaListe(m_stato->scritto.elenchi);
    std::ranges::transform(m_stato->scritto.elenchi, m_stato->elenchi.begin(), leggiElenco);
    for (const UnitaScritta& unita : m_stato->scritto.unita)
        m_stato->unita.push_back(controllaUnita(unita, *m_stato));
}

ControlloLavoro::ControlloLavoro(ControlloLavoro&&) noexcept = default;
ControlloLavoro& ControlloLavoro::operator=(ControlloLavoro&&) noexcept = default;
ControlloLavoro::~ControlloLavoro() = default;

void ControlloLavoro::rileggiUnita(store::Database& lavoro, int rifUI)
{
    RileggiUnitaScritta(lavoro, m_stato->scritto, rifUI);
    std::vector<UnitaControllata>& unita = m_stato->unita;
    std::erase_if(unita, [&](const UnitaControllata& una) { return una.formata.RifUI == rifUI; });
    auto posto = unita.begin();
    for (const UnitaScritta& scritta : m_stato->scritto.unita) {
        if (scritta.RifUI == rifUI)
            posto = unita.insert(posto, controllaUnita(scritta, *m_stato));
        ++posto;
    }
}

std::vector<Osservazione> ControlloLavoro::osservazioni() const
{
    const Fabbricato fabbricato = riunisci(*m_stato);
    Osservazioni osservazioni;
    for (const auto controllaParte :
         {controllaDati, controllaTabelle, controllaScale, controllaElenchi, controllaRegistro,
          aggiungiRilievi, controllaVaniSimili, controllaCifre})
        controllaParte(fabbricato, osservazioni);
    std::ranges::stable_sort(osservazioni, {}, ordine);
    return osservazioni;
}

std::vector<Osservazione> controlla(LavoroScritto lavoro, SullaCarta sullaCarta)
{
    return ControlloLavoro(std::move(lavoro), std::move(sullaCarta)).osservazioni();
}

QString conteggio(std::span<const Osservazione> osservazioni, Gravita ultima)
{
    constexpr std::array<QStringView, 3> Plurali{u"errori", u"avvisi", u"note"};
    QStringList parti;
    for (int gravita = 0; gravita <= static_cast<int>(ultima); ++gravita) {
        const auto quante =
            std::ranges::count(osservazioni, Gravita(gravita), &Osservazione::gravita);
        if (quante > 0)
            parti << u"%1 %2"_s.arg(quante).arg(quante == 1 ? nome(Gravita(gravita))
                                                            : Plurali.at(std::size_t(gravita)));
    }
    return parti.join(u", "_s);
}

QString millesimiSpostati(const Osservazione& osservazione)
{
    const double spostamento = osservazione.spostamento.value_or(0);
    return spostamento < MinimoSpostamento ? QString() : QString::number(spostamento, 'f', 3);
}

QString testo(const Osservazione& osservazione)
{
    const QString testo = osservazione.dove + u": "_s + osservazione.che;
    const QString millesimi = millesimiSpostati(osservazione);
    return millesimi.isEmpty() ? testo
                               : testo + u" Sposta una quota di %1 millesimi."_s.arg(millesimi);
}

} // namespace zelto::calc

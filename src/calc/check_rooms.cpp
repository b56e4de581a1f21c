// SPDX-License-Identifier: GPL-3.0-or-later
// What is odd in one unit and its rooms by themselves.
#include "calc/check_parts.h"
#include "calc/figure_remarks.h"
#include "calc/figures.h"
#include "store/schema.h"
#include "text/decimal_text.h"

#include <algorithm>
#include <cmath>

namespace zelto::calc {

namespace {

constexpr double MinimoFattore = 0.1;
constexpr double MassimoFattore = 3;
constexpr int CampoAltezza = 5;

/// A room under way.
struct Lettura
{
    const UnitaScritta& unita;
    const VanoScritto& scritto;
    Vano vano;
    StatoControllo& stato;
    UnitaControllata& esito;

    /// By how much the room's size would change with another figure.
    [[nodiscard]] double variazione(std::size_t cifra, double valore) const
    {
        Vano altro = vano;
        altro.*CifreVano[cifra] = static_cast<float>(valore);
        calcolaVano(altro);
        const double differenza = double{altro.CT} - vano.CT;
        return std::isfinite(differenza) ? differenza : 0;
    }

    void rileva(Regola regola, std::size_t cifra, const QString& che,
                std::optional<double> inteso = {}) const
    {
        Rilievo& rilievo = esito.rilievi.emplace_back();
        rilievo.osservazione =
            osservaVano(regola, unita, scritto, PrimaCifra + static_cast<int>(cifra), che);
        if (inteso)
            rilievo.variazione = variazione(cifra, *inteso);
    }
};

void controllaTesto(const Lettura& lettura, std::size_t cifra)
{
    const QString testo = QString::fromStdString(lettura.scritto.cifre[cifra]);
    lettura.rileva(Regola::TestoNonNumero, cifra, osservaCifra(testo), numeroInteso(testo));
}

void controllaConsistenza(const Lettura& lettura)
{
    const std::string& testo = lettura.scritto.cifre[0];
    if (testo.empty())
        lettura.rileva(Regola::CampoVuoto, 0, u"manca, e il vano vale 0."_s);
    else if (!text::isNumber(testo))
        controllaTesto(lettura, 0);
    else if (lettura.vano.CR <= 0)
        lettura.rileva(Regola::ConsistenzaNonPositiva, 0,
                       lettura.vano.CR < 0 ? u"«%1» è una misura negativa: toglie all'unità."_s.arg(
                                                 QString::fromStdString(testo))
                                           : u"è 0, e il vano non conta."_s);
}

/// A reference leads to a row of its list, to one that is left out, or nowhere.
void controllaRiferimento(const Lettura& lettura, std::size_t cifra)
{
    const std::size_t k = cifra - 1;
    const std::string& testo = lettura.scritto.cifre[cifra];
    const ElencoLetto& elenco = lettura.stato.elenchi[k];
    const int riga = lettura.stato.liste[k].rowOf(testo);
    std::optional<double> inteso;
    if (riga > 0) {
        lettura.esito.righeUsate[k].set(static_cast<std::size_t>(riga));
        inteso = elenco.intesi[static_cast<std::size_t>(riga - 1)];
        if (!inteso)
            return;
    } else if (const auto esclusa = elenco.escluse.find(testo); esclusa != elenco.escluse.end()) {
        inteso = esclusa->second;
    } else {
        lettura.rileva(Regola::RiferimentoIgnoto, cifra,
                       osservaCoefficiente(lettura.stato.liste[k], QString::fromStdString(testo)));
        return;
    }
    lettura.esito.effetti.push_back(
        {static_cast<int>(cifra), riga, inteso ? lettura.variazione(cifra, *inteso) : 0});
}

void controllaCoefficiente(const Lettura& lettura, std::size_t cifra)
{
    const std::string& testo = lettura.scritto.cifre[cifra];
    const double valore = lettura.vano.*CifreVano[cifra];
    if (testo.empty())
        lettura.rileva(Regola::CampoVuoto, cifra, u"manca: vale 0, e con esso il vano."_s);
    else if (testo.starts_with('['))
        controllaRiferimento(lettura, cifra);
    else if (!text::isNumber(testo))
        controllaTesto(lettura, cifra);
    else if (!isFattoreUsuale(valore))
        lettura.rileva(Regola::FattoreFuoriMisura, cifra, fattoreInsolito(testo));
}

/// The first figure that would be cut in print.
void controllaStampa(Lettura& lettura)
{
    for (std::size_t cifra = 0; cifra < CifreVano.size(); ++cifra) {
        const float valore = lettura.vano.*CifreVano[cifra];
        if (!(cifra == 0 ? MascheraSuperficie : MascheraCoefficiente).fits(valore)) {
            lettura.rileva(Regola::CifraTagliata, cifra, cifraTroppoLarga(valore));
            return;
        }
    }
    for (const float valore : {lettura.vano.CF, lettura.vano.CVT, lettura.vano.CT})
        if (!MascheraSuperficie.fits(valore)) {
            lettura.rileva(Regola::CifraTagliata, 0, cifraTroppoLarga(valore));
            return;
        }
}

void controllaVano(Lettura& lettura)
{
    const auto& cifre = lettura.scritto.cifre;
    if (std::ranges::all_of(cifre, &std::string::empty)) {
        lettura.rileva(Regola::CampoVuoto, 0, u"il vano è vuoto e vale 0."_s);
        return;
    }
    const QString& nome = lettura.scritto.ambiente;
    const QString carta =
        nomeSullaCarta(lettura.stato, Stampato::Ambiente, nome, double{lettura.vano.CR});
    if (const QString tagliato = nomeTagliato(nome, carta); !tagliato.isEmpty())
        lettura.esito.rilievi.push_back({osservaVano(Regola::NomeTagliato, lettura.unita,
                                                     lettura.scritto, CampoAmbiente, tagliato),
                                         {},
                                         {}});
    controllaConsistenza(lettura);
    for (std::size_t cifra = 1; cifra < cifre.size(); ++cifra)
        controllaCoefficiente(lettura, cifra);
    controllaStampa(lettura);
}

void misura(const Lettura& lettura, std::size_t vano)
{
    const QString nome = lettura.scritto.ambiente.simplified().toLower();
    if (nome.isEmpty() || lettura.vano.CR <= 0)
        return;
    QHash<QString, int>& nomi = lettura.stato.nomiVani;
    const auto trovato = nomi.find(nome);
    const int numero = trovato != nomi.end() ? *trovato : *nomi.insert(nome, int(nomi.size()));
    lettura.esito.misure.push_back({numero, vano, lettura.vano.CR});
}

void controllaAltezza(const UnitaScritta& scritta, UnitaControllata& esito)
{
    const QString testo = QString::fromStdString(scritta.HPiano);
    esito.altezzaScritta = testo.isEmpty() || text::isNumber(testo);
    if (!esito.altezzaScritta)
        esito.rilievi.push_back(
            {osservaUnita(Regola::TestoNonNumero, scritta, CampoAltezza, osservaCifra(testo)),
             {},
             numeroInteso(testo)});
    if (testo.isEmpty() && !scritta.CodScala.trimmed().isEmpty())
        esito.rilievi.push_back({osservaUnita(Regola::AltezzaVuota, scritta, CampoAltezza,
                                              u"l'altezza manca: vale 0."_s),
                                 {},
                                 {}});
    if (std::isfinite(esito.formata.HPiano))
        return;
    esito.rilievi.push_back({osservaUnita(Regola::CifraTagliata, scritta, CampoAltezza,
                                          cifraTroppoLarga(esito.formata.HPiano)),
                             {},
                             {}});
    esito.formata.HPiano = 0;
}

void controllaTotale(const UnitaScritta& scritta, UnitaControllata& esito)
{
    const auto rileva = [&](Regola regola, const QString& che) {
        esito.rilievi.push_back({osservaUnita(regola, scritta, 0, che), {}, {}});
    };
    if (scritta.vani.empty())
        rileva(Regola::UnitaSenzaVani, u"non ha vani: la sua quota è 0."_s);
    else if (esito.CTUI <= 0)
        rileva(Regola::TotaleNonPositivo,
               u"la consistenza totale è %1."_s.arg(text::decimalText(esito.CTUI)));
    if (scritta.vani.size() > store::MostRooms)
        rileva(Regola::TroppiVani,
               u"ha %1 vani: il calcolo ne prende al più %2."_s.arg(
                   QString::number(scritta.vani.size()), QString::number(store::MostRooms)));
    if (!MascheraConsistenza.fits(esito.CTUI))
        rileva(Regola::CifraTagliata, cifraTroppoLarga(esito.CTUI));
}

} // namespace

bool isFattoreUsuale(double valore)
{
    return valore >= MinimoFattore && valore <= MassimoFattore;
}

QString fattoreInsolito(const std::string& testo)
{
    return u"il coefficiente è %1, fuori da 0,1 a 3."_s.arg(QString::fromStdString(testo));
}

QString cifraTroppoLarga(double cifra)
{
    return u"la cifra %1 non sta nella sua colonna di stampa."_s.arg(text::decimalText(cifra));
}

QString doveUnita(const UnitaScritta& unita)
{
    const QString numero = u"unità "_s + QString::number(unita.RifUI);
    return unita.Riferimento.isEmpty() ? numero : numero + u" ("_s + unita.Riferimento + u')';
}

Osservazione osservaUnita(Regola regola, const UnitaScritta& unita, int campo, const QString& che)
{
    QString dove = doveUnita(unita);
    if (campo > 0)
        dove +=
            u", "_s + store::headingOf(
                          store::jobTable(store::TabellaUnita).fields.at(std::size_t(campo)).name);
    return {.regola = regola,
            .posto = {.scheda = Scheda::Unita, .unita = unita.RifUI, .campo = campo},
            .dove = dove,
            .che = che};
}

Osservazione osservaVano(Regola regola, const UnitaScritta& unita, const VanoScritto& vano,
                         int campo, const QString& che)
{
    QString dove = doveUnita(unita) + u", vano "_s + QString::number(vano.posizione);
    if (!vano.ambiente.isEmpty())
        dove += u" ("_s + vano.ambiente + u')';
    dove += u", "_s + store::headingOf(
                          store::jobTable(store::TabellaVani).fields.at(std::size_t(campo)).name);
    return {.regola = regola,
            .posto = {.scheda = Scheda::Vani,
                      .unita = unita.RifUI,
                      .vano = vano.posizione,
                      .campo = campo},
            .dove = dove,
            .che = che};
}

UnitaControllata controllaUnita(const UnitaScritta& scritta, StatoControllo& stato)
{
    UnitaControllata esito;
    esito.formata = formaUnita(scritta);
    controllaAltezza(scritta, esito);
    for (const VanoScritto& vano : scritta.vani) {
        Lettura lettura{scritta, vano, formaVano({}, vano.testi(), stato.liste), stato, esito};
        controllaVano(lettura);
        if (std::isfinite(lettura.vano.CT))
            esito.CTUI += lettura.vano.CT;
        misura(lettura, static_cast<std::size_t>(&vano - scritta.vani.data()));
    }
    controllaTotale(scritta, esito);
    return esito;
}

} // namespace zelto::calc

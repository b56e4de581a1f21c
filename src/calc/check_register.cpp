// SPDX-License-Identifier: GPL-3.0-or-later
// What is odd in units and rooms beside one another.
#include "calc/check_parts.h"
#include "calc/share_rule.h"
#include "store/schema.h"
#include "text/decimal_text.h"

#include <algorithm>
#include <map>

namespace zelto::calc {

namespace {

enum Campo : int { CampoRiferimento = 2, CampoLivello, CampoScala, CampoAltezza, CampoTabelle };

constexpr std::size_t VaniDaConfrontare = 5;
constexpr float VolteLaMediana = 10;

/// The name without what leaves no ink.
QString inchiostro(const QString& nome)
{
    QString carta;
    for (const QChar c : nome)
        if (c.category() != QChar::Other_Format)
            carta += c;
    return carta.normalized(QString::NormalizationForm_C).simplified();
}

void controllaNomiUnita(const Fabbricato& fabbricato, Osservazioni& osservazioni)
{
    std::map<QString, const UnitaScritta*> prime;
    std::size_t u = 0;
    for (const UnitaScritta& una : fabbricato.stato.scritto.unita) {
        const double CTUI = fabbricato.consistenze.CTUI[u++];
        const auto mostra = [&](Stampato che, int campo, const QString& nome) {
            const QString carta = nomeSullaCarta(fabbricato.stato, che, nome, CTUI);
            if (const QString tagliato = nomeTagliato(nome, carta); !tagliato.isEmpty())
                osservazioni.push_back(osservaUnita(Regola::NomeTagliato, una, campo, tagliato));
            return carta;
        };
        (void)mostra(Stampato::Livello, CampoLivello, una.Livello);
        const QString carta = mostra(Stampato::Riferimento, CampoRiferimento, una.Riferimento);
        if (carta.isEmpty()) {
            osservazioni.push_back(osservaUnita(Regola::RiferimentoMancante, una, CampoRiferimento,
                                                u"il riferimento manca."_s));
            continue;
        }
        const auto [prima, isNuova] = prime.emplace(carta, &una);
        if (isNuova)
            continue;
        const bool isUguale = prima->second->Riferimento == una.Riferimento;
        osservazioni.push_back(osservaUnita(
            isUguale ? Regola::RiferimentoDoppio : Regola::NomiUguali, una, CampoRiferimento,
            u"%1 dell'unità %2."_s.arg(isUguale ? u"è anche il riferimento"_s
                                                : u"sulla carta è uguale al riferimento"_s,
                                       QString::number(prima->second->RifUI))));
    }
}

void controllaNomiTabelle(const DatiScritti& dati, Osservazioni& osservazioni)
{
    std::map<QString, int> prime;
    int riga = 0;
    for (const std::optional<QString>& nome : dati.NomeTabella) {
        ++riga;
        const QString carta = nome ? inchiostro(*nome) : QString();
        if (carta.isEmpty())
            continue;
        if (const auto [prima, isNuova] = prime.emplace(carta, riga); !isNuova)
            osservazioni.push_back(
                {.regola = Regola::NomiUguali,
                 .posto = {.scheda = Scheda::Tabelle, .riga = riga},
                 .dove = u"Dati generali, tabella %1"_s.arg(riga),
                 .che = u"sulla carta il nome è quello della tabella %1."_s.arg(prima->second)});
    }
}

/// Where the names have a gap, a column is that of another table.
void controllaSegni(const Fabbricato& fabbricato, std::size_t u, Osservazioni& osservazioni)
{
    const ModelloLavoro& modello = fabbricato.modello;
    const UnitaScritta& scritta = fabbricato.stato.scritto.unita[u];
    for (int t = 1; t <= store::SpecialTables; ++t) {
        if (!modello.unita[u].isInTable(t) ||
            fabbricato.stato.scritto.dati.NomeTabella[std::size_t(t - 1)].has_value())
            continue;
        QString che = u"c'è una X, ma la tabella non ha nome"_s;
        if (t <= modello.NumTabelle())
            che += u": conta per «%1»"_s.arg(modello.NomeTabella[std::size_t(t - 1)]);
        osservazioni.push_back(
            osservaUnita(Regola::SegnoSenzaTabella, scritta, CampoTabelle, che + u'.'));
        osservazioni.back().posto.riga = t;
        osservazioni.back().dove = doveUnita(scritta) + u", T%1"_s.arg(t);
    }
}

void controllaAppartenenza(const Fabbricato& fabbricato, std::size_t u, Osservazioni& osservazioni)
{
    const UnitaScritta& scritta = fabbricato.stato.scritto.unita[u];
    const UnitaImmobiliare& unita = fabbricato.modello.unita[u];
    const bool haScala = !unita.CodScala.trimmed().isEmpty();
    if (haScala && fabbricato.modello.codiceScala(unita.CodScala) == nullptr)
        osservazioni.push_back(osservaUnita(
            Regola::ScalaIgnota, scritta, CampoScala,
            u"la scala «%1» non è fra i codici: la percentuale vale 50."_s.arg(unita.CodScala)));
    if (haScala && unita.HPiano < 0)
        osservazioni.push_back(
            osservaUnita(Regola::AltezzaNegativa, scritta, CampoAltezza,
                         u"l'altezza è %1: i suoi millesimi di piano sono negativi."_s.arg(
                             text::decimalText(unita.HPiano))));
    controllaSegni(fabbricato, u, osservazioni);
}

/// The height that most of the units have, among equals the first one's.
float altezzaUsuale(const std::vector<UnitaImmobiliare>& unita, const Partecipanti& gruppo)
{
    const auto quante = [&](std::size_t u) {
        return std::ranges::count_if(
            gruppo, [&](std::size_t altra) { return unita[altra].HPiano == unita[u].HPiano; });
    };
    return unita[*std::ranges::max_element(gruppo, {}, quante)].HPiano;
}

void controllaAltezze(const Fabbricato& fabbricato, Osservazioni& osservazioni)
{
    const auto& unita = fabbricato.modello.unita;
    std::map<std::pair<QString, QString>, Partecipanti> livelli;
    for (std::size_t u = 0; u < unita.size(); ++u) {
        const QString livello = unita[u].Livello.simplified().toLower();
        const bool haScala = !unita[u].CodScala.trimmed().isEmpty();
        if (haScala && !livello.isEmpty() && fabbricato.stato.unita[u].altezzaScritta)
            livelli[{unita[u].CodScala, livello}].push_back(u);
    }
    for (const auto& livello : livelli) {
        const Partecipanti& gruppo = livello.second;
        const auto isUguale = [&](std::size_t u) {
            return unita[u].HPiano == unita[gruppo.front()].HPiano;
        };
        if (std::ranges::all_of(gruppo, isUguale))
            continue;
        const float usuale = altezzaUsuale(unita, gruppo);
        for (const std::size_t u : gruppo)
            if (unita[u].HPiano != usuale)
                osservazioni.push_back(osservaUnita(
                    Regola::AltezzeDiverse, fabbricato.stato.scritto.unita[u], CampoAltezza,
                    u"l'altezza è %1, ma %2 al livello «%3» della scala %4."_s.arg(
                        text::decimalText(unita[u].HPiano), text::decimalText(usuale),
                        unita[u].Livello, unita[u].CodScala)));
    }
}

/// The size that divides the rooms of a name; nothing where they are too few.
std::optional<float> mediana(std::vector<float>& misure)
{
    if (misure.size() < VaniDaConfrontare)
        return std::nullopt;
    const auto mezzo = misure.begin() + static_cast<std::ptrdiff_t>(misure.size() / 2);
    std::ranges::nth_element(misure, mezzo);
    return *mezzo;
}

Osservazione osservaOrfano(const VanoOrfano& vano)
{
    QString dove = u"vano %1"_s.arg(vano.posizione);
    if (!vano.ambiente.isEmpty())
        dove += u" ("_s + vano.ambiente + u')';
    return {.regola = Regola::VanoOrfano,
            .posto = {.scheda = Scheda::Vani, .unita = vano.RifUI, .vano = vano.posizione},
            .dove = dove,
            .che = u"l'unità %1 non c'è più: il vano non conta."_s.arg(vano.RifUI)};
}

} // namespace

QString nomeSullaCarta(const StatoControllo& stato, Stampato che, const QString& nome, double cifra)
{
    const QString carta = inchiostro(nome);
    return stato.sullaCarta ? stato.sullaCarta(che, carta, cifra) : carta;
}

QString nomeTagliato(const QString& nome, const QString& carta)
{
    constexpr QChar Ellissi = u'…';
    return carta.endsWith(Ellissi) && !nome.trimmed().endsWith(Ellissi)
               ? u"sulla carta non sta intero: «%1»."_s.arg(carta)
               : QString();
}

void controllaRegistro(const Fabbricato& fabbricato, Osservazioni& osservazioni)
{
    const LavoroScritto& scritto = fabbricato.stato.scritto;
    const auto rileva = [&](Regola regola, const QString& che) {
        osservazioni.push_back({.regola = regola,
                                .posto = {.scheda = Scheda::Unita},
                                .dove = u"Parametri"_s,
                                .che = che});
    };
    if (scritto.unita.empty())
        rileva(Regola::NessunaUnita, u"non c'è nessuna unità."_s);
    if (scritto.unita.size() > store::MostUnits)
        rileva(Regola::TroppeUnita,
               u"ci sono %1 unità: il calcolo ne prende al più %2."_s.arg(
                   QString::number(scritto.unita.size()), QString::number(store::MostUnits)));
    controllaNomiUnita(fabbricato, osservazioni);
    controllaNomiTabelle(scritto.dati, osservazioni);
    for (std::size_t u = 0; u < scritto.unita.size(); ++u)
        controllaAppartenenza(fabbricato, u, osservazioni);
    controllaAltezze(fabbricato, osservazioni);
    std::ranges::transform(scritto.orfani, std::back_inserter(osservazioni), osservaOrfano);
}

void controllaVaniSimili(const Fabbricato& fabbricato, Osservazioni& osservazioni)
{
    const StatoControllo& stato = fabbricato.stato;
    std::vector<std::vector<float>> misure(static_cast<std::size_t>(stato.nomiVani.size()));
    for (const UnitaControllata& unita : stato.unita)
        for (const Misura& una : unita.misure)
            misure[static_cast<std::size_t>(una.nome)].push_back(una.CR);
    std::vector<std::optional<float>> mediane(misure.size());
    std::ranges::transform(misure, mediane.begin(), mediana);
    for (std::size_t u = 0; u < stato.unita.size(); ++u)
        for (const Misura& una : stato.unita[u].misure) {
            const std::optional<float> usuale = mediane[static_cast<std::size_t>(una.nome)];
            if (usuale && una.CR >= VolteLaMediana * *usuale)
                osservazioni.push_back(
                    osservaVano(Regola::ConsistenzaFuoriMisura, stato.scritto.unita[u],
                                stato.scritto.unita[u].vani[una.vano], PrimaCifra,
                                u"è %1, ma la mediana dei vani con questo nome è %2."_s.arg(
                                    text::decimalText(una.CR), text::decimalText(*usuale))));
        }
}

} // namespace zelto::calc

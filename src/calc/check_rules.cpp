// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/check_rules.h"

#include "store/job_limits.h"

#include <algorithm>
#include <array>

namespace zelto::calc {

namespace {

using enum Gravita;
using enum Regola;

constexpr QStringView Vani = u"Vani";
constexpr QStringView Unita = u"Unità";
constexpr QStringView Variabili = u"Variabili";
constexpr QStringView Tabelle = u"Tabelle speciali";
constexpr QStringView Scale = u"Scale";
constexpr QStringView Dati = u"Dati generali";
constexpr QStringView Cifre = u"Cifre e nomi";

// The texts of the rules name the limits.
static_assert(store::MostRooms == 50 && store::MostUnits == 300 && store::MostGroupRows == 200);

constexpr std::array Regole{
    DescrizioneRegola{RiferimentoIgnoto, Errore, Vani, u"coefficiente che non è nel suo elenco",
                      u"vale 0, e con esso il vano"},
    DescrizioneRegola{TestoNonNumero, Errore, Vani,
                      u"consistenza, coefficiente, altezza o percentuale che non è un numero",
                      u"vale la sola parte iniziale che si legge come numero: «1,25» vale 1"},
    DescrizioneRegola{CampoVuoto, Avviso, Vani, u"consistenza o coefficiente vuoto",
                      u"vale 0, e con esso il vano; un coefficiente che non conta è 1"},
    DescrizioneRegola{ConsistenzaNonPositiva, Avviso, Vani, u"consistenza 0 o negativa",
                      u"il vano non conta, o toglie all'unità"},
    DescrizioneRegola{ConsistenzaFuoriMisura, Avviso, Vani,
                      u"consistenza dieci volte la mediana dei vani con lo stesso nome",
                      u"spesso manca il punto decimale; si confrontano almeno cinque vani"},
    DescrizioneRegola{FattoreFuoriMisura, Avviso, Vani, u"coefficiente fuori da 0,1 a 3",
                      u"nessun coefficiente d'uso arriva a tanto"},
    DescrizioneRegola{VanoOrfano, Errore, Vani, u"vano di un'unità che non c'è più",
                      u"non conta e non si vede in alcuna scheda"},
    DescrizioneRegola{TroppiVani, Errore, Vani, u"più di 50 vani in un'unità",
                      u"il lavoro non si può calcolare"},
    DescrizioneRegola{NessunaUnita, Avviso, Unita, u"nessuna unità", u"non c'è nulla da dividere"},
    DescrizioneRegola{TroppeUnita, Errore, Unita, u"più di 300 unità",
                      u"il lavoro non si può calcolare"},
    DescrizioneRegola{UnitaSenzaVani, Avviso, Unita, u"unità senza vani",
                      u"la sua quota è 0 in ogni tabella"},
    DescrizioneRegola{TotaleNonPositivo, Avviso, Unita, u"consistenza totale 0 o negativa",
                      u"l'unità non paga, o la sua quota è negativa"},
    DescrizioneRegola{RiferimentoMancante, Avviso, Unita, u"unità senza riferimento",
                      u"nelle tabelle la sua riga non ha nome"},
    DescrizioneRegola{RiferimentoDoppio, Avviso, Unita, u"due unità con lo stesso riferimento",
                      u"nelle tabelle non si distinguono"},
    DescrizioneRegola{ScalaIgnota, Avviso, Unita, u"scala che non è fra i codici delle scale",
                      u"il codice può essere sbagliato; la percentuale è 50"},
    DescrizioneRegola{SegnoSenzaTabella, Avviso, Unita, u"X in una tabella senza nome",
                      u"una tabella senza nome non si calcola; con una riga vuota fra i nomi la X "
                      u"conta per la tabella che prende quella colonna"},
    DescrizioneRegola{AltezzaVuota, Avviso, Unita, u"altezza vuota in una scala",
                      u"vale 0: l'unità non ha millesimi di piano"},
    DescrizioneRegola{AltezzaNegativa, Avviso, Unita, u"altezza negativa in una scala",
                      u"i millesimi di piano sono negativi, e gli altri ne pagano di più"},
    DescrizioneRegola{AltezzeDiverse, Avviso, Unita,
                      u"altezze diverse allo stesso livello di una scala",
                      u"il livello è uno solo, e la quota di piano segue l'altezza"},
    DescrizioneRegola{RigheEscluse, Errore, Variabili, u"righe che restano fuori dall'elenco",
                      u"l'elenco finisce alla prima riga senza valore e alla riga 200"},
    DescrizioneRegola{CodiceDoppio, Avviso, Variabili, u"codice che c'è già",
                      u"vale la prima riga con quel codice"},
    DescrizioneRegola{ValoreNonNumero, Errore, Variabili, u"valore che non è un numero",
                      u"vale la sola parte iniziale che si legge come numero"},
    DescrizioneRegola{CodiceInutilizzato, Nota, Variabili, u"codice che nessun vano usa",
                      u"la riga non conta"},
    DescrizioneRegola{NomeMancante, Errore, Tabelle, u"riga vuota fra i nomi",
                      u"le tabelle che seguono prendono i partecipanti di un'altra colonna"},
    DescrizioneRegola{TabellaVuota, Avviso, Tabelle, u"tabella senza partecipanti",
                      u"la spesa non è di nessuno"},
    DescrizioneRegola{ScalaDoppia, Avviso, Scale, u"codice che c'è già",
                      u"vale la prima riga con quel codice"},
    DescrizioneRegola{ScalaSenzaUnita, Nota, Scale, u"scala senza unità", u"non si stampa"},
    DescrizioneRegola{PercentualeFuoriMisura, Errore, Scale, u"percentuale fuori da 0 a 100",
                      u"dà quote negative sotto un totale di 1000"},
    DescrizioneRegola{PercentualeZero, Avviso, Scale, u"percentuale 0", u"vale 50"},
    DescrizioneRegola{CodiceLungo, Avviso, Scale, u"codice di più caratteri",
                      u"un'unità ne porta uno solo"},
    DescrizioneRegola{DescrizioneMancante, Nota, Dati, u"nessuna descrizione",
                      u"la prima pagina resta senza nome del fabbricato"},
    DescrizioneRegola{DataMancante, Nota, Dati, u"nessuna data", u"la prima pagina resta senza"},
    DescrizioneRegola{RelazioneMancante, Nota, Dati, u"nessuna relazione",
                      u"della relazione non si stampa alcuna pagina"},
    DescrizioneRegola{CifraTagliata, Errore, Cifre, u"cifra che non sta nella sua colonna",
                      u"il lavoro non si può stampare"},
    DescrizioneRegola{NomiUguali, Avviso, Cifre, u"nomi che sulla carta sono uguali",
                      u"cambiano solo spazi o segni che non si vedono, o ciò che non vi sta"},
    DescrizioneRegola{NomeTagliato, Avviso, Cifre, u"nome che sulla carta non sta intero",
                      u"è stampato più piccolo, e finisce con «…»"},
};

static_assert(std::ranges::is_sorted(Regole, {}, &DescrizioneRegola::regola));
static_assert(Regole.size() == static_cast<std::size_t>(NomeTagliato) + 1);

} // namespace

std::span<const DescrizioneRegola> regole()
{
    return Regole;
}

const DescrizioneRegola& descrizione(Regola regola)
{
    return Regole[static_cast<std::size_t>(regola)];
}

QStringView nome(Gravita gravita)
{
    constexpr std::array<QStringView, 3> Nomi{u"errore", u"avviso", u"nota"};
    return Nomi[static_cast<std::size_t>(gravita)];
}

} // namespace zelto::calc

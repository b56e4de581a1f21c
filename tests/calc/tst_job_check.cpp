// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/job_check.h"
#include "calc/job_loader.h"
#include "calc/shares.h"
#include "store/store_fixture.h"
#include "support/runner.h"

#include <cmath>
#include <functional>
#include <rapidcheck.h>

using namespace zelto::calc;
using namespace zelto::test;

namespace {

constexpr int Units = 8;
constexpr int Rooms = 3;

int among(int first, int last)
{
    return *rc::gen::inRange(first, last + 1);
}

/// A building without anything odd: units in pairs on the levels of two staircases.
LavoroScritto soundBuilding()
{
    LavoroScritto job;
    job.dati.NomeTabella[0] = u"Acqua"_s;
    job.dati.NomeTabella[1] = u"Garage"_s;
    job.dati.tabellaCodici = u"A\tOvest\t50\r\nB\tEst\t%1\r\n"_s.arg(among(1, 100));
    for (QString& list : job.elenchi)
        list = u"1\tN\t\r\n0.9\tR\t\r\n%1\tZ\t\r\n"_s.arg(among(20, 200) / 100.0);
    for (int n = 1; n <= Units; ++n) {
        UnitaScritta& unit = job.unita.emplace_back();
        unit.RifUI = n;
        unit.Riferimento = u"Int. %1"_s.arg(n);
        unit.Livello = u"Piano %1"_s.arg((n - 1) / 4);
        unit.CodScala = n % 2 == 0 ? u"A"_s : u"b"_s;
        unit.HPiano = std::to_string((n - 1) / 4 * 3) + ".5";
        unit.FlagTab = n <= 4 ? u"X"_s : u" X"_s;
        for (int r = 1; r <= Rooms; ++r) {
            VanoScritto& room = unit.vani.emplace_back();
            room.posizione = r;
            room.ambiente = u"Camera"_s;
            room.cifre = {std::to_string(among(8, 30)), "[N]", "[N]", "[N]", "[N]", "1", "[N]"};
            // The first room counts whatever happens to the other rows of the lists.
            if (r > 1)
                room.cifre[2] = room.cifre[6] = "[R]";
            if (r > 2)
                room.cifre[3] = "[Z]";
        }
    }
    return job;
}

std::vector<Osservazione> oddities(const LavoroScritto& job)
{
    std::vector<Osservazione> all = controlla(job);
    std::erase_if(all, [](const Osservazione& one) {
        return descrizione(one.regola).gravita == Gravita::Nota;
    });
    return all;
}

std::vector<Millesimi> shares(const LavoroScritto& job)
{
    ModelloLavoro modello = formaDati(job.dati);
    Liste liste = formaListe(job.elenchi);
    for (const UnitaScritta& unit : job.unita) {
        modello.unita.push_back(formaUnita(unit));
        for (const VanoScritto& room : unit.vani)
            modello.unita.back().vani.push_back(formaVano(room.ambiente, room.testi(), liste));
    }
    return calcolaMillGen(calcolaConsistenze(modello));
}

UnitaScritta& unitOf(LavoroScritto& job, int number)
{
    return job.unita[std::size_t(number - 1)];
}

/// Does one thing wrong in a building and tells where it will be found.
struct Fault
{
    Regola rule;
    std::function<Posto(LavoroScritto& job)> seed;
    bool alone = true; ///< nothing else is odd by it
};

/// Writes a text into a figure of some room; `first` is 0 for any figure, 1 for coefficients alone.
Fault roomFault(Regola rule, const std::string& text, int first, int last)
{
    return {rule, [=](LavoroScritto& job) {
                const int unit = among(1, Units);
                const int room = among(1, Rooms);
                const int figure = among(first, last);
                unitOf(job, unit).vani[std::size_t(room - 1)].cifre[std::size_t(figure)] = text;
                return Posto{
                    .scheda = Scheda::Vani, .unita = unit, .vano = room, .campo = 4 + figure};
            }};
}

Fault unitFault(Regola rule, int field, const std::function<void(UnitaScritta& unit)>& change)
{
    return {rule, [=](LavoroScritto& job) {
                const int unit = among(2, Units);
                change(unitOf(job, unit));
                return Posto{.scheda = Scheda::Unita, .unita = unit, .campo = field};
            }};
}

Fault listFault(Regola rule, const QString& text, int row, int column = 0)
{
    return {rule, [=](LavoroScritto& job) {
                const int list = among(1, 6);
                job.elenchi[std::size_t(list - 1)] = text;
                return Posto{
                    .scheda = Scheda::Elenco, .elenco = list, .campo = column, .riga = row};
            }};
}

Fault generalFault(Regola rule, Scheda tab, int row,
                   const std::function<void(LavoroScritto& job)>& change, int column = 0)
{
    return {rule, [=](LavoroScritto& job) {
                change(job);
                return Posto{.scheda = tab, .campo = column, .riga = row};
            }};
}

Fault codesFault(Regola rule, const QString& codes, int row, int column)
{
    return generalFault(
        rule, Scheda::Scale, row, [=](LavoroScritto& job) { job.dati.tabellaCodici = codes; },
        column);
}

using enum Regola;
const std::vector<Fault> Faults{
    roomFault(RiferimentoIgnoto, "[Q]", 1, 6),
    roomFault(TestoNonNumero, "1,25", 0, 6),
    roomFault(CampoVuoto, "", 0, 6),
    roomFault(ConsistenzaNonPositiva, "0", 0, 0),
    roomFault(ConsistenzaNonPositiva, "-1", 0, 0),
    roomFault(ConsistenzaFuoriMisura, "300", 0, 0),
    roomFault(FattoreFuoriMisura, "3.01", 1, 6),
    roomFault(FattoreFuoriMisura, "0.09", 1, 6),
    {VanoOrfano,
     [](LavoroScritto& job) {
         job.orfani.push_back({99, 4, u"Cantina"_s});
         return Posto{.scheda = Scheda::Vani, .unita = 99, .vano = 4};
     }},
    unitFault(TroppiVani, 0, [](UnitaScritta& unit) { unit.vani.resize(51, unit.vani.front()); }),
    unitFault(UnitaSenzaVani, 0, [](UnitaScritta& unit) { unit.vani.clear(); }),
    {TotaleNonPositivo,
     [](LavoroScritto& job) {
         const int unit = among(1, Units);
         for (VanoScritto& room : unitOf(job, unit).vani)
             room.cifre[0] = among(0, 1) == 0 ? "0" : "-3";
         return Posto{.scheda = Scheda::Unita, .unita = unit};
     },
     false},
    {TroppeUnita,
     [](LavoroScritto& job) {
         for (int n = Units + 1; n <= 301; ++n) {
             UnitaScritta& unit = job.unita.emplace_back(job.unita[1]);
             unit.RifUI = n;
             unit.Riferimento = u"Int. %1"_s.arg(n);
         }
         return Posto{.scheda = Scheda::Unita};
     }},
    {CifraTagliata,
     [](LavoroScritto& job) {
         const int unit = among(1, Units);
         unitOf(job, unit).HPiano = "9999999";
         return Posto{.scheda = Scheda::Unita, .unita = unit};
     },
     false},
    unitFault(TestoNonNumero, 5, [](UnitaScritta& unit) { unit.HPiano = "3,1"; }),
    unitFault(AltezzaNegativa, 5,
              [](UnitaScritta& unit) {
                  unit.Livello.clear();
                  unit.HPiano = "-0.1";
              }),
    unitFault(AltezzaVuota, 5,
              [](UnitaScritta& unit) {
                  unit.Livello.clear();
                  unit.HPiano.clear();
              }),
    unitFault(RiferimentoMancante, 2, [](UnitaScritta& unit) { unit.Riferimento = u"  "_s; }),
    unitFault(RiferimentoDoppio, 2, [](UnitaScritta& unit) { unit.Riferimento = u"Int. 1"_s; }),
    unitFault(NomiUguali, 2, [](UnitaScritta& unit) { unit.Riferimento = u"Int.  1"_s; }),
    unitFault(ScalaIgnota, 4, [](UnitaScritta& unit) { unit.CodScala = u"C"_s; }),
    unitFault(AltezzeDiverse, 5,
              [](UnitaScritta& unit) {
                  unit.Livello = u"Piano 9"_s; // the only one there, but for the first unit
                  unit.CodScala = u"B"_s;
              }),
    {SegnoSenzaTabella,
     [](LavoroScritto& job) {
         const int unit = among(1, Units);
         const int table = among(3, 10);
         QString& flags = unitOf(job, unit).FlagTab;
         flags = flags.leftJustified(10);
         flags[table - 1] = u'X';
         return Posto{.scheda = Scheda::Unita, .unita = unit, .campo = 6, .riga = table};
     }},
    listFault(RigheEscluse, u"1\tN\t\r\n0.9\tR\t\r\n\tY\t\r\n1\tZ\t\r\n"_s, 3),
    listFault(RigheEscluse,
              u"1\tN\t\r\n0.9\tR\t\r\n"_s + u"1\t\t\r\n"_s.repeated(198) + u"1\tZ\t\r\n"_s, 201),
    listFault(CodiceDoppio, u"1\tN\t\r\n0.9\tR\t\r\n1\tZ\t\r\n2\tN\t\r\n"_s, 4, 1),
    listFault(ValoreNonNumero, u"1\tN\t\r\n0,9\tR\t\r\n1\tZ\t\r\n"_s, 2),
    listFault(FattoreFuoriMisura, u"1\tN\t\r\n0.9\tR\t\r\n4\tZ\t\r\n"_s, 3),
    generalFault(TabellaVuota, Scheda::Tabelle, 3,
                 [](LavoroScritto& job) { job.dati.NomeTabella[2] = u"Rampa"_s; }),
    generalFault(NomiUguali, Scheda::Tabelle, 2,
                 [](LavoroScritto& job) { job.dati.NomeTabella[1] = u"Acqua "_s; }),
    generalFault(NessunaUnita, Scheda::Unita, 0, [](LavoroScritto& job) { job.unita.clear(); }),
    codesFault(ScalaDoppia, u"A\t\t50\r\nB\t\t\r\na\t\t30\r\n"_s, 3, 0),
    codesFault(PercentualeFuoriMisura, u"A\t\t50\r\nB\t\t333\r\n"_s, 2, 2),
    codesFault(PercentualeFuoriMisura, u"A\t\t-1\r\nB\t\t\r\n"_s, 1, 2),
    codesFault(PercentualeZero, u"A\t\t50\r\nB\t\t0\r\n"_s, 2, 2),
    codesFault(TestoNonNumero, u"A\t\tx\r\nB\t\t\r\n"_s, 1, 2),
    codesFault(CodiceLungo, u"A\t\t50\r\nB\t\t\r\nAB\t\t1\r\n"_s, 3, 0),
};

} // namespace

class TestJobCheck : public QObject
{
    Q_OBJECT

private slots:
    void soundBuildingsHaveNothingOdd()
    {
        for (const char* half : {"nothing above a note", "nor in the next ones"}) // 100 each
            QVERIFY(rc::check(half, [] { RC_ASSERT(oddities(soundBuilding()).empty()); }));
    }

    /// One fault in a sound building is found at its place, and nothing else is.
    void everyFaultIsFound()
    {
        for (std::size_t i = 0; i < Faults.size(); ++i)
            QVERIFY(rc::check("fault " + std::to_string(i), [&] {
                const Fault& fault = Faults[i];
                LavoroScritto job = soundBuilding();
                // Alone on its level, so that a unit sent there differs from it.
                job.unita[0].Livello = u"Piano 9"_s;
                job.unita[0].CodScala = u"B"_s;
                job.unita[0].HPiano = "9";
                const Posto place = fault.seed(job);
                const std::vector<Osservazione> found = oddities(job);
                for (const Osservazione& one : found)
                    RC_LOG(testo(one).toStdString());
                RC_ASSERT(found.size() == 1U || !fault.alone);
                RC_ASSERT(std::ranges::any_of(found, [&](const Osservazione& one) {
                    return one.regola == fault.rule && one.posto == place;
                }));
            }));
    }

    void gapAmongTheNames()
    {
        LavoroScritto job;
        rc::check("a sound building", [&] { job = soundBuilding(); });
        job.dati.NomeTabella[3] = u"Rampa"_s; // takes the column of the table without a name
        const auto odd = [&](const QString& flags) {
            job.unita[0].FlagTab = flags;
            QStringList all;
            for (const Osservazione& one : oddities(job))
                all << one.dove + u": "_s + one.che;
            return all.join(u'\n');
        };
        const QString gap =
            u"Dati generali, tabella 3: il nome manca: da «Rampa» in poi ogni tabella "
            "prende i partecipanti di una colonna più a sinistra.\n"_s;
        QCOMPARE(odd(u"X X"_s), gap +
                                    u"unità 1 (Int. 1), T3: c'è una X, ma la tabella non ha nome: "
                                    "conta per «Rampa»."_s);
        QCOMPARE(odd(u"X  X"_s), gap + u"Dati generali, tabella 4: nessuna unità partecipa a "
                                       "«Rampa»: la spesa non è di nessuno."_s);
    }

    /// What a comma moves is what the shares say that are computed both ways.
    void thousandths()
    {
        QVERIFY(rc::check("thousandths of a comma", [] {
            LavoroScritto job = soundBuilding();
            job.unita[2].vani[1].cifre[1] = "1,5";
            const auto counted = shares(job);
            const double told = oddities(job).at(0).spostamento.value();
            job.unita[2].vani[1].cifre[1] = "1.5";
            const double moved = (shares(job)[2] - counted[2]).toDouble();
            RC_ASSERT(std::abs(told - moved) < 0.01);
        }));
    }

    void counts()
    {
        std::vector<Osservazione> remarks;
        QCOMPARE(conteggio(remarks), QString());
        for (const Regola rule : {Regola::ScalaIgnota, Regola::CodiceLungo, Regola::CampoVuoto,
                                  Regola::TroppiVani, Regola::DataMancante, Regola::DataMancante})
            remarks.push_back({.regola = rule});
        QCOMPARE(conteggio(remarks), u"1 errore, 3 avvisi, 2 note"_s);
        QCOMPARE(conteggio(remarks, Gravita::Avviso), u"1 errore, 3 avvisi"_s);
        QCOMPARE(conteggio(std::span(remarks).last(2)), u"2 note"_s);
    }

    /// Every rule and no other.
    void guideNamesEveryRule()
    {
        const QString guide =
            QString::fromUtf8(bytesOf(QStringLiteral(EXAMPLE_FOLDER "/../../docs/guida.md")));
        for (const DescrizioneRegola& rule : regole()) {
            const QString row = u"| %1 | %2 | %3 | %4 |\n"_s.arg(rule.argomento, rule.che,
                                                                 nome(rule.gravita), rule.perche);
            QVERIFY2(guide.contains(row), qPrintable(row));
        }
        const QString table = guide.section(u"| dove | che cosa | tipo | perché |"_s, 1)
                                  .section(u"\n\n"_s, 0, 0)
                                  .trimmed();
        QCOMPARE(table.count(u'\n'), static_cast<qsizetype>(regole().size()));
    }
};

ZELTO_TEST(TestJobCheck)
#include "tst_job_check.moc"

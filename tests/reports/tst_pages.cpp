// SPDX-License-Identifier: GPL-3.0-or-later
// What the reports put where on their pages.
#include "calc/calc_error.h"
#include "report_fixture.h"
#include "reports/on_paper.h"
#include "reports/print_sequence.h"
#include "support/building.h"
#include "support/runner.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::reports;
using namespace zelto::test;
using zelto::calc::ModelloLavoro;

namespace {

constexpr double bodyColumn = 84;

ModelloLavoro units(int count)
{
    return building(
        std::vector<UnitData>(static_cast<std::size_t>(count),
                              {.size = 10, .scala = u"A"_s, .HPiano = 1, .flags = u"X"_s}));
}

/// Words enough for the given number of characters.
QString words(int length)
{
    return u"parola breve "_s.repeated(length / 13 + 1).left(length).trimmed();
}

/// Prints the sections; gives the number of pages.
int print(Printer& printer, const OpzioniStampa& options,
          const QStringList& words = QStringList(SezioneCalcolo))
{
    return printer.record([&](auto& context) { stampaDocumento(context, words, options); });
}

/// The allocation by staircase A.
OpzioniRiparto allocation(const QString& amount)
{
    return {.importo = amount, .quote = {.kind = &tableKinds().back(), .key = u"A"_s}};
}

} // namespace

class TestPages : public QObject
{
    Q_OBJECT

private slots:
    void coverPage()
    {
        struct Case
        {
            QString date;
            std::size_t dateLines;
            QString notes;
            int noteRows;
        };
        const std::vector<Case> cases{
            {u"09.03.2024"_s, 1, u"Nota breve."_s, 1},
            {u" "_s, 0, u""_s, 0},
            {u""_s, 0, u"riga\r\n"_s.repeated(15), 10},
        };
        for (const Case& c : cases) {
            ModelloLavoro modello = building({{.size = 1}});
            modello.datiGenerali = {
                {u"Descrizione"_s, u"Condominio"_s}, {u"Data"_s, c.date}, {u"Note"_s, c.notes}};
            Printer printer(modello);
            QCOMPARE(printer.record(StampaPrimaPagina), 1);
            QCOMPARE(printer.user.status, QStringList{u"Stampa prima pagina"_s});

            const auto reference = printer.surface.find(u"Rif. - VERDI.2 -");
            QCOMPARE(reference.size(), 1U);
            QVERIFY(std::abs(reference[0].right - 74 * 144) < 1);
            const auto title = printer.surface.find(u"TABELLE MILLESIMALI");
            QVERIFY(std::abs((title[0].left + title[0].right) / 2 - 40.5 * 144) < 1);
            QCOMPARE(title[0].top, 21.5 * 240);
            QCOMPARE(printer.surface.lines[1].y1(), 29.0 * 240);
            QCOMPARE(printer.surface.find(u"Data - ").size(), c.dateLines);
            const auto isNote = [](const PlacedText& text) {
                return text.left == 12 * 144 && text.top >= 31.25 * 300 && text.top < 41.25 * 300;
            };
            QCOMPARE(std::ranges::count_if(printer.surface.texts, isNote), c.noteRows);
        }
    }

    void technicalReport()
    {
        ModelloLavoro modello = building({{.size = 1}});
        Printer nothing(modello);
        QCOMPARE(nothing.record(StampaRelazione), 0);

        modello.datiGenerali[u"Relazione"_s] = words(4500) + u"\r\nFine."_s;
        Printer printer(modello);
        const int pages = printer.record(StampaRelazione);
        QCOMPARE(pages, 3);
        QCOMPARE(printer.surface.find(u"RELAZIONE").size(), 1U);
        for (int page = 0; page < pages; ++page) {
            const auto number = printer.surface.find(u"Pag. n. %1"_s.arg(page + 1));
            QCOMPARE(number.size(), 1U);
            QCOMPARE(number[0].page, page);
        }
        const auto references = printer.surface.find(u"Rif. - VERDI.2 -");
        QCOMPARE(references.size(), 3U);
        // It ends with the text, whatever its length.
        QVERIFY(std::abs(references[0].right - 60 * printer.engine.CharWidth()) < 1);
        const auto end = printer.surface.find(u"Fine.");
        QCOMPARE(end.size(), 1U);
        QCOMPARE(end[0].page, 2);
    }

    /// Refused before anything is drawn or written; a spreadsheet gets none either.
    void figuresThatDoNotFit()
    {
        struct Case
        {
            std::vector<float> sizes;
            float height;
            QString named; ///< what the message has to name, empty where all fits
        };
        const QString room = u"«C.R.» del vano 1 dell'unità 1 (Int. 1) è "_s;
        const std::vector<Case> cases{
            {{99999.99F, 1}, 99999.99F, {}},
            {{-9999.99F, 1}, -9999.99F, {}},
            {{100000, 1}, 1, room + u"100000"_s},
            {{1e30F * 1e30F, 1}, 1, room},
            {{-10000, 1}, 1, room},
            {{1001, -1000}, 1, u"«MILLESIMI» dell'unità 1 (Int. 1) è 1001000"_s},
            {{1, 1}, 123456, u"«IND.H.P.» dell'unità 1 (Int. 1) è 123456"_s},
        };
        for (const Case& c : cases) {
            std::vector<UnitData> data;
            for (const float size : c.sizes)
                data.push_back({.size = size, .scala = u"A"_s, .HPiano = c.height});
            const ModelloLavoro modello = building(data);
            Printer printer(modello);
            const auto refusal = [](auto&& operation) {
                try {
                    operation();
                } catch (const zelto::calc::CalcError& error) {
                    return error.description();
                }
                return QString();
            };
            const QString printed = refusal(
                [&] { stampaDocumento(printer.context, sectionWords(), OpzioniCalcolo()); });
            QVERIFY2(printed.contains(c.named), qPrintable(printed));
            QCOMPARE(printed.isEmpty(), c.named.isEmpty());
            QCOMPARE(printer.surface.texts.empty(), !c.named.isEmpty());
            QCOMPARE(printer.output(u"consistenza.out"_s).isEmpty(), !c.named.isEmpty());
            const QString exported =
                refusal([&] { (void)tabelleScelte(modello, OpzioniCalcolo{}); });
            QVERIFY(exported == printed || printed.contains(u"C.R."));
        }
    }

    void prospectus()
    {
        ModelloLavoro modello = building({{.size = 12.345F}, {.size = 0}});
        modello.datiGenerali[u"Descrizione"_s] = u"Condominio"_s;
        modello.unita[0].vani[0].Ambiente = u"Soggiorno con angolo cottura"_s;
        modello.unita[1].vani.clear();
        Printer printer(modello);
        const OpzioniCalcolo options{.tabelle = {}, .primaPagina = 5};
        QCOMPARE(print(printer, options), 1);

        QCOMPARE(printer.surface.find(u"PAG. N. 5").size(), 1U);
        QCOMPARE(printer.surface.find(u"- /lavori/Verdi.2.zlt - Condominio ").size(), 1U);
        const auto heads = printer.surface.find(u"C.T.");
        QVERIFY(std::abs(heads.back().right - 110 * bodyColumn) < 1);
        QCOMPARE(printer.surface.find(u" -  Soggiorno con").size(), 1U);
        const auto size = printer.surface.find(u"   12.35");
        QCOMPARE(size.size(), 4U); // C.R., C.F., C.V.T., C.T.
        QVERIFY(std::abs(size[0].right - 40 * bodyColumn) < 1);
        const auto totals = printer.surface.find(u"TOTALE");
        QCOMPARE(totals.size(), 2U);
        QCOMPARE(totals[1].top - printer.surface.find(u"Riferimento - Int. 2")[0].top, 200.0);
        QCOMPARE(printer.output(u"consistenza.out"_s),
                 "Int. 1\t 1\t -  Soggiorno con angolo\t   12.35\t 1.000\t   12.35\t 1.000\t "
                 "1.000\t 1.000\t 1.000\t   12.35\t 1.000\t   12.35\r\n");
        QVERIFY(printer.output(u"calcolo.out"_s).isEmpty());
    }

    void prospectusPages()
    {
        const auto pages = [](const std::vector<std::size_t>& rooms, FormatoDettaglio formato) {
            ModelloLavoro modello = units(static_cast<int>(rooms.size()));
            for (std::size_t unit = 0; unit < rooms.size(); ++unit)
                modello.unita[unit].vani.assign(rooms[unit], room(20));
            Printer printer(modello);
            return print(printer, OpzioniCalcolo{.tabelle = {}, .formato = formato});
        };
        QCOMPARE(pages(std::vector<std::size_t>(10, 10), FormatoDettaglio::Compatto), 3);
        QCOMPARE(pages(std::vector<std::size_t>(10, 50), FormatoDettaglio::Compatto), 10);
        QCOMPARE(pages(std::vector<std::size_t>(10, 2), FormatoDettaglio::Esteso), 10);
        // A second unit that just fits below the first; a room more, and it does not.
        QCOMPARE(pages({55, 1}, FormatoDettaglio::Compatto), 1);
        QCOMPARE(pages({56, 1}, FormatoDettaglio::Compatto), 2);
    }

    void everySectionHasItsPagesAndFiles()
    {
        ModelloLavoro modello = units(3);
        modello.NomeTabella = {u"Acqua"_s, u"Luce"_s};
        modello.unita[2].CodScala = u"B"_s;
        modello.unita[1].Riferimento = u"Int.\t2"_s;
        Printer printer(modello);
        const int pages = print(printer, OpzioniCalcolo(), sectionWords());
        // Cover, prospectus, general, tables, staircases, sheets; charts, none of nobody's table.
        QCOMPARE(pages, 1 + 1 + 1 + 2 + 2 + 3 + (1 + 1 + 2));
        QCOMPARE(printer.surface.find(u"PAG. N. 13").size(), 1U);
        QCOMPARE(printer.output(u"calcolo.out"_s), "Int. 1\tPiano 1\t   10.0000\t  333.334\r\n"
                                                   "Int. 2\tPiano 2\t   10.0000\t  333.333\r\n"
                                                   "Int. 3\tPiano 3\t   10.0000\t  333.333\r\n");
        QVERIFY(printer.output(u"scale.out"_s)
                    .endsWith("\r\nInt. 3\tPiano 3\t   10.0000\t 1000.000\t    1.0000"
                              "\t 1000.000\t 1000.000\r\n"));
    }

    void sectionsWithoutContentLeaveNoPage()
    {
        Printer printer(building({{.size = 1}}));
        const OpzioniCalcolo options{.dettaglio = false, .tabelle = {u"tabelle"_s, u"scale"_s}};
        QCOMPARE(print(printer, options), 0);
        Printer empty(building({}));
        QCOMPARE(print(empty, OpzioniCalcolo()), 0);
        QCOMPARE(empty.output(u"calcolo.out"_s), "");
    }

    void allocationBreaksAfterFortyFiveUnits()
    {
        for (const auto& [count, pages] : {std::pair{45, 1}, {46, 2}, {300, 7}}) {
            Printer printer(units(count));
            QCOMPARE(print(printer, allocation(u"1000"_s)), pages);
            QCOMPARE(printer.surface.find(u"PAG. N. ").size(), static_cast<std::size_t>(pages));
            const auto total = printer.surface.find(u"1 000,00");
            QCOMPARE(total.size(), 1U);
            QCOMPARE(total[0].page, pages - 1);
            QVERIFY(std::abs(total[0].right - 127 * bodyColumn) < 1);
        }
    }

    /// Names in capitals that differ in their last letter, and a job deep in its folders.
    void namesArePrintedWhole()
    {
        ModelloLavoro modello = units(2);
        modello.datiGenerali = {{u"Descrizione"_s, u"CONDOMINIO DEI CEDRI"_s},
                                {u"Descrizionee"_s, u"VIA GARIBALDI 12, FIRENZE"_s}};
        const QString building = u"CONDOMINIO DEI CEDRI VIA GARIBALDI 12, FIRENZE"_s;
        for (std::size_t u = 0; u < 2; ++u) {
            const QString last = QString::number(u + 1);
            modello.unita[u].Riferimento = u"SC.A INT.12 MONTEMAGGI"_s + last;
            modello.unita[u].Livello = u"PIANO SEMINTERRATO "_s + last;
            modello.unita[u].vani = {room(1234.5F, u"RIPOSTIGLIO N."_s + last)};
        }
        Printer printer(modello);
        const QString folder = u"/home/studio/CONDOMINI"_s.repeated(6);
        printer.context.jobPath = folder + u"/CEDRI-VIA-GARIBALDI.ZLT"_s;
        print(printer, OpzioniCalcolo());
        print(printer, allocation(u"1000"_s));
        QStringList drawn;
        for (const PlacedText& text : printer.surface.texts)
            drawn << text.text.trimmed();
        for (const auto& unita : modello.unita) {
            QCOMPARE(drawn.count(unita.Riferimento), 3); // in the tables
            QCOMPARE(drawn.count(unita.Livello), 3);
            QCOMPARE(drawn.count(u"Riferimento - "_s + unita.Riferimento), 1);
            QCOMPARE(drawn.count(u"-  "_s + unita.vani[0].Ambiente), 1);
        }
        for (const PlacedText& line : printer.surface.find(u"- /home/studio")) {
            QVERIFY2(line.text.endsWith(u"…/CEDRI-VIA-GARIBALDI.ZLT - "_s + building) ||
                         line.text.endsWith(u"/CEDRI-VIA-GARIBALDI.ZLT - "_s + building),
                     qPrintable(line.text));
            QVERIFY(line.right <= 130 * bodyColumn);
        }
    }

    /// The check is told what the tables do to a name.
    void namesOnPaper()
    {
        using zelto::calc::Stampato;
        const auto onPaper = sullaCarta();
        struct Case
        {
            Stampato what;
            QString name;
            double figure;
            bool whole;
        };
        const std::vector<Case> cases{
            {Stampato::Riferimento, u"SC.A INT.12 MONTEMAGGI1"_s, 0, true},
            {Stampato::Riferimento, QString(23, u'W'), 0, false},
            {Stampato::Livello, u"PIANO SEMINTERRATO 1"_s, 99999.9999, true},
            {Stampato::Livello, QString(16, u'W'), 1, true},
            {Stampato::Livello, QString(16, u'W'), 99999.9999, false},
            {Stampato::Ambiente, u"RIPOSTIGLIO N.1"_s, 99999.99, true},
            {Stampato::Ambiente, QString(15, u'W'), 99999.99, false},
        };
        for (const Case& c : cases) {
            const QString shown = onPaper(c.what, c.name, c.figure);
            QVERIFY2(shown.endsWith(u'…') != c.whole, qPrintable(c.name));
            QVERIFY2((shown.endsWith(c.name)) == c.whole, qPrintable(shown));
        }
    }

    /// The largest job with the longest texts: nothing leaves the page, runs into its neighbour or
    /// is struck through by a rule.
    void nothingIsClippedOrOverlaps()
    {
        ModelloLavoro modello = units(300);
        modello.datiGenerali = {{u"Descrizione"_s, QString(30, u'W')},
                                {u"Descrizionee"_s, QString(30, u'W')},
                                {u"Data"_s, u"31.12.2024"_s},
                                {u"Note"_s, words(400)},
                                {u"Relazione"_s, words(20000)}};
        modello.NomeTabella = {QString(50, u'M')};
        for (auto& unita : modello.unita) {
            unita.Riferimento = QString(23, u'W');
            unita.Livello = QString(20, u'W');
            unita.vani.assign(50, room(199.99F, QString(15, u'W')));
        }
        Printer printer(modello);
        print(printer, OpzioniCalcolo(), sectionWords());
        print(printer, allocation(u"999999.99"_s));

        const PlacedText* previous = nullptr;
        for (const auto& text : printer.surface.texts) {
            QVERIFY2(text.right <= printer.engine.PageWidth() &&
                         text.top + 205 <= printer.engine.PageHeight(),
                     qPrintable(text.text));
            if (previous != nullptr && previous->page == text.page && previous->top == text.top)
                QVERIFY2(text.left >= previous->right || text.right <= previous->left,
                         qPrintable(previous->text + u'/' + text.text));
            previous = &text;
        }
        for (const QLineF& rule : printer.surface.lines)
            QVERIFY(rule.y1() < printer.engine.PageHeight());
    }
};

ZELTO_TEST(TestPages)
#include "tst_pages.moc"

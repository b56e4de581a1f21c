// SPDX-License-Identifier: GPL-3.0-or-later
// What the reports put where on their pages.
#include "calc/calc_error.h"
#include "report_fixture.h"
#include "reports/print_sequence.h"
#include "support/building.h"
#include "support/runner.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::reports;
using zelto::calc::ModelloLavoro;
using zelto::test::building;
using zelto::test::Printer;
using zelto::test::UnitData;

namespace {

constexpr double bodyRow = 200;
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

int rowOf(const zelto::test::PlacedText& text)
{
    return qRound(text.top / bodyRow);
}

} // namespace

class TestPages : public QObject
{
    Q_OBJECT

private slots:
    void coverPage_data()
    {
        QTest::addColumn<QString>("date");
        QTest::addColumn<int>("dateLines");
        QTest::addColumn<QString>("notes");
        QTest::addColumn<int>("noteRows");
        QTest::addRow("plain") << u"09.03.2024"_s << 1 << u"Nota breve."_s << 1;
        QTest::addRow("without date") << u" "_s << 0 << u""_s << 0;
        QTest::addRow("notes cut after ten rows") << u""_s << 0 << u"riga\r\n"_s.repeated(15) << 10;
    }

    void coverPage()
    {
        QFETCH(QString, notes);
        QFETCH(QString, date);
        ModelloLavoro modello = building({{.size = 1}});
        modello.Descrizione = u"Condominio"_s;
        modello.DataLavoro = date;
        modello.Note = notes;
        Printer printer(modello);
        QCOMPARE(printer.record(StampaPrimaPagina), 1);
        QCOMPARE(printer.user.status, QStringList{u"Stampa prima pagina"_s});

        const auto reference = printer.surface.find(u"Rif. - VERDI.2 -");
        QCOMPARE(reference.size(), 1U);
        QVERIFY(std::abs(reference[0].right - 74 * 144) < 1);
        const auto title = printer.surface.find(u"TABELLE MILLESIMALI");
        QVERIFY(std::abs((title[0].left + title[0].right) / 2 - 40.5 * 144) < 1);
        QCOMPARE(title[0].top, 21.5 * 240);
        QCOMPARE(printer.surface.lines[1].line.y1(), 29.0 * 240);
        QTEST(static_cast<int>(printer.surface.find(u"Data - ").size()), "dateLines");
        int noteRows = 0;
        for (const auto& text : printer.surface.texts)
            if (text.left == 12 * 144 && text.top >= 31.25 * 300 && text.top < 41.25 * 300)
                ++noteRows;
        QTEST(noteRows, "noteRows");
    }

    void technicalReport()
    {
        ModelloLavoro modello = building({{.size = 1}});
        Printer nothing(modello);
        QCOMPARE(nothing.record(StampaRelazione), 0);

        modello.Relazione = words(4500) + u"\r\nFine."_s;
        Printer printer(modello);
        const int pages = printer.record(StampaRelazione);
        QCOMPARE(pages, 3);
        QCOMPARE(printer.surface.find(u"RELAZIONE").size(), 1U);
        for (int page = 0; page < pages; ++page) {
            const auto number = printer.surface.find(u"Pag. n. %1"_s.arg(page + 1));
            QCOMPARE(number.size(), 1U);
            QCOMPARE(number[0].page, page);
        }
        QCOMPARE(printer.surface.find(u"Rif. - VERDI.2 -").size(), 3U);
        const auto end = printer.surface.find(u"Fine.");
        QCOMPARE(end.size(), 1U);
        QCOMPARE(end[0].page, 2);
    }

    void figuresThatDoNotFit_data()
    {
        QTest::addColumn<QList<float>>("sizes");
        QTest::addColumn<float>("height");
        QTest::addColumn<QString>("named"); // what the message has to name, empty where all fits
        const QString unit = u" dell'unità 1 (Int. 1) è "_s;
        QTest::addRow("largest") << QList<float>{99999.99F, 1} << 99999.99F << u""_s;
        QTest::addRow("most negative") << QList<float>{-9999.99F, 1} << -9999.99F << u""_s;
        QTest::addRow("room") << QList<float>{100000, 1} << 1.0F
                              << u"«C.R.» del vano 1 dell'unità 1 (Int. 1) è 100000"_s;
        QTest::addRow("infinite room") << QList<float>{1e30F * 1e30F, 1} << 1.0F << u"«C.R.»"_s;
        QTest::addRow("negative room") << QList<float>{-10000, 1} << 1.0F << u"«C.R.» del vano 1"_s;
        QTest::addRow("share") << QList<float>{1001, -1000} << 1.0F
                               << u"«MILLESIMI»"_s + unit + u"1001000"_s;
        QTest::addRow("index") << QList<float>{1, 1} << 123456.0F
                               << u"«IND.H.P.»"_s + unit + u"123456"_s;
    }

    /// Refused before anything is drawn or written; a spreadsheet gets none either.
    void figuresThatDoNotFit()
    {
        QFETCH(QList<float>, sizes);
        QFETCH(float, height);
        QFETCH(QString, named);
        std::vector<UnitData> data;
        for (const float size : sizes)
            data.push_back({.size = size, .scala = u"A"_s, .HPiano = height});
        const ModelloLavoro modello = building(data);
        Printer printer(modello);
        const auto refusal = [](auto&& operation) {
            try {
                operation();
            } catch (const zelto::calc::CalcError& error) {
                return QString::fromUtf8(error.what());
            }
            return QString();
        };
        const QString printed =
            refusal([&] { stampaDocumento(printer.context, sectionWords(), OpzioniCalcolo()); });
        QVERIFY2(printed.contains(named), qPrintable(printed));
        QCOMPARE(printed.isEmpty(), named.isEmpty());
        QCOMPARE(printer.surface.texts.empty(), !named.isEmpty());
        QCOMPARE(printer.outputLines(u"consistenza.out"_s).isEmpty(), !named.isEmpty());
        const QString exported = refusal([&] { (void)tabelleScelte(modello, OpzioniCalcolo{}); });
        QVERIFY(exported == printed || printed.contains(u"C.R."));
    }

    void prospectus()
    {
        ModelloLavoro modello = building({{.size = 12.345F}, {.size = 0}});
        modello.Descrizione = u"Condominio"_s;
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
        QCOMPARE(rowOf(totals[1]), rowOf(printer.surface.find(u"Riferimento - Int. 2")[0]) + 1);
        QCOMPARE(printer.outputLines(u"consistenza.out"_s),
                 (QStringList{
                     u"Int. 1\t 1\t -  Soggiorno con angolo\t   12.35\t 1.000\t   12.35\t 1.000\t "
                     u"1.000\t 1.000\t 1.000\t   12.35\t 1.000\t   12.35"_s,
                     QString()}));
        QVERIFY(printer.outputLines(u"calcolo.out"_s).isEmpty());
    }

    /// Of ten units: several to a page, as many rooms as a page takes, each on a page of its own.
    void prospectusPages()
    {
        const auto pages = [](std::size_t rooms, FormatoDettaglio formato) {
            ModelloLavoro modello = units(10);
            for (auto& unita : modello.unita)
                unita.vani.assign(rooms, zelto::test::room(20));
            Printer printer(modello);
            return print(printer, OpzioniCalcolo{.tabelle = {}, .formato = formato});
        };
        QCOMPARE(pages(10, FormatoDettaglio::Compatto), 3);
        QCOMPARE(pages(50, FormatoDettaglio::Compatto), 10);
        QCOMPARE(pages(2, FormatoDettaglio::Esteso), 10);
    }

    void everySectionHasItsPagesAndFiles()
    {
        ModelloLavoro modello = units(3);
        modello.NomeTabella = {u"Acqua"_s, u"Luce"_s};
        modello.unita[2].CodScala = u"B"_s;
        modello.unita[1].Riferimento = u"Int.\t2"_s;
        Printer printer(modello);
        const int pages = print(printer, OpzioniCalcolo(), sectionWords());
        QCOMPARE(pages, 1 + 1 + 1 + 2 + 2); // cover, prospectus, general, tables, staircases
        QCOMPARE(printer.surface.find(u"PAG. N. 6").size(), 1U);
        QCOMPARE(printer.outputLines(u"calcolo.out"_s),
                 (QStringList{u"Int. 1\tPiano 1\t   10.0000\t  333.334"_s,
                              u"Int. 2\tPiano 2\t   10.0000\t  333.333"_s,
                              u"Int. 3\tPiano 3\t   10.0000\t  333.333"_s, QString()}));
        QCOMPARE(printer.outputLines(u"scale.out"_s).value(4),
                 u"Int. 3\tPiano 3\t   10.0000\t 1000.000\t    1.0000\t 1000.000\t 1000.000"_s);
    }

    void sectionsWithoutContentLeaveNoPage()
    {
        Printer printer(building({{.size = 1}}));
        const OpzioniCalcolo options{.dettaglio = false, .tabelle = {u"tabelle"_s, u"scale"_s}};
        QCOMPARE(print(printer, options), 0);
        Printer empty(building({}));
        QCOMPARE(print(empty, OpzioniCalcolo()), 0);
        QCOMPARE(empty.outputLines(u"calcolo.out"_s), QStringList{QString()});
    }

    void allocationBreaksAfterFortyFiveUnits_data()
    {
        QTest::addColumn<int>("count");
        QTest::addColumn<int>("pages");
        QTest::addRow("45") << 45 << 1;
        QTest::addRow("46") << 46 << 2;
        QTest::addRow("300") << 300 << 7;
    }

    void allocationBreaksAfterFortyFiveUnits()
    {
        QFETCH(int, count);
        QFETCH(int, pages);
        Printer printer(units(count));
        const OpzioniRiparto options{.importo = u"1000"_s,
                                     .quote = {.kind = &tableKinds().back(), .key = u"A"_s}};
        QCOMPARE(print(printer, options), pages);
        QCOMPARE(printer.surface.find(u"PAG. N. ").size(), static_cast<std::size_t>(pages));
        const auto total = printer.surface.find(u"1 000,00");
        QCOMPARE(total.size(), 1U);
        QCOMPARE(total[0].page, pages - 1);
        QVERIFY(std::abs(total[0].right - 127 * bodyColumn) < 1);
    }

    /// The largest job with the longest texts: nothing leaves the page, runs into its neighbour or
    /// is struck through by a rule.
    void nothingIsClippedOrOverlaps()
    {
        ModelloLavoro modello = units(300);
        modello.Descrizione = modello.Descrizione2 = QString(30, u'W');
        modello.DataLavoro = u"31.12.2024"_s;
        modello.Note = words(400);
        modello.Relazione = words(20000);
        modello.NomeTabella = {QString(50, u'M')};
        for (auto& unita : modello.unita) {
            unita.Riferimento = QString(23, u'W');
            unita.Livello = QString(20, u'W');
            unita.vani.assign(50, zelto::test::room(199.99F, QString(15, u'W')));
        }
        Printer printer(modello);
        print(printer, OpzioniCalcolo(), sectionWords());
        const OpzioniRiparto options{.importo = u"999999.99"_s,
                                     .quote = {.kind = &tableKinds().back(), .key = u"A"_s}};
        print(printer, options);

        const zelto::test::PlacedText* previous = nullptr;
        for (const auto& text : printer.surface.texts) {
            QVERIFY2(text.right <= printer.pageWidth() && text.top + 205 <= printer.pageHeight(),
                     qPrintable(text.text));
            if (previous != nullptr && previous->page == text.page && previous->top == text.top)
                QVERIFY2(text.inkLeft >= previous->inkRight || text.inkRight <= previous->inkLeft,
                         qPrintable(previous->text + u'/' + text.text));
            previous = &text;
        }
        for (const auto& rule : printer.surface.lines)
            QVERIFY(rule.line.y1() < printer.pageHeight());
    }
};

ZELTO_TEST(TestPages)
#include "tst_pages.moc"

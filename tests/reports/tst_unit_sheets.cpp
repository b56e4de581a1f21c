// SPDX-License-Identifier: GPL-3.0-or-later
// The sheets of the units, and the bars of their shares.
#include "calc/job_loader.h"
#include "print/print_error.h"
#include "report_fixture.h"
#include "reports/print_sequence.h"
#include "support/building.h"
#include "support/runner.h"

#include <QDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::reports;
using namespace zelto::test;
using zelto::calc::ModelloLavoro;

namespace {

constexpr double bodyColumn = 84;

int print(Printer& printer, const QString& section, const OpzioniStampa& options)
{
    return printer.record([&](auto& context) { stampaDocumento(context, {section}, options); });
}

/// The texts of a page line by line, those of a line from left to right.
QStringList linesOf(const MemorySurface& surface, int page = 0)
{
    std::map<double, std::map<double, QString>> placed;
    for (const PlacedText& text : surface.texts)
        if (text.page == page)
            placed[text.top][text.left] = text.text.trimmed();
    QStringList lines;
    for (const auto& [top, texts] : placed) {
        QStringList line;
        for (const auto& [left, text] : texts)
            line << text;
        lines << line.join(u'|');
    }
    return lines;
}

using Figures = std::array<std::string, 7>;

/// Gives the only unit of the job rooms that are written so, and the job as it is written then.
zelto::calc::LavoroScritto write(ModelloLavoro& modello, const std::vector<Figures>& rooms,
                                 const QString& north = u"Nord"_s)
{
    zelto::calc::LavoroScritto scritto;
    scritto.elenchi.fill(u"0.90\tNo\t%1\r\n1.10\tSud\r\n"_s.arg(north));
    auto liste = zelto::calc::formaListe(scritto.elenchi);
    auto& vani = scritto.unita.emplace_back().vani;
    modello.unita[0].vani.clear();
    for (const Figures& figures : rooms) {
        vani.push_back({.posizione = 1, .ambiente = u"Sala"_s, .cifre = figures});
        modello.unita[0].vani.push_back(
            zelto::calc::formaVano(u"Sala"_s, vani.back().testi(), liste));
    }
    return scritto;
}

QStringList filesIn(const QString& folder)
{
    QStringList names = QDir(folder).entryList(QDir::Files | QDir::Hidden);
    names.sort();
    return names;
}

} // namespace

class TestUnitSheets : public QObject
{
    Q_OBJECT

    JobFolder m_folder;

private slots:
    /// Whole rows of the lists, a figure of the room's own, a reference to nothing; and a room that
    /// was written anew since the job was loaded.
    void whereCoefficientsComeFrom()
    {
        ModelloLavoro modello = building({{.size = 1}});
        auto scritto = write(modello, {{"10", "[No]", "[S", "1.05", "[Ovest]", "1", "1"},
                                       {"20", "[No]", "1", "1", "1", "1", "1"}});
        scritto.unita[0].vani[1].cifre[0] = "21";
        Printer printer(modello);
        printer.scritto = scritto;
        QCOMPARE(print(printer, u"schede"_s, OpzioniCalcolo()), 1);
        const QString page = linesOf(printer.surface).join(u'\n');
        QVERIFY2(page.contains(u"\n1|Sala|10.00|9.00|0.00|0.00\n"
                               "Destinazione|[No] Nord|0.900|Orientamento|[Sud]|1.100\n"
                               "Prospetto|1.050|Luminosità|[Ovest]|0.000\n"
                               "Funzionalità|1.000|Piano riduttore|1.000\n"
                               "2|Sala|20.00|18.00|18.00|18.00\n"
                               "Destinazione|0.900|Orientamento|1.000\n"),
                 qPrintable(page));
    }

    /// The same figures as in the tables, of those tables that are about the unit.
    void sharesOfAUnit()
    {
        ModelloLavoro modello =
            building({{.size = 10, .scala = u"A"_s, .HPiano = 1, .flags = u"X"_s},
                      {.size = 30, .scala = u"A"_s, .flags = u"XX"_s},
                      {.size = 20, .flags = u"X"_s}});
        modello.NomeTabella = {u"Acqua"_s, u"Luce"_s};
        modello.tabellaCodici = {{.codice = u"A"_s, .titolo = u"Scala a ponente"_s}};
        Printer printer(modello);
        const OpzioniRiparto options{.importo = u"1000"_s,
                                     .quote = {.kind = &tableKinds().back(), .key = u"A"_s}};
        QCOMPARE(print(printer, u"schede"_s, options), 3);
        const auto endOf = [&](int page) {
            const QStringList lines = linesOf(printer.surface, page);
            return lines.mid(lines.indexOf(u"TABELLA|CONS.TOT.|MILLESIMI"_s) + 1).join(u'\n');
        };
        const QString staircase =
            u"TABELLA|CONS.VIRT.|MILL.PROP.|IND.H.P.|MILL.PIANO|MILL.SCALA\n"_s;
        const QString allocation =
            u"TABELLA|CONS.VIRT.|M.PROP.|IND.H.P.|M.PIANO|M.SCALA|IMPORTO\n"_s;
        const QString totals = u"\nTOTALE|1000.000|1000.000|1000.000|1 000,00"_s;
        QCOMPARE(endOf(0),
                 u"Millesimi generali|10.0000|166.667\nAcqua|10.0000|166.667\n"_s + staircase +
                     u"Scala A|10.0000|250.000|1.0000|1000.000|625.000\n"_s + allocation +
                     u"Riparto Scala A|10.0000|250.000|1.0000|1000.000|625.000|625,00"_s + totals);
        QVERIFY(endOf(1).startsWith(u"Millesimi generali|30.0000|500.000\nAcqua|30.0000|500.000\n"
                                    "Luce|30.0000|1000.000\n"));
        QVERIFY(
            endOf(2).startsWith(u"Millesimi generali|20.0000|333.333\nAcqua|20.0000|333.333\n"_s +
                                allocation + u"Riparto Scala A|------"_s));
        const QStringList facts = linesOf(printer.surface, 0).mid(4, 4);
        QCOMPARE(facts, (QStringList{u"Riferimento - Int. 1|Livello - Piano 1"_s,
                                     u"Scala - A, Scala a ponente"_s, u"Altezza - 1.0000"_s,
                                     u"Tabelle - Acqua"_s}));
        QVERIFY(linesOf(printer.surface, 2).contains(u"Scala - nessuna"_s));
    }

    /// However many rooms and tables there are, everything stands on the page, whole.
    void theLargestUnit()
    {
        ModelloLavoro modello =
            building({{.size = 1, .scala = u"A"_s, .flags = QString(10, u'X')}});
        modello.NomeTabella.assign(10, QString(49, u'W'));
        const Figures figures{"3000.00", "[No]", "[No]", "[No]", "[No]", "[No]", "[No]"};
        const auto scritto = write(modello, std::vector(50, figures), QString(60, u'W'));
        Printer printer(modello);
        printer.scritto = scritto;
        const int pages = print(printer, u"schede"_s, OpzioniRiparto{.importo = u"5"_s});
        QVERIFY(pages > 3);
        QCOMPARE(printer.surface.find(u"SCHEDA DELL'UNITÀ 1").size(), std::size_t(pages));
        QCOMPARE(printer.surface.find(u"Sala").size(), 50U);
        QVERIFY(printer.surface.find(u"TABELLA").size() >= 2);
        const PlacedText* previous = nullptr;
        for (const PlacedText& text : printer.surface.texts) {
            QVERIFY2(text.right <= 130.1 * bodyColumn &&
                         text.top + 205 <= printer.engine.PageHeight(),
                     qPrintable(text.text));
            if (previous != nullptr && std::abs(previous->top - text.top) < 100)
                QVERIFY2(text.left > previous->right || text.right < previous->left,
                         qPrintable(previous->text + u'/' + text.text));
            previous = &text;
        }
    }

    void filesOfTheUnits()
    {
        ModelloLavoro modello = building(std::vector(4, UnitData{.size = 1}));
        modello.unita[0].Riferimento = u"A/1 <\"Bar\">:\t?"_s;
        modello.unita[1].Riferimento = u"../"_s + QString(80, u'x');
        modello.unita[2] = modello.unita[0];
        modello.unita[2].Riferimento = u"a/1 |BAR*"_s;
        modello.unita[3].Riferimento.clear();
        const Printer printer(modello);
        const QString folder = m_folder.file(u"schede"_s);
        const Schede schede = schedeUnita(modello, printer.scritto, OpzioniCalcolo());

        // One that cannot be replaced keeps the others from coming.
        QVERIFY(QDir().mkpath(folder + u"/004.pdf"_s));
        QVERIFY_THROWS_EXCEPTION(zelto::print::PrintError,
                                 writeSheets(folder, schede, printer.context, {}));
        QCOMPARE(filesIn(folder), QStringList());
        QVERIFY(QDir().rmdir(folder + u"/004.pdf"_s));
        writeSheets(folder, schede, printer.context, {});
        QCOMPARE(filesIn(folder),
                 (QStringList{u"001 A-1 Bar.pdf"_s, u"001 a-1 BAR (2).pdf"_s,
                              u"002 ..-"_s + QString(53, u'x') + u".pdf"_s, u"004.pdf"_s}));
        for (const QString& name : filesIn(folder))
            QVERIFY(bytesOf(folder + u'/' + name).startsWith("%PDF-1.4"));

        const ModelloLavoro empty;
        const Printer nobody(empty);
        QVERIFY_THROWS_EXCEPTION(zelto::calc::CalcError,
                                 writeSheets(folder,
                                             schedeUnita(empty, nobody.scritto, OpzioniCalcolo()),
                                             nobody.context, {}));
    }

    /// Round marks, bars as long as the shares say from the 0 on, and figures behind their ends
    /// that nothing strikes through.
    void barsAreAsLongAsShares_data()
    {
        QTest::addColumn<std::vector<float>>("sizes");
        QTest::addColumn<QString>("marks");
        QTest::newRow("one") << std::vector<float>{1} << u"0|200|400|600|800|1000"_s;
        QTest::newRow("several") << std::vector<float>{10, 20, 30, 40} << u"0|100|200|300|400"_s;
        QTest::newRow("negative") << std::vector<float>{20, -10} << u"-1000|0|1000|2000"_s;
        QTest::newRow("only small") << std::vector<float>(200, 1) << u"0|1|2|3|4|5"_s;
        QTest::newRow("none") << std::vector<float>{0, 0} << u"0|1"_s;
    }

    void barsAreAsLongAsShares()
    {
        QFETCH(std::vector<float>, sizes);
        QFETCH(QString, marks);
        std::vector<UnitData> data(sizes.size());
        for (std::size_t u = 0; u < sizes.size(); ++u)
            data[u].size = sizes[u];
        Printer printer(building(data));
        const int pages = print(printer, u"grafico"_s, OpzioniCalcolo());
        QCOMPARE(pages, static_cast<int>((sizes.size() + 44) / 45));
        const auto& boxes = printer.surface.boxes;
        QCOMPARE(boxes.size(), sizes.size());
        QVERIFY2(linesOf(printer.surface).contains(marks), qPrintable(linesOf(printer.surface)[4]));

        const std::vector<PlacedText> texts = printer.surface.texts;
        const QStringList figures = marks.split(u'|');
        const auto markAt = [&](const QString& mark) {
            const auto found = std::ranges::find(texts, mark, &PlacedText::text);
            return (found->left + found->right) / 2;
        };
        const double zero = markAt(u"0"_s);
        const double unit = (markAt(figures.back()) - zero) / figures.back().toDouble();
        const auto shares =
            zelto::calc::calcolaMillGen(zelto::calc::calcolaConsistenze(building(data)));
        for (std::size_t u = 0; u < boxes.size(); ++u) {
            const double end = zero + shares[u].toDouble() * unit;
            QVERIFY(std::abs(boxes[u].left() - std::min(zero, end)) < 2);
            QVERIFY(std::abs(boxes[u].right() - std::max(zero, end)) < 2);
        }
        if (pages > 1) // lines do not know theirs
            return;
        for (const PlacedText& text : texts) {
            const QRectF ink({text.left, text.top + 40}, QPointF{text.right, text.top + 170});
            QVERIFY2(ink.right() < 130 * bodyColumn, qPrintable(text.text));
            for (const QLineF& line : printer.surface.lines)
                QVERIFY2(line.x2() < ink.left() || line.x1() > ink.right() ||
                             line.y2() < ink.top() || line.y1() > ink.bottom(),
                         qPrintable(text.text));
        }
    }
};

ZELTO_TEST(TestUnitSheets)
#include "tst_unit_sheets.moc"

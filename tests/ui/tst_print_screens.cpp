// SPDX-License-Identifier: GPL-3.0-or-later
// The calculation and the allocation screen, from their boxes to the pages of the preview.
#include "reports/ui/millesimi.h"
#include "reports/ui/riparto.h"
#include "support/accessible_names.h"
#include "support/pdf_file.h"
#include "support/print_office.h"
#include "support/runner.h"
#include "widgets/typed_line.h"

#include <QCheckBox>
#include <QComboBox>
#include <QRadioButton>
#include <QRegularExpression>

using zelto::reports::Millesimi;
using zelto::reports::Riparto;
using namespace zelto::test;

class TestPrintScreens : public QObject
{
    Q_OBJECT

    std::unique_ptr<PrintOffice> m_office;

    /// The initials of the controls that are visible, "-" for others.
    static QString visible(QWidget& screen, const QStringList& names)
    {
        QString initials;
        for (const QString& name : names)
            initials += screen.findChild<QWidget*>(name)->isVisible() ? name.front() : QChar{u'-'};
        return initials;
    }
    template <typename Screen>
    std::unique_ptr<Screen> open()
    {
        auto screen = std::make_unique<Screen>(m_office->context());
        screen->show();
        if (!QTest::qWaitForWindowExposed(screen.get()))
            qFatal("the screen does not appear");
        return screen;
    }
    /// What the preview of the screen shows.
    MemorySurface preview(zelto::reports::PrintScreen& screen)
    {
        MemorySurface pages;
        inPreview(screen, [&](const auto&) { pages = m_office->pages(); });
        return pages;
    }
    /// The headings of the sections, each once.
    static QStringList headings(const MemorySurface& pages)
    {
        QStringList found;
        for (const auto& placed : pages.texts) {
            const QString text = placed.text.trimmed();
            const bool isHeading = text == u"TABELLE MILLESIMALI" || text == u"RELAZIONE" ||
                                   text == u"VANO AMBIENTE" || text.startsWith(u"DETERMINAZIONE");
            if (isHeading && !found.contains(text))
                found << text;
        }
        return found;
    }
    /// The boxes of the sections that the screen offers, those checked with a "+".
    static QString offered(QWidget& screen)
    {
        QStringList captions;
        const auto boxes = screen.findChildren<QCheckBox*>(QRegularExpression(u"^Sezione"_s));
        for (const QCheckBox* box : boxes)
            captions << (box->isChecked() ? u"+"_s : QString()) + box->text().trimmed();
        return captions.join(u", "_s);
    }
    /// The pages of an amount that is typed.
    MemorySurface allocated(const QString& amount, bool closes = false)
    {
        const auto screen = open<Riparto>();
        auto* field = screen->findChild<zelto::widgets::TypedLine*>(u"Dati0"_s);
        field->clear();
        QTest::keyClicks(field, amount);
        check(*screen, {u"Quadratura"_s}, closes);
        return preview(*screen);
    }
    /// The parts of the amount and their total.
    static QStringList amounts(const MemorySurface& pages)
    {
        constexpr double RightEdge = 120 * 84;
        QStringList texts;
        for (const auto& placed : pages.texts)
            if (std::abs(placed.right - RightEdge) < 1 && placed.text != u"IMPORTO")
                texts << placed.text.trimmed();
        return texts;
    }

private slots:
    void init() { m_office = std::make_unique<PrintOffice>(); }
    void cleanup()
    {
        QVERIFY(m_office->pageFiles().isEmpty());
        QVERIFY(QApplication::overrideCursor() == nullptr);
    }

    void rulesOfTheCalculationScreen()
    {
        const auto screen = open<Millesimi>();
        QCOMPARE(visible(*screen, {u"TabSel4"_s}), u"T"_s);
        check(*screen, {u"TabSel3"_s}, false);
        QCOMPARE(visible(*screen, {u"TabSel4"_s}), u"-"_s);
        QVERIFY(screen->findChild<QRadioButton*>(u"OpzSta0"_s)->isEnabled());
        check(*screen, {u"TabSel0"_s}, false);
        QVERIFY(!screen->findChild<QRadioButton*>(u"OpzSta0"_s)->isEnabled());
        QCOMPARE(namelessControls(*screen), QStringList());
        check(*screen, {u"Sezione0"_s, u"Sezione1"_s, u"Sezione2"_s}, false);
        screen->anteprima();
        screen->stampa();
        QVERIFY(screen->isVisible());
        QCOMPARE(m_office->user.said(), QString());
    }

    void sectionsOnRequest()
    {
        const auto calculation = open<Millesimi>();
        QCOMPARE(offered(*calculation), u"+Prima pagina, +Relazione, +Calcolo, Schede, Grafico"_s);
        check(*calculation, {u"Sezione0"_s, u"Sezione1"_s, u"Sezione2"_s}, false);
        check(*calculation, {u"Sezione3"_s, u"Sezione4"_s}, true);
        MemorySurface pages = preview(*calculation);
        QCOMPARE(pages.find(u"SCHEDA DELL'UNITÀ").size(), 32U);
        QVERIFY(!pages.find(u"[Negozio] Locali di vendita").empty());
        QCOMPARE(headings(pages).filter(u"DETERMINAZIONE"_s).size(), 6);

        const auto allocation = open<Riparto>();
        QCOMPARE(offered(*allocation), u"Prima pagina, Relazione, +Calcolo, Schede"_s);
        check(*allocation, {u"Sezione3"_s}, true);
        pages = preview(*allocation);
        QCOMPARE(pages.find(u"Riparto Millesimi generali").size(), 32U);
    }

    /// Every combination of sections and tables prints those and no others.
    void everyChoicePrintsItself()
    {
        for (unsigned choice = 1; choice < 128; ++choice) {
            const auto on = [&](int bit) { return (choice >> bit & 1U) != 0; };
            if (!on(0) && !on(1) && !on(2))
                continue;
            Millesimi screen(m_office->context());
            for (int i = 0; i < 3; ++i)
                check(screen, {u"Sezione%1"_s.arg(i)}, on(i));
            for (int i = 0; i < 4; ++i)
                check(screen, {u"TabSel%1"_s.arg(i)}, on(3 + i));
            const bool prints = on(0) || on(1) || (on(2) && choice >> 3 != 0);
            if (!prints) {
                QVERIFY(m_office->user.hears([&] { screen.anteprima(); })
                            .contains(u"Non c'è nessuna pagina da stampare."));
                continue;
            }
            const QString found = headings(preview(screen)).join(u'|');
            QCOMPARE(found.contains(u"TABELLE MILLESIMALI"), on(0));
            QCOMPARE(found.contains(u"RELAZIONE"), on(1));
            QCOMPARE(found.contains(u"VANO AMBIENTE"), on(2) && on(3));
            QCOMPARE(found.contains(u"MILLESIMI GENERALI"), on(2) && on(4));
            QCOMPARE(found.contains(u"MILLESIMI Riscaldamento"), on(2) && on(5));
            QCOMPARE(found.contains(u"SCALA") || found.contains(u"Scala"), on(2) && on(6));
            QCOMPARE(screen.result(), static_cast<int>(QDialog::Accepted));
        }
    }

    void optionsOfTheCalculation()
    {
        const auto shown = [&](const QString& box, bool on) {
            Millesimi screen(m_office->context());
            check(screen, {u"Sezione0"_s, u"Sezione1"_s}, false);
            check(screen, {box}, on);
            screen.findChild<zelto::widgets::TypedLine*>(u"Dati0"_s)->setText(u"5"_s);
            return preview(screen);
        };
        const MemorySurface compact = shown(u"OpzSta1"_s, true);
        const MemorySurface extended = shown(u"OpzSta0"_s, true);
        QVERIFY(extended.texts.back().page > compact.texts.back().page);
        QCOMPARE(compact.find(u"PAG. N.").front().text, u"PAG. N. 5"_s);
        QVERIFY(shown(u"TabSel4"_s, true).texts != shown(u"TabSel4"_s, false).texts);
        QVERIFY(m_office->user.said().contains(u"status: Stampa prospetto dei calcoli (busy)"));
    }

    void aJobOfLittle()
    {
        m_office->lavoro.Execute(u"DELETE FROM [Dati Generali]"_s);
        m_office->lavoro.Execute(u"UPDATE [Unità immobiliari] SET [Codice scala] = NULL"_s);
        const auto screen = open<Riparto>();
        QCOMPARE(visible(*screen, {u"TabSel0"_s, u"TabSel1"_s, u"TabSel2"_s}), u"T--"_s);
        Millesimi calculation(m_office->context());
        QCOMPARE(headings(preview(calculation)),
                 (QStringList{u"TABELLE MILLESIMALI"_s, u"VANO AMBIENTE"_s,
                              u"DETERMINAZIONE MILLESIMI GENERALI"_s}));
    }

    void rulesOfTheAllocationScreen()
    {
        const auto screen = open<Riparto>();
        const QStringList names{u"Tabella"_s, u"Scala"_s, u"Indice"_s};
        QCOMPARE(visible(*screen, names), u"---"_s);
        check(*screen, {u"TabSel1"_s}, true);
        QCOMPARE(visible(*screen, names), u"T--"_s);
        check(*screen, {u"TabSel2"_s}, true);
        QCOMPARE(visible(*screen, names), u"-SI"_s);
        QCOMPARE(screen->findChild<QComboBox*>(u"Scala"_s)->currentText(), u"A"_s);
        QVERIFY(!screen->findChild<QCheckBox*>(u"Quadratura"_s)->isChecked());
        QCOMPARE(namelessControls(*screen), QStringList());
    }

    /// What is typed is allocated as it stands; what is not enough for anybody, to nobody.
    void totals()
    {
        const auto total = [this](const QString& typed) {
            return amounts(allocated(typed)).join(u'|').section(u'|', -1);
        };
        QCOMPARE(total(u"1000,50"_s), u"1 000,50"_s);
        QCOMPARE(total(u"0.01"_s), u"0,01"_s);
        QCOMPARE(total({}), QString());
    }

    void tooMuch()
    {
        const auto screen = open<Riparto>();
        screen->findChild<QLineEdit*>(u"Dati0"_s)->setText(u"1000000000"_s);
        QVERIFY(m_office->user.hears([&] { screen->anteprima(); })
                    .contains(u"L'importo da ripartire ha troppe cifre"));
        QVERIFY(screen->isVisible());
        QVERIFY(m_office->user.hears([&] { screen->stampa(); }, {u"~/riparto.pdf"_s})
                    .contains(u"in [~ESEMPIO - riparto.pdf]"));
        QVERIFY(!QFile::exists(m_office->path(u"riparto.pdf"_s)));
    }

    /// Without a printer and without page files.
    void printedIntoAPdf()
    {
        const auto printed = [this](zelto::reports::PrintScreen& screen) {
            screen.findChild<QLineEdit*>(u"Dati0"_s)->setText(u"7"_s);
            m_office->user.saysYes = true;
            (void)m_office->user.hears([&] { screen.stampa(); }, {u"~/stampa.pdf"_s});
            return PdfFile(m_office->path(u"stampa.pdf"_s));
        };
        Millesimi millesimi(m_office->context());
        check(millesimi, {u"Sezione0"_s, u"TabSel0"_s, u"TabSel2"_s}, false);
        const PdfFile tables = printed(millesimi);
        QCOMPARE(tables.outline().join(u','),
                 u"1 Relazione,8 Millesimi generali,9 Scala A,10 Scala B"_s);
        QCOMPARE(tables.labels().mid(6, 2).join(u','), u"Pag. n. 7,PAG. N. 7"_s);
        Riparto riparto(m_office->context());
        const PdfFile allocation = printed(riparto);
        QCOMPARE(allocation.outline().last(), u"1 Riparto Millesimi generali"_s);
        QCOMPARE(allocation.labels().last(), u"PAG. N. 1"_s);
    }

    void partsCloseToTheAmount()
    {
        for (const bool closes : {false, true}) {
            const MemorySurface pages = allocated(u"1000.00"_s, closes);
            QStringList parts = amounts(pages);
            QCOMPARE(parts.takeLast(), u"1 000,00"_s);
            qint64 sum = 0;
            for (const QString& part : parts)
                sum += QString(part).remove(u' ').remove(u',').toLongLong();
            QCOMPARE(sum == 100'000, closes);
            QCOMPARE(pages.find(u"IMPORTI CON QUADRATURA AL CENTESIMO").size(), closes ? 1U : 0U);
        }
    }

    void tablesAsFiles()
    {
        Millesimi screen(m_office->context());
        const auto exporting = [&] {
            return m_office->user.hears([&] { screen.esportaTabelle(); }, {u"~/tabelle"_s});
        };
        const QString workbook = m_office->path(u"tabelle.xlsx"_s);
        QVERIFY(exporting().contains(u"~/tabelle.xlsx"));
        QVERIFY(QFileInfo(workbook).size() > 5000);
        QCOMPARE(QDir(m_office->path(u"tabelle CSV"_s)).entryList(QDir::Files, QDir::Name),
                 (QStringList{u"Acqua e autoclave.csv"_s, u"Autorimessa interrata.csv"_s,
                              u"Millesimi generali.csv"_s, u"Riscaldamento.csv"_s, u"Scala A.csv"_s,
                              u"Scala B.csv"_s}));
        QVERIFY(QFile::remove(workbook));
        m_office->user.saysYes = false;
        QVERIFY(exporting().contains(u"«tabelle CSV» esiste già"));
        QVERIFY(!QFile::exists(workbook));
        m_office->user.saysYes = true;
        check(screen, {u"TabSel0"_s, u"TabSel1"_s, u"TabSel2"_s, u"TabSel3"_s}, false);
        QVERIFY(exporting().contains(u"nessuna tabella"));
        QVERIFY(!QFile::exists(workbook));
    }

    void aFolderThatCannotBeWritten()
    {
        zelto::print::PrintEngine engine(m_office->path(u"manca"_s), {});
        const auto context = m_office->context();
        const auto& print = context.print;
        Millesimi screen({context.lavoro,
                          context.jobPath,
                          context.outputFolder,
                          {engine, print.printers, print.window, print.dialogs, print.settings}});
        screen.show();
        QVERIFY(m_office->user.hears([&] { screen.anteprima(); })
                    .contains(u"report: La cartella dei file di pagina"));
        QVERIFY(screen.isVisible());
    }
};

ZELTO_TEST(TestPrintScreens)
#include "tst_print_screens.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
// One document on a printer, in a PDF file, in the preview and in the page files.
#include "reports/ui/millesimi.h"
#include "support/print_office.h"
#include "support/print_server.h"
#include "support/runner.h"

#include <QPrinter>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextDocumentFragment>

using zelto::print::frmPreview;
using zelto::reports::Millesimi;
using namespace zelto::test;

namespace {

/// A word and where it stands, in twips of the sheet; pages counted from 0.
struct Word
{
    int page = 0;
    QString text;
    double left = 0;
    double top = 0;
};

std::vector<Word> wordsOf(const QString& pdf)
{
    QProcess process;
    process.start(u"pdftotext"_s, {u"-bbox"_s, pdf, u"-"_s});
    if (!process.waitForFinished() || process.exitCode() != 0)
        qFatal("pdftotext cannot read %s", qPrintable(pdf));
    static const QRegularExpression line(
        u"<word xMin=\"([0-9.]+)\" yMin=\"([0-9.]+)\"[^>]*>([^<]*)</word>"_s);
    constexpr double TwipsPerPoint = 20;
    std::vector<Word> words;
    int page = -1;
    for (const QString& text : QString::fromUtf8(process.readAllStandardOutput()).split(u'\n')) {
        page += text.contains(u"<page ") ? 1 : 0;
        if (const auto found = line.match(text); found.hasMatch())
            words.push_back({page, QTextDocumentFragment::fromHtml(found.captured(3)).toPlainText(),
                             found.captured(1).toDouble() * TwipsPerPoint,
                             found.captured(2).toDouble() * TwipsPerPoint});
    }
    return words;
}

void compareWords(const std::vector<Word>& actual, const std::vector<Word>& expected)
{
    QCOMPARE(actual.size(), expected.size());
    for (std::size_t i = 0; i < actual.size(); ++i) {
        const auto& [page, text, left, top] = expected[i];
        QVERIFY2(actual[i].page == page && actual[i].text == text &&
                     std::abs(actual[i].left - left) <= 1 && std::abs(actual[i].top - top) <= 1,
                 qPrintable(text));
    }
}

/// The texts of the page files of which no word of the file begins where they do.
QStringList misplaced(const MemorySurface& drawn, const std::vector<Word>& words)
{
    constexpr double Margin = 282; // 5 mm, in whole points with some versions of Qt
    constexpr double MarginSlack = 3;
    constexpr double LineSlack = 60; // a reader's notion of a text's top is not ours
    QStringList missing;
    for (const auto& text : drawn.texts) {
        const QString first = text.text.trimmed().section(u' ', 0, 0);
        const auto begins = [&](const Word& word) {
            return word.page == text.page && word.text == first &&
                   std::abs(word.left - text.left - Margin) <= MarginSlack &&
                   std::abs(word.top - text.top - Margin) < LineSlack;
        };
        if (!first.isEmpty() && std::none_of(words.begin(), words.end(), begins))
            missing << text.text;
    }
    return missing;
}

} // namespace

class TestPrinting : public QObject
{
    Q_OBJECT

    std::unique_ptr<PrintServer> m_server;
    std::unique_ptr<PrintOffice> m_office;
    bool m_hasServer = false;
    qsizetype m_before = 0; ///< files that the queue had kept

    /// Opens the preview of the whole document and acts in it.
    template <typename Acting>
    void preview(Acting acting)
    {
        Millesimi screen(m_office->context());
        inPreview(screen, acting);
        QVERIFY(m_office->pageFiles().isEmpty());
    }

    /// The file that the printer's queue has kept since the test began.
    [[nodiscard]] QString printed()
    {
        if (!QTest::qWaitFor([&] { return m_server->jobs().size() > m_before; }, 20'000))
            qFatal("nothing was printed");
        return m_server->jobs().constLast();
    }

private slots:
    void initTestCase()
    {
        m_server = std::make_unique<PrintServer>();
        m_hasServer = m_server->start() && zelto::print::PrinterDesk::isInstalled();
        qInfo("printing to %s", m_hasServer ? "a CUPS server" : "a file: no CUPS server started");
    }
    void init()
    {
        if (!m_hasServer && qstrcmp(QTest::currentTestFunction(), "theSameEverywhere") != 0)
            QSKIP("no CUPS server");
        m_office = std::make_unique<PrintOffice>();
        m_before = m_server->jobs().size();
    }
    void cleanupTestCase() { m_server.reset(); }

    void theSameEverywhere()
    {
        const QString pdf = m_office->path(u"anteprima.pdf"_s);
        const QString fallback = m_office->path(u"stampa.pdf"_s);
        MemorySurface pageFiles;
        int pageCount = 0;
        m_office->user.pages = {1, 1000};
        preview([&](frmPreview& window) {
            pageCount = m_office->engine.pageCount();
            pageFiles = m_office->pages();
            const auto document = [&] { m_office->engine.PrintDocument(1, pageCount); };
            zelto::print::drawIntoPdf(m_office->services(), pdf, {}, document);
            m_office->user.pages->last = pageCount;
            if (m_hasServer)
                window.print();
            else {
                m_office->services().printers.printer().setOutputFileName(fallback);
                zelto::print::drawOnPrinter(m_office->services(), u"prova"_s, document);
            }
        });
        QVERIFY(pageCount > 5);
        const std::vector<Word> inFile = wordsOf(pdf);
        QVERIFY(inFile.size() > 1000);
        QCOMPARE(inFile.back().page, pageCount - 1);
        compareWords(wordsOf(m_hasServer ? printed() : fallback), inFile);
        QVERIFY(pageFiles.texts.size() > 1000);
        QCOMPARE(misplaced(pageFiles, inFile), QStringList());
    }

    void aRangeOfPages()
    {
        m_office->user.pages = {2, 3};
        bool closed = false;
        std::vector<Word> expected;
        preview([&](frmPreview& window) {
            const QString pdf = m_office->path(u"due.pdf"_s);
            zelto::print::drawIntoPdf(m_office->services(), pdf, {},
                                      [&] { m_office->engine.PrintDocument(2, 3); });
            expected = wordsOf(pdf);
            QTest::mouseClick(window.findChild<QPushButton*>(u"Stampa"_s), Qt::LeftButton);
            closed = !window.isVisible();
        });
        QVERIFY(closed);
        const std::vector<Word> words = wordsOf(printed());
        QCOMPARE(words.back().page, 1);
        compareWords(words, expected);
    }

    void straightOntoThePrinter()
    {
        Millesimi screen(m_office->context());
        check(screen, {u"Sezione0"_s, u"Sezione1"_s}, false);
        screen.stampa();
        QVERIFY(m_office->pageFiles().isEmpty());
        const std::vector<Word> words = wordsOf(printed());
        QCOMPARE(words.front().text, u"DATA"_s);
        QVERIFY(words.size() > 1000);
    }

    void onlyWholeDocumentsArePrinted()
    {
        auto context = m_office->context();
        context.outputFolder = m_office->path(u"manca"_s);
        Millesimi failing(context);
        QVERIFY(m_office->user.hears([&] { failing.stampa(); }).contains(u"report: La cartella «"));
        m_office->user.pages.reset();
        preview([&](frmPreview& window) {
            window.print();
            QVERIFY(window.isVisible());
        });
        m_office->lavoro.Execute(u"DELETE FROM [Dati Generali]"_s);
        Millesimi screen(m_office->context());
        check(screen, {u"Sezione0"_s, u"Sezione2"_s}, false);
        QVERIFY(m_office->user.hears([&] { screen.stampa(); })
                    .contains(u"message: Non c'è nessuna pagina da stampare."));
        check(screen, {u"Sezione0"_s}, true);
        screen.stampa();
        QVERIFY(!printed().isEmpty());
        QCOMPARE(m_server->jobs().size(), m_before + 1);
    }
};

ZELTO_TEST(TestPrinting)
#include "tst_printing.moc"

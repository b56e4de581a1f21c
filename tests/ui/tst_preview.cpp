// SPDX-License-Identifier: GPL-3.0-or-later
// The preview window in the user's hands, on a machine without a printer.
#include "print/ui/page_strip.h"
#include "print/ui/page_view.h"
#include "print/ui/pdf_pages_dialog.h"
#include "support/accessible_names.h"
#include "support/print_office.h"
#include "support/runner.h"

#include <QLabel>
#include <QLineEdit>
#include <QProcess>
#include <QPushButton>
#include <QScrollBar>
#include <QSpinBox>
#include <QToolButton>
#include <QWheelEvent>

#include <malloc.h>

using namespace zelto::print;
using namespace zelto::test;

class TestPreview : public QObject
{
    Q_OBJECT

    std::unique_ptr<PrintOffice> m_office;
    std::unique_ptr<frmPreview> m_preview;

    /// Shows the preview of as many pages as wanted.
    void open(int pages)
    {
        m_preview.reset(); // it takes its pages with it
        PrintEngine& engine = m_office->engine;
        engine.BeginDocument();
        for (int page = 1; page <= pages; ++page) {
            if (page > 1)
                engine.NewPage();
            engine.WriteState();
            engine.PrintText(5, 5, 0, u"Pagina numero %1 con del testo"_s.arg(page));
            engine.DrawBox(10, 10, 50, 50, 2, false);
        }
        engine.EndDocument();
        m_preview = std::make_unique<frmPreview>(
            m_office->services(),
            DocumentData{.printTitle = u"prova"_s,
                         .info = {.title = u"Prova & controllo"_s, .author = u"Ada «B.»"_s},
                         .pdfPath = m_office->path(u"ESEMPIO.pdf"_s)});
        m_preview->resize(800, 700);
        m_preview->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_preview.get()));
        QCOMPARE(m_preview->page(), 1);
    }
    template <typename Control>
    [[nodiscard]] Control* find(const QString& name) const
    {
        return m_preview->findChild<Control*>(name);
    }
    [[nodiscard]] PagePicture* picture() const { return find<PagePicture>(u"Pic"_s); }
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const
    {
        QTest::keyClick(m_preview.get(), key, modifiers);
    }
    [[nodiscard]] QString caption() const { return find<QLabel>(u"Pagina"_s)->text(); }
    [[nodiscard]] ScrollPosition scrolled() const
    {
        return {find<QScrollBar>(u"HScroll1"_s)->value(), find<QScrollBar>(u"VScroll1"_s)->value()};
    }

private slots:
    void init() { m_office = std::make_unique<PrintOffice>(); }
    void cleanup()
    {
        m_preview.reset();
        QVERIFY(m_office->pageFiles().isEmpty());
    }

    /// Nor in memory; an icon made anew for each left 12 kB in a cache.
    void nothingIsLeftBehind()
    {
        const auto used = [this] {
            for (int i = 0; i < 20; ++i) {
                open(1);
                m_preview.reset();
            }
            return static_cast<qint64>(::mallinfo2().uordblks);
        };
        (void)used();
        const qint64 before = used();
        QVERIFY(used() - before < 60'000);
    }

    void turningPages()
    {
        open(7);
        QCOMPARE(caption(), u"Pagina 1/7"_s);
        const QImage first = picture()->image();
        QList<int> pages;
        for (const auto key : {Qt::Key_PageUp, Qt::Key_PageDown, Qt::Key_PageDown, Qt::Key_PageUp,
                               Qt::Key_End, Qt::Key_PageDown, Qt::Key_Home}) {
            press(key);
            pages << m_preview->page();
        }
        QCOMPARE(pages, (QList<int>{1, 2, 3, 2, 7, 7, 1}));
        press(Qt::Key_PageDown, Qt::ShiftModifier);
        QCOMPARE(m_preview->page(), 1);
        QCOMPARE(picture()->image(), first);
        for (const auto& [button, page] :
             {std::pair{u"Ultima"_s, 7}, std::pair{u"Precedente"_s, 6}, std::pair{u"Prima"_s, 1},
              std::pair{u"Successiva"_s, 2}}) {
            QTest::mouseClick(find<QToolButton>(button), Qt::LeftButton);
            QCOMPARE(caption(), u"Pagina %1/7"_s.arg(page));
        }
        QVERIFY(picture()->image() != first);
        QTest::keyClicks(m_preview.get(), u"5"_s);
        QTest::keyClick(find<QLineEdit>(u"VaiAPagina"_s), Qt::Key_Return);
        QCOMPARE(caption(), u"Pagina 5/7"_s);
        // Beyond the last page is the last one; the first Esc leaves the field.
        QTest::keyClicks(m_preview.get(), u"99"_s);
        QTest::keyClick(find<QLineEdit>(u"VaiAPagina"_s), Qt::Key_Return);
        QCOMPARE(caption(), u"Pagina 7/7"_s);
        QTest::keyClicks(m_preview.get(), u"3"_s);
        QTest::keyClick(find<QLineEdit>(u"VaiAPagina"_s), Qt::Key_Escape);
        QVERIFY(m_preview->isVisible() && find<PageView>({})->hasFocus());
        QCOMPARE(caption(), u"Pagina 7/7"_s);
        auto& strip = *find<PageStrip>(u"Miniature"_s);
        QCOMPARE(strip.currentIndex().row(), 6);
        strip.setFocus();
        QTest::keyClick(&strip, Qt::Key_Up);
        QTest::keyClick(&strip, Qt::Key_PageUp);
        QCOMPARE(caption(), u"Pagina 5/7"_s);
        QCOMPARE(namelessControls(*m_preview), QStringList());
        press(Qt::Key_Escape);
        QVERIFY(!m_preview->isVisible());
    }

    void onePage()
    {
        open(1);
        QCOMPARE(caption(), u"Pagina 1"_s);
        QVERIFY(!picture()->image().isNull());
        for (const Qt::Key key : {Qt::Key_PageDown, Qt::Key_End, Qt::Key_PageUp, Qt::Key_3})
            press(key);
        QCOMPARE(caption(), u"Pagina 1"_s);
    }

    void aClickEnlarges()
    {
        open(2);
        const QSize whole = picture()->size();
        QCOMPARE(scrolled(), ScrollPosition());
        const QPoint point(whole.width() / 4, whole.height() * 3 / 4);
        QTest::mouseClick(picture(), Qt::LeftButton, {}, point);
        const QSize growth = picture()->size() - whole * 2;
        QVERIFY(std::abs(growth.width()) <= 1 && std::abs(growth.height()) <= 1);
        QVERIFY(std::abs(scrolled().x - 250) <= 3 && std::abs(scrolled().y - 750) <= 3);
        const int x = picture()->x();
        press(Qt::Key_Right);
        QVERIFY(picture()->x() < x);
        press(Qt::Key_PageDown);
        QCOMPARE(m_preview->magnification(), 2.0);
        QVERIFY(picture()->y() >= 0 && picture()->y() < 20); // at its top
        m_preview->resize(900, 800);
        QVERIFY(picture()->height() > whole.height() * 2);
        QTest::mouseClick(picture(), Qt::LeftButton);
        QCOMPARE(m_preview->magnification(), 1.0);
        QCOMPARE(scrolled(), ScrollPosition());
    }

    void zooming()
    {
        open(1);
        press(Qt::Key_Plus, Qt::ControlModifier);
        QCOMPARE(m_preview->magnification(), 1.25);
        press(Qt::Key_Minus, Qt::ControlModifier);
        press(Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(m_preview->magnification(), 0.8);
        press(Qt::Key_0, Qt::ControlModifier);
        // As on paper, whatever the size of the window.
        QTest::mouseClick(find<QToolButton>(u"Zoom150"_s), Qt::LeftButton);
        QCOMPARE(find<QLabel>(u"Zoom"_s)->text(), u"150 %"_s);
        const QSize size = picture()->size();
        const double dots = m_preview->logicalDpiX() * 1.5 / TwipsPerInch;
        QVERIFY(std::abs(size.width() - m_office->engine.PageWidth() * dots) < 2);
        m_preview->resize(700, 600);
        QCOMPARE(picture()->size(), size);
        m_preview->resize(800, 700);
        QTest::mouseClick(find<QToolButton>(u"Adatta"_s), Qt::LeftButton);
        QCOMPARE(m_preview->magnification(), 1.0);
        // The point under the wheel stays there.
        const QPoint inPicture(picture()->width() / 3, picture()->height() / 3);
        const QPoint place = picture()->mapTo(picture()->parentWidget(), inPicture);
        QWheelEvent turn(place, picture()->parentWidget()->mapToGlobal(place), {}, {0, 360}, {},
                         Qt::ControlModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(picture()->parentWidget(), &turn);
        QVERIFY(m_preview->magnification() > 1.9);
        const QPointF stays = QPointF(inPicture) * m_preview->magnification();
        const QPointF now = place - picture()->pos();
        QVERIFY((now - stays).manhattanLength() < 15);
    }

    void printingWithoutAPrinter()
    {
        for (const bool wanted : {false, true}) {
            open(1);
            m_office->user.saysYes = wanted;
            QVERIFY(m_office->user.hears([&] { m_preview->print(); }, {u"~/stampa"_s})
                        .contains(u"Nessuna stampante installata"));
            QCOMPARE(QFile::exists(m_office->path(u"stampa.pdf"_s)), wanted);
            QVERIFY(m_preview->isVisible());
        }
    }

    void exportingARange()
    {
        open(4);
        m_office->user.files = QStringList{u"~/parte.pdf"_s};
        inModal<PdfPagesDialog>([&] { m_preview->exportPdf(); },
                                [](PdfPagesDialog& dialog) {
                                    dialog.findChild<QSpinBox*>(u"Da"_s)->setValue(3);
                                    dialog.findChild<QSpinBox*>(u"A"_s)->setValue(2);
                                    QCOMPARE(namelessControls(dialog), QStringList());
                                    QTest::mouseClick(dialog.findChild<QPushButton*>(u"Esporta"_s),
                                                      Qt::LeftButton);
                                });
        QProcess pdfinfo;
        pdfinfo.start(u"pdfinfo"_s, {m_office->path(u"parte.pdf"_s)});
        QVERIFY(pdfinfo.waitForFinished());
        const QString info = QString::fromUtf8(pdfinfo.readAllStandardOutput());
        for (const char* line : {"Prova & controllo", "Ada «B.»", "Pages:           2"})
            QVERIFY2(info.contains(QString::fromUtf8(line)), qPrintable(info));
        for (const char* text :
             {"<pdfaid:part>1</pdfaid:part>", "<rdf:li>Ada «B.»</rdf:li>", "Prova &amp; controllo"})
            QVERIFY2(bytesOf(m_office->path(u"parte.pdf"_s)).contains(text), text);
    }

    void anExistingFileStaysUnlessReplaced()
    {
        open(1);
        const QString old = m_office->path(u"vecchio.pdf"_s);
        writeBytes(old, "vecchio");
        for (const bool replaced : {false, true}) {
            m_office->user.saysYes = replaced;
            QVERIFY(m_office->user.hears([&] { m_preview->exportPdf(); }, {old})
                        .contains(u"«vecchio.pdf» esiste già"));
            QCOMPARE(bytesOf(old) == "vecchio", !replaced);
        }
    }

    /// It is said once, and stands where the page would.
    void aPageThatCannotBeRead()
    {
        const std::vector<std::pair<std::function<void(const QString& page)>, QString>> faults{
            {[](const QString& page) { QFile::remove(page); }, u"Impossibile leggere"_s},
            {[](const QString& page) { writeBytes(page, {}); }, u"è vuota"_s},
            {[](const QString& page) { writeBytes(page, bytesOf(page) + "scarto"); },
             u"è danneggiata"_s},
            {[](const QString& page) {
                 const QByteArray all = bytesOf(page); // cut off behind a record
                 writeBytes(page, all.first(all.lastIndexOf('\n', -2) + 1));
             },
             u"è danneggiata"_s},
        };
        for (const auto& [spoil, said] : faults) {
            open(3);
            QCOMPARE(picture()->accessibleDescription(), QString());
            spoil(pageFilePath(m_office->path({}), 1));
            press(Qt::Key_PageDown);
            const QString heard = m_office->user.said();
            QVERIFY2(heard.contains(said), qPrintable(heard));
            QVERIFY(picture()->accessibleDescription().contains(said));
            m_preview->resize(820, 720);
            QCOMPARE(m_office->user.said(), QString());
            press(Qt::Key_PageDown);
            QCOMPARE(m_preview->page(), 3);
            QCOMPARE(picture()->accessibleDescription(), QString());
        }
    }
};

ZELTO_TEST(TestPreview)
#include "tst_preview.moc"

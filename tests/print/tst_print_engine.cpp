// SPDX-License-Identifier: GPL-3.0-or-later
// Every operation: its record, and what it draws directly and on replay.
#include "print/print_engine.h"
#include "probe_surface.h"
#include "store/store_fixture.h"
#include "support/runner.h"

#include <QBuffer>
#include <QImage>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;
using namespace zelto::print;
using namespace zelto::test;

using Operation = std::function<void(PrintEngine&)>;

class TestPrintEngine : public QObject
{
    Q_OBJECT

    JobFolder m_folder;
    QString m_picture = m_folder.file(u"logo.png"_s);

    [[nodiscard]] PrintEngine engine(QChar separator = u'.') const
    {
        return {m_folder.file({}), {.LocalDecimalSeparator = separator}};
    }

    [[nodiscard]] QByteArray recordedBy(const Operation& operation) const
    {
        PrintEngine print = engine(u',');
        print.BeginDocument();
        operation(print);
        print.SetFontName(QString(60, u'-')); // long enough for the page to be kept
        print.EndDocument();
        return bytesOf(pageFilePath(m_folder.file({}), 0)).chopped(67);
    }

    /// What the operation draws, joined by "|".
    static QString drawnBy(PrintEngine& print, const Operation& operation)
    {
        ProbeSurface probe;
        print.setSurface(&probe);
        operation(print);
        print.setSurface(nullptr);
        return probe.drawn.join(u'|');
    }

    /// The operation's record, and what it draws at once and on replay. The grid is 240 by 144
    /// twips and the font Arial 10 when it starts: M is 167 twips wide, a digit 111, a blank 56.
    void verify(QByteArray record, const QString& drawn, const Operation& operation) const
    {
        QCOMPARE(recordedBy(operation), record);
        PrintEngine print = engine();
        QCOMPARE(drawnBy(print, operation), drawn);
        const Operation replay = [&](PrintEngine& p) {
            QBuffer page(&record);
            QVERIFY(page.open(QIODevice::ReadOnly));
            p.SetFontName(u"Arial"_s);
            p.SetFontSize(10);
            p.ReplayRecords(page);
        };
        QCOMPARE(drawnBy(print, replay), drawn);
    }

private slots:
    void initTestCase()
    {
        QImage image(3, 2, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(m_picture));
    }

    void texts()
    {
        verify(" 21 \t 21,5 \t 3 \t 0 \tCittà\r\n", u"text 432 5160 Arial 200 Città"_s,
               [](auto& p) { p.PrintText(21.5F, 3, 0, u"Città"_s); });
        verify(" 21 \t 1 \t 1 \t 1,5 \tMMM\r\n", u"text 144 240 Arial 200 M"_s,
               [](auto& p) { p.PrintText(1, 1, 1.5F, u"MMM"_s); });
        verify(" 21 \t 1 \t 1 \t 0,25 \tMMM\r\n", {},
               [](auto& p) { p.PrintText(1, 1, 0.25F, u"MMM"_s); });
        verify(" 21 \t-1 \t 1 \t 0 \ta\x1Bi\r\n", u"text 144 -240 Arial 200 a\ti"_s,
               [](auto& p) { p.PrintText(-1, 1, 0, u"a\ti"_s); });
        verify(" 22 \t 2 \t 10 \t 0 \t12.50\r\n", u"text 940 480 Arial 200 12.50"_s,
               [](auto& p) { p.PrintRight(2, 10, 0, u"12.50"_s); });
        verify(" 22 \t 2 \t 10 \t 25 \t12.50\r\n", u"text 580 480 Arial 200 12.50"_s,
               [](auto& p) { p.PrintRight(2, 10, 25, u"12.50"_s); });
        verify(" 23 \t 2 \t 40,5 \t 0 \tMM\r\n", u"text 5665 480 Arial 200 MM"_s,
               [](auto& p) { p.PrintCentred(2, 40.5F, 0, u"MM"_s); });
        verify(" 23 \t 2 \t 40 \t 1,5 \tMMM\r\n", u"text 5677 480 Arial 200 M"_s,
               [](auto& p) { p.PrintCentred(2, 40, 1.5F, u"MMM"_s); });
    }

    void numbers()
    {
        verify(" 24 \t 1 \t 20 \t1234567,5\r\n", u"text 1824 240 Arial 200 1 234 567.5"_s,
               [](auto& p) { p.PrintNumber(1, 20, u"1234567,5"_s); });
        verify(" 24 \t 1 \t 20 \t-1234,5\r\n", u"text 2146 240 Arial 200 -1 234.5"_s,
               [](auto& p) { p.PrintNumber(1, 20, u"-1234,5"_s); });
        verify(" 24 \t 1 \t 20 \t123456\r\n", u"text 2157 240 Arial 200 123 456"_s,
               [](auto& p) { p.PrintNumber(1, 20, u"123456"_s); });
        verify(" 24 \t 1 \t 20 \t0,00\r\n", {}, [](auto& p) { p.PrintNumber(1, 20, u"0,00"_s); });
        verify(" 24 \t 1 \t 20 \t  \r\n", {}, [](auto& p) { p.PrintNumber(1, 20, u"  "_s); });
    }

    void styles()
    {
        verify(" 20 \t 1 \t 10 \t 0 \t 20 \t 1 \t101\t \r\n 21 \t 2 \t 1 \t 0 \tx\r\n",
               u"text 1329 240 Arial 400 bold underline  |text 144 480 Arial 200 x"_s, [](auto& p) {
                   p.PrintField(
                       1, 10, 0,
                       {.size = 20, .alignment = Alignment::Right, .bold = true, .underline = true},
                       u" "_s);
                   p.PrintText(2, 1, 0, u"x"_s);
               });
        verify(" 20 \t 1 \t 10 \t 1,5 \t 0 \t 2 \t010\tiiiiiiii\r\n",
               u"text 1351 240 Arial 200 italic iiii"_s, [](auto& p) {
                   p.PrintField(1, 10, 1.5F,
                                {.size = 0, .alignment = Alignment::Centred, .italic = true},
                                u"iiiiiiii"_s);
               });
        verify(" 10 \tTimes New Roman\r\n 11 \t 8,5 \r\n 12 \t-1 \r\n 13 \t-1 \r\n"
               " 21 \t 0 \t 0 \t 0 \tx\r\n 12 \t 0 \r\n 13 \t 0 \r\n 21 \t 0 \t 0 \t 0 \ty\r\n",
               u"text 0 0 Times New Roman 170 bold underline x|text 0 0 Times New Roman 170 y"_s,
               [](auto& p) {
                   p.SetFontName(u"Times New Roman"_s);
                   p.SetFontSize(8.5F);
                   p.SetFontBold(true);
                   p.SetFontUnderline(true);
                   p.PrintText(0, 0, 0, u"x"_s);
                   p.SetFontBold(false);
                   p.SetFontUnderline(false);
                   p.PrintText(0, 0, 0, u"y"_s);
               });
        verify(" 14 \t 255 \t 8453888 \r\n", u"colour #00ff80"_s,
               [](auto& p) { p.SetColours(0x0000FF, 0x80FF00); });
    }

    void shapes()
    {
        verify(" 31 \t 20,5 \t 5 \t 76 \t 6 \r\n", u"line 720 4920 10944 4920 6"_s,
               [](auto& p) { p.DrawHLine(20.5F, 5, 76, 6); });
        verify(" 32 \t 5 \t 1 \t 2,5 \t 1 \r\n", u"line 720 240 720 600 1"_s,
               [](auto& p) { p.DrawVLine(5, 1, 2.5F, 1); });
        verify(" 30 \t 1 \t 2 \t 3 \t 4 \t 2 \t 0 \r\n", u"box 288 240 576 720 2"_s,
               [](auto& p) { p.DrawBox(1, 2, 3, 4, 2, false); });
        verify(" 30 \t 10 \t 20 \t 30 \t 40 \t 2 \t 1 \r\n",
               u"box 2880 2400 5760 7200 2|line 2930 7224 5774 7224 4|line 5774 2460 5774 7224 4"_s,
               [](auto& p) { p.DrawBox(10, 20, 30, 40, 2, true); });
        verify(" 90 \t 1 \t 2 \t 3 \t 4 \t"_ba + m_picture.toUtf8() + "\r\n",
               u"picture 288 240 720 1200 3"_s,
               [this](auto& p) { p.DrawPicture(1, 2, 3, 4, m_picture); });
        verify(" 90 \t 1 \t 2 \t 3 \t 4 \t/manca.png\r\n", {},
               [](auto& p) { p.DrawPicture(1, 2, 3, 4, u"/manca.png"_s); });
        verify(" 90 \t 1 \t 2 \t 3 \t 4 \t/dev/zero\r\n", {},
               [](auto& p) { p.DrawPicture(1, 2, 3, 4, u"/dev/zero"_s); });
    }

    void stateGoesFromPageToPage()
    {
        PrintEngine print = engine();
        print.BeginDocument();
        print.setLineHeight(200);
        print.setCharWidth(84.5F);
        print.SetFontName(u"Times New Roman"_s);
        print.SetFontSize(9);
        print.WriteState();
        print.SetFontBold(true);
        print.SetFontItalic(true);
        print.PrintText(1, 1, 0, QString(80, u'x'));
        print.NewPage();
        print.PrintText(1, 2, 0, u"seconda pagina"_s);
        print.EndDocument();
        QCOMPARE(bytesOf(pageFilePath(m_folder.file({}), 1)),
                 " 0 \t 200 \t 84.5 \tTimes New Roman\t 9 \t-1 \t 0 \t-1 \r\n"
                 " 21 \t 1 \t 2 \t 0 \tseconda pagina\r\n");

        PrintEngine other = engine();
        other.setPageNumber(1);
        QCOMPARE(drawnBy(other, &PrintEngine::ReplayPage),
                 u"text 169 200 Times New Roman 180 bold italic seconda pagina"_s);
        QCOMPARE(other.CharWidth(), 84.5F);
    }

    void aRangeOfPagesIsPrinted()
    {
        PrintEngine print = engine();
        print.BeginDocument();
        for (int page = 1; page <= 4; ++page) {
            print.PrintText(1, 0, 0, u"%1"_s.arg(page).repeated(60));
            print.NewPage();
        }
        print.EndDocument();
        QCOMPARE(print.pageCount(), 4);
        const QString text = u"text 0 240 Arial 200 "_s;
        QCOMPARE(drawnBy(print, [](PrintEngine& p) { p.PrintDocument(2, 3); }),
                 text + QString(60, u'2') + u"|page|"_s + text + QString(60, u'3') +
                     u"|page|finish"_s);
    }

    void drawingOfADocument()
    {
        PrintEngine print = engine();
        const Operation document = [](PrintEngine& p) {
            p.WriteState();
            p.NewPage();
            p.EndDocument();
        };
        QCOMPARE(drawnBy(print, document), u"page|finish"_s);
        print.NewPage(); // no surface: nowhere to draw
        print.PrintText(1, 1, 0, u"x"_s);
        print.EndDocument();
        QCOMPARE(print.Zoom(), 0);
    }

    void measuresFollowTheFontAlsoWhileRecording()
    {
        PrintEngine print = engine();
        print.BeginDocument();
        print.SetFontName(u"Arial"_s);
        print.SetFontSize(10);
        const float width = print.textWidth(u"M"_s);
        QVERIFY(qAbs(width - 166.6F) < 0.1F); // 0.833 of the size
        print.SetFontSize(20);
        QVERIFY(qAbs(print.textWidth(u"M"_s) - 2 * width) < 0.1F);
        QVERIFY(qAbs(print.textHeight(u"M"_s) - 1.117F * 400) < 1);
        QCOMPARE(print.textHeight(u"M\nM"_s), 2 * print.textHeight(u"M"_s));
        float row = 1.5F;
        AddTo(row, 2);
        QCOMPARE(row, 3.5F);
    }
};

ZELTO_TEST(TestPrintEngine)
#include "tst_print_engine.moc"

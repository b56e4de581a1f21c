// SPDX-License-Identifier: GPL-3.0-or-later
// Every operation: its record, and what it draws directly and on replay.
#include "print/print_engine.h"
#include "probe_surface.h"
#include "support/runner.h"

#include <QBuffer>
#include <QFontMetricsF>
#include <QImage>
#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace Qt::StringLiterals;
using namespace zelto::print;
using zelto::test::ProbeSurface;

using Operation = std::function<void(PrintEngine&)>;

class TestPrintEngine : public QObject
{
    Q_OBJECT

    QTemporaryDir m_dir;
    QString m_picture = m_dir.filePath(u"logo.png"_s);

    [[nodiscard]] QByteArray recordedBy(const Operation& operation, QChar separator) const
    {
        PrintEngine print(m_dir.path(), {.LocalDecimalSeparator = separator});
        print.BeginDocument();
        operation(print);
        print.SetFontName(QString(60, u'-')); // long enough for the page to be kept
        print.EndDocument();
        QFile file(pageFilePath(m_dir.path(), 0));
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return file.readAll().chopped(67);
    }

    static QStringList drawnBy(PrintEngine& print, const Operation& operation)
    {
        ProbeSurface probe;
        print.setSurface(&probe);
        operation(print);
        print.setSurface(nullptr);
        return probe.drawn;
    }

    /// Left end of an Arial text that ends or has its middle at the place; sizes in twips.
    static QString before(int place, const QString& text, double part = 1, int size = 200)
    {
        QFont font(u"Arial"_s);
        font.setPixelSize(size);
        font.setHintingPreference(QFont::PreferNoHinting);
        font.setKerning(false);
        return QString::number(
            std::lround(place - part * QFontMetricsF(font).horizontalAdvance(text)));
    }

private slots:
    void initTestCase()
    {
        QImage image(3, 2, QImage::Format_RGB32);
        image.fill(Qt::red);
        QVERIFY(image.save(m_picture));
    }

    // The grid is 240 by 144 twips and the font Arial 10 when each operation starts.
    void operations_data()
    {
        QTest::addColumn<Operation>("operation");
        QTest::addColumn<QByteArray>("record");
        QTest::addColumn<QStringList>("drawn");
        const auto add = [](const char* name, const Operation& operation, const QByteArray& record,
                            const QStringList& drawn) {
            QTest::newRow(name) << operation << record << drawn;
        };
        add("PrintText", [](auto& p) { p.PrintText(21.5F, 3, 0, u"Città"_s); },
            " 21 \t 21,5 \t 3 \t 0 \tCittà\r\n", {u"text 432 5160 Arial 200 Città"_s});
        add("PrintText cut", [](auto& p) { p.PrintText(1, 1, 1.5F, u"MMM"_s); },
            " 21 \t 1 \t 1 \t 1,5 \tMMM\r\n", {u"text 144 240 Arial 200 M"_s});
        add("PrintText cut away", [](auto& p) { p.PrintText(1, 1, 0.25F, u"MMM"_s); },
            " 21 \t 1 \t 1 \t 0,25 \tMMM\r\n", {});
        add("PrintText tab", [](auto& p) { p.PrintText(-1, 1, 0, u"a\tb"_s); },
            " 21 \t-1 \t 1 \t 0 \ta\x1B"
            "b\r\n",
            {u"text 144 -240 Arial 200 a\tb"_s});
        add("PrintRight", [](auto& p) { p.PrintRight(2, 10, 0, u"12.50"_s); },
            " 22 \t 2 \t 10 \t 0 \t12.50\r\n",
            {u"text "_s + before(1440, u"12.50"_s) + u" 480 Arial 200 12.50"_s});
        add("PrintRight reduced", [](auto& p) { p.PrintRight(2, 10, 25, u"12.50"_s); },
            " 22 \t 2 \t 10 \t 25 \t12.50\r\n",
            {u"text "_s + before(1080, u"12.50"_s) + u" 480 Arial 200 12.50"_s});
        add("PrintCentred", [](auto& p) { p.PrintCentred(2, 40.5F, 0, u"TABELLE"_s); },
            " 23 \t 2 \t 40,5 \t 0 \tTABELLE\r\n",
            {u"text "_s + before(5832, u"TABELLE"_s, 0.5) + u" 480 Arial 200 TABELLE"_s});
        add("PrintCentred cut", [](auto& p) { p.PrintCentred(2, 40, 1.5F, u"MMM"_s); },
            " 23 \t 2 \t 40 \t 1,5 \tMMM\r\n",
            {u"text "_s + before(5760, u"M"_s, 0.5) + u" 480 Arial 200 M"_s});
        add("PrintNumber", [](auto& p) { p.PrintNumber(1, 20, u"1234567,5"_s); },
            " 24 \t 1 \t 20 \t1234567,5\r\n",
            {u"text "_s + before(2880, u"1 234 567.5"_s) + u" 240 Arial 200 1 234 567.5"_s});
        add("PrintNumber negative", [](auto& p) { p.PrintNumber(1, 20, u"-1234,5"_s); },
            " 24 \t 1 \t 20 \t-1234,5\r\n",
            {u"text "_s + before(2880, u"-1 234.5"_s) + u" 240 Arial 200 -1 234.5"_s});
        add("PrintNumber of whole groups", [](auto& p) { p.PrintNumber(1, 20, u"123456"_s); },
            " 24 \t 1 \t 20 \t123456\r\n",
            {u"text "_s + before(2880, u"123 456"_s) + u" 240 Arial 200 123 456"_s});
        add("PrintNumber zero", [](auto& p) { p.PrintNumber(1, 20, u"0,00"_s); },
            " 24 \t 1 \t 20 \t0,00\r\n", {});
        add("PrintNumber blank", [](auto& p) { p.PrintNumber(1, 20, u"  "_s); },
            " 24 \t 1 \t 20 \t  \r\n", {});
        add("PrintField",
            [](auto& p) {
                p.PrintField(
                    1, 10, 0,
                    {.size = 20, .alignment = Alignment::Right, .bold = true, .underline = true},
                    u" "_s);
                p.PrintText(2, 1, 0, u"x"_s);
            },
            " 20 \t 1 \t 10 \t 0 \t 20 \t 1 \t101\t \r\n 21 \t 2 \t 1 \t 0 \tx\r\n",
            {u"text "_s + before(1440, u" "_s, 1, 400) + u" 240 Arial 400 bold underline  "_s,
             u"text 144 480 Arial 200 x"_s});
        add("PrintField centred",
            [](auto& p) {
                p.PrintField(1, 10, 1.5F,
                             {.size = 0, .alignment = Alignment::Centred, .italic = true},
                             u"iiiiiiii"_s);
            },
            " 20 \t 1 \t 10 \t 1,5 \t 0 \t 2 \t010\tiiiiiiii\r\n",
            {u"text "_s + before(1440, u"iiii"_s, 0.5) + u" 240 Arial 200 italic iiii"_s});
        add("fonts",
            [](auto& p) {
                p.SetFontName(u"Times New Roman"_s);
                p.SetFontSize(8.5F);
                p.SetFontBold(true);
                p.SetFontUnderline(true);
                p.PrintText(0, 0, 0, u"x"_s);
                p.SetFontBold(false);
                p.SetFontUnderline(false);
                p.PrintText(0, 0, 0, u"y"_s);
            },
            " 10 \tTimes New Roman\r\n 11 \t 8,5 \r\n 12 \t-1 \r\n 13 \t-1 \r\n 21 \t 0 \t 0 \t 0 "
            "\tx\r\n"
            " 12 \t 0 \r\n 13 \t 0 \r\n 21 \t 0 \t 0 \t 0 \ty\r\n",
            {u"text 0 0 Times New Roman 170 bold underline x"_s,
             u"text 0 0 Times New Roman 170 y"_s});
        add("SetColours", [](auto& p) { p.SetColours(0x0000FF, 0x80FF00); },
            " 14 \t 255 \t 8453888 \r\n", {u"colour #00ff80"_s});
        add("DrawHLine", [](auto& p) { p.DrawHLine(20.5F, 5, 76, 6); },
            " 31 \t 20,5 \t 5 \t 76 \t 6 \r\n", {u"line 720 4920 10944 4920 6"_s});
        add("DrawVLine", [](auto& p) { p.DrawVLine(5, 1, 2.5F, 1); },
            " 32 \t 5 \t 1 \t 2,5 \t 1 \r\n", {u"line 720 240 720 600 1"_s});
        add("DrawBox", [](auto& p) { p.DrawBox(1, 2, 3, 4, 2, false); },
            " 30 \t 1 \t 2 \t 3 \t 4 \t 2 \t 0 \r\n", {u"box 288 240 576 720 2"_s});
        add("DrawBox shadow", [](auto& p) { p.DrawBox(10, 20, 30, 40, 2, true); },
            " 30 \t 10 \t 20 \t 30 \t 40 \t 2 \t 1 \r\n",
            {u"box 2880 2400 5760 7200 2"_s, u"line 2930 7224 5774 7224 4"_s,
             u"line 5774 2460 5774 7224 4"_s});
        add("DrawPicture", [this](auto& p) { p.DrawPicture(1, 2, 3, 4, m_picture); },
            " 90 \t 1 \t 2 \t 3 \t 4 \t"_ba + m_picture.toUtf8() + "\r\n",
            {u"picture 288 240 720 1200 3"_s});
        add("DrawPicture missing", [](auto& p) { p.DrawPicture(1, 2, 3, 4, u"/manca.png"_s); },
            " 90 \t 1 \t 2 \t 3 \t 4 \t/manca.png\r\n", {});
        add("DrawPicture of a device", [](auto& p) { p.DrawPicture(1, 2, 3, 4, u"/dev/zero"_s); },
            " 90 \t 1 \t 2 \t 3 \t 4 \t/dev/zero\r\n", {});
    }

    void operations()
    {
        QFETCH(Operation, operation);
        QFETCH(QByteArray, record);
        QFETCH(QStringList, drawn);
        QCOMPARE(recordedBy(operation, u','), record);

        PrintEngine print(m_dir.path(), {});
        QCOMPARE(drawnBy(print, operation), drawn);
        QCOMPARE(drawnBy(print,
                         [&](PrintEngine& p) {
                             QBuffer page(&record);
                             QVERIFY(page.open(QIODevice::ReadOnly));
                             p.SetFontName(u"Arial"_s);
                             p.SetFontSize(10);
                             p.ReplayRecords(page);
                         }),
                 drawn);
    }

    void stateGoesFromPageToPage()
    {
        PrintEngine print(m_dir.path(), {});
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
        QFile file(pageFilePath(m_dir.path(), 1));
        QVERIFY(file.open(QIODevice::ReadOnly));
        QCOMPARE(file.readLine(), " 0 \t 200 \t 84.5 \tTimes New Roman\t 9 \t-1 \t 0 \t-1 \r\n");

        PrintEngine other(m_dir.path(), {});
        other.setPageNumber(1);
        QCOMPARE(drawnBy(other, [](PrintEngine& p) { p.ReplayPage(); }),
                 QStringList{u"text 169 200 Times New Roman 180 bold italic seconda pagina"_s});
        QCOMPARE(other.CharWidth(), 84.5F);
    }

    void aRangeOfPagesIsPrinted()
    {
        PrintEngine print(m_dir.path(), {});
        print.BeginDocument();
        for (int page = 1; page <= 4; ++page) {
            print.PrintText(1, 0, 0, u"Pagina %1 "_s.arg(page).leftJustified(70, u'.').trimmed());
            print.NewPage();
        }
        print.EndDocument();
        QCOMPARE(print.pageCount(), 4);
        QStringList drawn = drawnBy(print, [](PrintEngine& p) { p.PrintDocument(2, 3); });
        for (QString& line : drawn)
            line = line.section(u' ', 0, 0) + line.section(u"Pagina"_s, 1).left(2);
        QCOMPARE(drawn, (QStringList{u"text 2"_s, u"page"_s, u"text 3"_s, u"page"_s, u"finish"_s}));
    }

    void drawingOfADocument()
    {
        PrintEngine print(m_dir.path(), {});
        QCOMPARE(drawnBy(print,
                         [](PrintEngine& p) {
                             p.WriteState();
                             p.NewPage();
                             p.EndDocument();
                         }),
                 (QStringList{u"page"_s, u"finish"_s}));
        print.NewPage(); // no surface: nowhere to draw
        print.PrintText(1, 1, 0, u"x"_s);
        print.EndDocument();
        QCOMPARE(print.Zoom(), 0);
    }

    void measuresFollowTheFontAlsoWhileRecording()
    {
        PrintEngine print(m_dir.path(), {});
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

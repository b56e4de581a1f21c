// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/print_engine.h"
#include "probe_surface.h"
#include "support/property.h"
#include "support/runner.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::print;
using zelto::test::ProbeSurface;

namespace {

/// "row: text" of every text drawn; rows are 240 twips.
QStringList rows(const QStringList& drawn)
{
    QStringList result;
    for (const QString& line : drawn) {
        const int row = line.section(u' ', 2, 2).toInt() / 240;
        result << u"%1: %2"_s.arg(row).arg(line.section(u"Arial 200 "_s, 1));
    }
    return result;
}

} // namespace

class TestPrintParagraph : public QObject
{
    Q_OBJECT

    ProbeSurface m_probe;
    PrintEngine m_print{QString(), {}};

private slots:
    void init()
    {
        m_probe.take();
        m_print.setSurface(&m_probe);
    }

    // Ten columns take in 1440 twips: thirteen "x", or twelve and a blank, in Arial 10.
    void printing_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("lastRow");
        QTest::addColumn<QStringList>("printed");
        QTest::addColumn<int>("nextRow");
        QTest::addColumn<QString>("rest");
        const QString text = u"xxxxxx xxxxxx xxxx xxxx\r\n\r\nxx\r\n"_s;
        QTest::addRow("room for all")
            << text << 99
            << QStringList{u"1: xxxxxx"_s, u"1: xxxxxx"_s, u"2: xxxx xxxx"_s, u"4: xx"_s} << 5
            << u""_s;
        QTest::addRow("inside a paragraph")
            << text << 2 << QStringList{u"1: xxxxxx"_s, u"1: xxxxxx"_s} << 2
            << u"xxxx xxxx\r\n\r\nxx\r\n"_s;
        QTest::addRow("at a paragraph's end")
            << u"xx\r\nyy"_s << 2 << QStringList{u"1: xx"_s} << 2 << u"yy"_s;
        QTest::addRow("at the very end")
            << u"xx\r\n"_s << 2 << QStringList{u"1: xx"_s} << 2 << u""_s;
        QTest::addRow("no room at all")
            << u"xx\r\nyy"_s << 0 << QStringList{u"1: xx"_s} << 2 << u"yy"_s;
        QTest::addRow("nothing") << u""_s << 9 << QStringList() << 1 << u""_s;
    }

    void printing()
    {
        QFETCH(QString, text);
        QFETCH(int, lastRow);
        float row = 1;
        m_print.PrintParagraph(5, 10, row, static_cast<float>(lastRow), text, Alignment::Justified);
        QTEST(rows(m_probe.drawn), "printed");
        QTEST(static_cast<int>(row), "nextRow");
        QTEST(text, "rest");
    }

    void alignments_data()
    {
        QTest::addColumn<Alignment>("alignment");
        QTest::addColumn<double>("place"); // of the line's left end, middle or right end
        QTest::addColumn<double>("part");
        QTest::addRow("left") << Alignment::Left << 720.0 << 0.0;
        QTest::addRow("right") << Alignment::Right << 720.0 + 9 * 144 << 1.0;
        QTest::addRow("centred") << Alignment::Centred << 720.0 + 5 * 144 << 0.5;
    }

    void alignments()
    {
        QFETCH(Alignment, alignment);
        QFETCH(double, place);
        QFETCH(double, part);
        QString text = u"xxxxxxxx yyyyyyyy"_s;
        float row = 0;
        m_print.PrintParagraph(5, 10, row, 9, text, alignment);
        QCOMPARE(m_probe.drawn.size(), 2);
        const double width = static_cast<double>(m_print.textWidth(u"xxxxxxxx"_s));
        for (const QString& line : m_probe.drawn) // x and y are equally wide
            QVERIFY(qAbs(line.section(u' ', 1, 1).toDouble() - (place - part * width)) <= 1);
    }

    void justifiedLinesAreFlush()
    {
        QString text = u"a b cc ddddddddddd eeeeeee"_s;
        float row = 0;
        m_print.PrintParagraph(5, 12, row, 9, text, Alignment::Justified);
        const QString blanks(10, u' '); // 20 blanks of 55.6 twips fit, half of them in either gap
        QCOMPARE(rows(m_probe.drawn).mid(0, 3),
                 (QStringList{u"0: a"_s + blanks + u" b"_s, u"0: cc"_s, u"1: ddddddddddd"_s}));
        const double lastWord = m_probe.drawn[1].section(u' ', 1, 1).toDouble();
        const auto width = static_cast<double>(m_print.textWidth(u"cc"_s));
        QVERIFY(qAbs(lastWord + width - (720 + 12 * 144)) <= 1);
    }

    void countingUsesTheTextUp_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<float>("width");
        QTest::addColumn<int>("lines");
        QTest::addRow("nothing") << u""_s << 10.0F << 0;
        QTest::addRow("very wide") << u"a b\r\n\r\nc\r\n"_s << 1e6F << 3;
        QTest::addRow("not closed") << u"a\r\nb"_s << 1e6F << 2;
        QTest::addRow("wrapped") << u"xxxxxxxx xxxxxxxx\r\nx"_s << 10.0F << 3;
    }

    void countingUsesTheTextUp()
    {
        QFETCH(QString, text);
        QFETCH(float, width);
        int count = 77;
        m_print.CountWrappedLines(width, text, count);
        QTEST(count, "lines");
        QCOMPARE(text, QString());
    }

    void countedLinesAreThePrintedOnes()
    {
        QVERIFY(
            zelto::test::holds("count = rows over any pages", [this](const std::vector<int>& words,
                                                                     int columns, int rowsOnAPage) {
                QString text;
                for (const int word : words)
                    text += word % 5 == 0 ? u"\r\n"_s : QString(std::abs(word) % 15, u'x') + u' ';
                const auto width = static_cast<float>(std::abs(columns) % 12);
                QString counted = text;
                int count = 0;
                m_print.CountWrappedLines(width, counted, count);
                float printed = 0;
                while (!text.isEmpty()) {
                    float row = 3;
                    m_print.PrintParagraph(1, width, row,
                                           static_cast<float>(3 + std::abs(rowsOnAPage) % 4), text,
                                           Alignment::Justified);
                    RC_ASSERT(row > 3);
                    printed += row - 3;
                }
                RC_ASSERT(static_cast<float>(count) == printed);
            }));
    }
};

ZELTO_TEST(TestPrintParagraph)
#include "tst_print_paragraph.moc"

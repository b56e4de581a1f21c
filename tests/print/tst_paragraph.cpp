// SPDX-License-Identifier: GPL-3.0-or-later
// Running text: how it is broken into lines, and how these are printed.
#include "print/print_engine.h"
#include "probe_surface.h"
#include "support/runner.h"

#include <QTest>

#include <algorithm>
#include <rapidcheck.h>

using namespace Qt::StringLiterals;
using namespace zelto::print;
using zelto::test::ProbeSurface;

namespace {

/// Every character is 10 twips wide.
class TypewriterMeasure : public TextMeasure
{
public:
    [[nodiscard]] double width(QStringView text) const override
    {
        measured += text.size();
        return static_cast<double>(10 * text.size());
    }
    [[nodiscard]] qsizetype fittingLength(QStringView text, double limit) const override
    {
        measured += text.size();
        return std::clamp<qsizetype>(static_cast<qsizetype>(limit / 10), 0, text.size());
    }

    mutable qsizetype measured = 0; ///< characters so far
};

QStringList linesOf(QStringView text, double width)
{
    const TypewriterMeasure measure;
    RunningText rest(text, measure, width);
    QStringList lines;
    while (!rest.isEmpty())
        lines << rest.takeLine().text.toString();
    return lines;
}

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

class TestParagraph : public QObject
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

    void breaking_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("width");
        QTest::addColumn<QStringList>("lines");
        const QString text = u"uno due tre"_s;
        QTest::addRow("fits") << text << 111.0 << QStringList{text};
        QTest::addRow("exactly as wide does not fit")
            << text << 110.0 << QStringList{u"uno due"_s, u"tre"_s};
        QTest::addRow("one word each") << text << 40.0 << QStringList{u"uno"_s, u"due"_s, u"tre"_s};
        QTest::addRow("only blanks") << u"    "_s << 20.0 << QStringList{u""_s};
        QTest::addRow("indent stays, blanks at the break go")
            << u"  uno   due  "_s << 60.0 << QStringList{u"  uno"_s, u"due"_s};
        QTest::addRow("inner blanks stay") << u"a   b"_s << 90.0 << QStringList{u"a   b"_s};
        QTest::addRow("long word")
            << u"a precipitevolissimevolmente b"_s << 100.0
            << QStringList{u"a"_s, u"precipitev"_s, u"olissimevo"_s, u"lmente b"_s};
        QTest::addRow("no width") << u"uno"_s << 0.0 << QStringList{u"u"_s, u"n"_s, u"o"_s};
        QTest::addRow("pairs stay whole")
            << u"\U0001F3E0\U0001F3E0"_s << 5.0 << QStringList{u"\U0001F3E0"_s, u"\U0001F3E0"_s};
        QTest::addRow("paragraphs") << u"uno\r\n\r\ndue tre\r\n"_s << 50.0
                                    << QStringList{u"uno"_s, u""_s, u"due"_s, u"tre"_s};
        QTest::addRow("lone breaks")
            << u"a\nb\rc\n\rd"_s << 99.0 << QStringList{u"a"_s, u"b"_s, u"c"_s, u""_s, u"d"_s};
    }

    void breaking()
    {
        QFETCH(QString, text);
        QFETCH(double, width);
        QTEST(linesOf(text, width), "lines");
    }

    /// A memo may be one word of a million characters.
    void longWordsAreNotMeasuredOverAndOver()
    {
        const QString text(1'000'000, u'x');
        const TypewriterMeasure measure;
        int lines = 0;
        for (RunningText rest(text, measure, 1000); !rest.isEmpty(); ++lines)
            rest.takeLine();
        QCOMPARE(lines, 10'000);
        QVERIFY(measure.measured < 10 * text.size());
    }

    void nothingIsLost()
    {
        QVERIFY(rc::check("lines hold every character but blanks", [](int seed, int columns) {
            QString text;
            for (auto bits = static_cast<unsigned>(seed); bits != 0; bits /= 3)
                text += bits % 3 == 0 ? QString(bits % 4, u' ') : QString(bits % 7, u'x');
            const double width = 10.0 * (std::abs(columns) % 9) + 5;
            QStringList lines = linesOf(text, width);
            for (const QString& line : lines)
                RC_ASSERT(line.size() <= 1 || static_cast<double>(10 * line.size()) <= width);
            RC_ASSERT(lines.join(QString()).remove(u' ') == text.remove(u' '));
        }));
    }

    void justifying_data()
    {
        QTest::addColumn<QString>("line");
        QTest::addColumn<int>("extra");
        QTest::addColumn<QString>("head");
        QTest::addColumn<QString>("lastWord");
        QTest::addRow("one word") << u"uno"_s << 5 << u"uno"_s << u""_s;
        QTest::addRow("indented word") << u"  uno"_s << 5 << u"  uno"_s << u""_s;
        QTest::addRow("two words") << u"uno due"_s << 5 << u"uno"_s << u"due"_s;
        QTest::addRow("even") << u"a b c d"_s << 6 << u"a   b   c"_s << u"d"_s;
        QTest::addRow("spread") << u"a b c d"_s << 2 << u"a b  c"_s << u"d"_s;
        QTest::addRow("indent is no gap") << u"  a b c"_s << 2 << u"  a  b"_s << u"c"_s;
        QTest::addRow("wide gap") << u"a  b   c"_s << 2 << u"a   b"_s << u"c"_s;
    }

    void justifying()
    {
        QFETCH(QString, line);
        QFETCH(int, extra);
        const JustifiedLine justified = justify(line, extra);
        QTEST(justified.head, "head");
        QTEST(justified.lastWord, "lastWord");
    }

    // Ten columns take in 1440 twips: thirteen "x", or twelve and a blank, in Arial 10.
    void printing_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("lastRow");
        QTest::addColumn<QStringList>("printed");
        QTest::addColumn<int>("nextRow");
        QTest::addColumn<QString>("rest");
        QTest::addColumn<int>("lines");
        const QString text = u"xxxxxx xxxxxx xxxx xxxx\r\n\r\nxx\r\n"_s;
        QTest::addRow("enough rows")
            << text << 99
            << QStringList{u"1: xxxxxx"_s, u"1: xxxxxx"_s, u"2: xxxx xxxx"_s, u"4: xx"_s} << 5
            << u""_s << 4;
        QTest::addRow("inside a paragraph")
            << text << 2 << QStringList{u"1: xxxxxx"_s, u"1: xxxxxx"_s} << 2
            << u"xxxx xxxx\r\n\r\nxx\r\n"_s << 4;
        QTest::addRow("at a paragraph's end")
            << u"xx\r\nyy"_s << 2 << QStringList{u"1: xx"_s} << 2 << u"yy"_s << 2;
        QTest::addRow("at the very end")
            << u"xx\r\n"_s << 2 << QStringList{u"1: xx"_s} << 2 << u""_s << 1;
        QTest::addRow("no rows at all")
            << u"xx\r\nyy"_s << 0 << QStringList{u"1: xx"_s} << 2 << u"yy"_s << 2;
        QTest::addRow("nothing") << u""_s << 9 << QStringList() << 1 << u""_s << 0;
    }

    void printing()
    {
        QFETCH(QString, text);
        QFETCH(int, lastRow);
        QString counted = text;
        int lines = 77;
        m_print.CountWrappedLines(10, counted, lines);
        QTEST(lines, "lines");
        QCOMPARE(counted, QString());
        float row = 1;
        m_print.PrintParagraph(5, 10, row, static_cast<float>(lastRow), text, Alignment::Justified);
        QTEST(rows(m_probe.drawn), "printed");
        QTEST(static_cast<int>(row), "nextRow");
        QTEST(text, "rest");
    }

    void alignments()
    {
        struct Case
        {
            Alignment alignment;
            double place; // of the line's left end, middle or right end
            double part;
        };
        const auto width = static_cast<double>(m_print.textWidth(u"xxxxxxxx"_s));
        for (const Case& c :
             {Case{Alignment::Left, 720, 0}, Case{Alignment::Right, 720 + 9 * 144, 1},
              Case{Alignment::Centred, 720 + 5 * 144, 0.5}}) {
            QString text = u"xxxxxxxx yyyyyyyy"_s; // x and y are equally wide
            float row = 0;
            m_print.PrintParagraph(5, 10, row, 9, text, c.alignment);
            const QStringList drawn = m_probe.take();
            QCOMPARE(drawn.size(), 2);
            for (const QString& line : drawn)
                QVERIFY(qAbs(line.section(u' ', 1, 1).toDouble() - (c.place - c.part * width)) <=
                        1);
        }
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
};

ZELTO_TEST(TestParagraph)

#include "tst_paragraph.moc"

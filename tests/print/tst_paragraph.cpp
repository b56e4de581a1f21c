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

/// The text's lines, joined by "|".
QString linesOf(QStringView text, double width)
{
    const TypewriterMeasure measure;
    RunningText rest(text, measure, width);
    QStringList lines;
    while (!rest.isEmpty())
        lines << rest.takeLine().text.toString();
    return lines.join(u'|');
}

/// The justified line, its last word behind "|".
QString justified(const QString& line, int extra)
{
    const JustifiedLine parts = justify(line, extra);
    return parts.head + u'|' + parts.lastWord;
}

/// "row: text" of every text drawn, joined by "|"; rows are 240 twips.
QString rows(const QStringList& drawn)
{
    QStringList result;
    for (const QString& line : drawn) {
        const int row = line.section(u' ', 2, 2).toInt() / 240;
        result << u"%1: %2"_s.arg(row).arg(line.section(u"Arial 200 "_s, 1));
    }
    return result.join(u'|');
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

    void breaking()
    {
        QCOMPARE(linesOf(u"uno due tre", 111), u"uno due tre"_s);
        QCOMPARE(linesOf(u"uno due tre", 110), u"uno due|tre"_s); // exactly as wide does not fit
        QCOMPARE(linesOf(u"uno due tre", 40), u"uno|due|tre"_s);
        QCOMPARE(linesOf(u"    ", 20), u""_s);
        // An indent stays, blanks at the break go.
        QCOMPARE(linesOf(u"  uno   due  ", 60), u"  uno|due"_s);
        QCOMPARE(linesOf(u"a   b", 90), u"a   b"_s);
        QCOMPARE(linesOf(u"a precipitevolissimevolmente b", 100),
                 u"a|precipitev|olissimevo|lmente b"_s);
        QCOMPARE(linesOf(u"uno", 0), u"u|n|o"_s);
        QCOMPARE(linesOf(u"\U0001F3E0\U0001F3E0", 5), u"\U0001F3E0|\U0001F3E0"_s);
        QCOMPARE(linesOf(u"uno\r\n\r\ndue tre\r\n", 50), u"uno||due|tre"_s);
        QCOMPARE(linesOf(u"a\nb\rc\n\rd", 99), u"a|b|c||d"_s);
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
            const QStringList lines = linesOf(text, width).split(u'|');
            for (const QString& line : lines)
                RC_ASSERT(line.size() <= 1 || static_cast<double>(10 * line.size()) <= width);
            RC_ASSERT(lines.join(QString()).remove(u' ') == text.remove(u' '));
        }));
    }

    void justifying()
    {
        QCOMPARE(justified(u"uno"_s, 5), u"uno|"_s);
        QCOMPARE(justified(u"  uno"_s, 5), u"  uno|"_s);
        QCOMPARE(justified(u"uno due"_s, 5), u"uno|due"_s);
        QCOMPARE(justified(u"a b c d"_s, 6), u"a   b   c|d"_s);
        QCOMPARE(justified(u"a b c d"_s, 2), u"a b  c|d"_s);
        QCOMPARE(justified(u"  a b c"_s, 2), u"  a  b|c"_s); // an indent is no gap
        QCOMPARE(justified(u"a  b   c"_s, 2), u"a   b|c"_s);
    }

    /// Ten columns take in 1440 twips: thirteen "x", or twelve and a blank, in Arial 10.
    void printing()
    {
        const auto print = [this](const QString& text, float lastRow) {
            QString rest = text;
            int lines = 77;
            m_print.CountWrappedLines(10, rest, lines);
            const QString counted = u"%1 lines%2, "_s.arg(lines).arg(rest);
            rest = text;
            float row = 1;
            m_print.PrintParagraph(5, 10, row, lastRow, rest, Alignment::Justified);
            return counted + u"next %1|%2|rest: %3"_s.arg(row).arg(rows(m_probe.take()), rest);
        };
        const QString text = u"xxxxxx xxxxxx xxxx xxxx\r\n\r\nxx\r\n"_s;
        QCOMPARE(print(text, 99),
                 u"4 lines, next 5|1: xxxxxx|1: xxxxxx|2: xxxx xxxx|4: xx|rest: "_s);
        QCOMPARE(print(text, 2), u"4 lines, next 2|1: xxxxxx|1: xxxxxx|"
                                 "rest: xxxx xxxx\r\n\r\nxx\r\n"_s);
        QCOMPARE(print(u"xx\r\nyy"_s, 2), u"2 lines, next 2|1: xx|rest: yy"_s);
        QCOMPARE(print(u"xx\r\n"_s, 2), u"1 lines, next 2|1: xx|rest: "_s);
        QCOMPARE(print(u"xx\r\nyy"_s, 0), u"2 lines, next 2|1: xx|rest: yy"_s);
        QCOMPARE(print(u""_s, 9), u"0 lines, next 1||rest: "_s);
    }

    /// Each character is 100 twips wide, a blank 55.6; the first column is at 720.
    void alignments()
    {
        const auto drawn = [this](Alignment alignment, float width, QString text) {
            float row = 0;
            m_print.PrintParagraph(5, width, row, 9, text, alignment);
            return m_probe.take().join(u'|').remove(u" Arial 200"_s);
        };
        const QString text = u"xxxxxxxx yyyyyyyy"_s;
        QCOMPARE(drawn(Alignment::Left, 10, text), u"text 720 0 xxxxxxxx|text 720 240 yyyyyyyy"_s);
        QCOMPARE(drawn(Alignment::Centred, 10, text),
                 u"text 1040 0 xxxxxxxx|text 1040 240 yyyyyyyy"_s);
        QCOMPARE(drawn(Alignment::Right, 10, text),
                 u"text 1216 0 xxxxxxxx|text 1216 240 yyyyyyyy"_s);
        // 20 blanks fit into the first line, half of them in either gap.
        QCOMPARE(drawn(Alignment::Justified, 12, u"x y cc xxxxxxxxxxxxx y"_s),
                 u"text 720 0 x"_s + QString(10, u' ') +
                     u" y|text 2248 0 cc|text 720 240 xxxxxxxxxxxxx y"_s);
    }
};

ZELTO_TEST(TestParagraph)
#include "tst_paragraph.moc"

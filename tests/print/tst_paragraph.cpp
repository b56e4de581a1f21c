// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/paragraph.h"
#include "support/property.h"
#include "support/runner.h"

#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace zelto::print;

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

QStringList linesOf(QStringView paragraph, double width)
{
    const TypewriterMeasure measure;
    const LineBreaker breaker(measure, width);
    QStringList lines;
    ParagraphLine line;
    do {
        line = breaker.takeLine(paragraph);
        lines << line.text.toString();
    } while (!line.last);
    return lines;
}

} // namespace

class TestParagraph : public QObject
{
    Q_OBJECT

private slots:
    void paragraphs_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QStringList>("paragraphs");
        QTest::addRow("one") << u"uno"_s << QStringList{u"uno"_s};
        QTest::addRow("closed") << u"uno\r\n"_s << QStringList{u"uno"_s};
        QTest::addRow("blank between")
            << u"uno\r\n\r\ndue"_s << QStringList{u"uno"_s, u""_s, u"due"_s};
        QTest::addRow("lone breaks")
            << u"a\nb\rc\n\rd"_s << QStringList{u"a"_s, u"b"_s, u"c"_s, u""_s, u"d"_s};
    }

    void paragraphs()
    {
        QFETCH(QString, text);
        QStringList taken;
        for (QStringView rest = text; !rest.isEmpty();)
            taken << takeParagraph(rest).toString();
        QTEST(taken, "paragraphs");
    }

    void breaking_data()
    {
        QTest::addColumn<QString>("paragraph");
        QTest::addColumn<double>("width");
        QTest::addColumn<QStringList>("lines");
        const QString text = u"uno due tre"_s;
        QTest::addRow("fits") << text << 111.0 << QStringList{text};
        QTest::addRow("exactly as wide does not fit")
            << text << 110.0 << QStringList{u"uno due"_s, u"tre"_s};
        QTest::addRow("one word each") << text << 40.0 << QStringList{u"uno"_s, u"due"_s, u"tre"_s};
        QTest::addRow("empty") << u""_s << 50.0 << QStringList{u""_s};
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
    }

    void breaking()
    {
        QFETCH(QString, paragraph);
        QFETCH(double, width);
        QTEST(linesOf(paragraph, width), "lines");
    }

    /// A memo may be one word of a million characters.
    void longWordsAreNotMeasuredOverAndOver()
    {
        const QString text(1'000'000, u'x');
        const TypewriterMeasure measure;
        const LineBreaker breaker(measure, 1000);
        QStringView rest = text;
        int lines = 1;
        while (!breaker.takeLine(rest).last)
            ++lines;
        QCOMPARE(lines, 10'000);
        QVERIFY(measure.measured < 10 * text.size());
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
        QTest::addRow("one for three gaps") << u"a b c d"_s << 1 << u"a b c"_s << u"d"_s;
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

    void nothingIsLost()
    {
        QVERIFY(
            zelto::test::holds("lines hold every character but blanks", [](int seed, int columns) {
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
};

ZELTO_TEST(TestParagraph)

#include "tst_paragraph.moc"

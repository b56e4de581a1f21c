// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/runner.h"
#include "text/literals.h"
#include "widgets/field_rules.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::widgets;
using enum FieldKind;

namespace {

/// What gets in of a text typed into a field: "1[2]3" has its 2 selected, "12|3" the caret before
/// the 3.
QString typed(FieldKind kind, QString before, const QString& text, int maxLength = 0)
{
    const auto start = std::max(before.indexOf(u'['), before.indexOf(u'|'));
    const auto end = before.indexOf(u']');
    before.remove(u'[').remove(u']').remove(u'|');
    return typeable(kind, text,
                    {.text = before,
                     .selectionStart = static_cast<int>(start),
                     .selectionLength = end < 0 ? 0 : static_cast<int>(end - start - 1)},
                    maxLength);
}

/// How a text comes in typed, and how pasted; "(no)" where it is refused.
QString brought(FieldKind kind, const QString& text)
{
    return withPoints(kind, text, {}) + u" / "_s + pasteable(kind, text).value_or(u"(no)"_s);
}

} // namespace

class TestTypingRules : public QObject
{
    Q_OBJECT

private slots:
    void figures()
    {
        QCOMPARE(typed(DecimalNumber, u"|"_s, u"1.2.3"_s), u"1.23"_s);
        QCOMPARE(typed(DecimalNumber, u"|"_s, u"-5-"_s), u"-5"_s);
        QCOMPARE(typed(DecimalNumber, u"1|2"_s, u"-"_s), u"-"_s);
        QCOMPARE(typed(DecimalNumber, u"[1.2]"_s, u".5."_s), u"5."_s); // the old point counts
        QCOMPARE(typed(DecimalNumber, u"|"_s, u"1, 5e\t3\n"_s), u"153"_s);
        QCOMPARE(typed(DecimalNumber, u"|"_s, u"1\u0662\uff13"_s), u"1"_s);
        QCOMPARE(typed(DecimalNumber, u"|"_s, u"a1b2c3"_s, 2), u"12"_s);
        QCOMPARE(typed(WholeNumber, u"|"_s, u"-1.2"_s), u"-12"_s);
        QCOMPARE(typed(Amount, u"12.34|"_s, u"5"_s), QString());
        QCOMPARE(typed(Amount, u"12.|34"_s, u"56"_s), u"5"_s);
        QCOMPARE(typed(Amount, u"12|.34"_s, u"567"_s), u"567"_s);
        QCOMPARE(typed(Amount, u"[1234]"_s, u"12.345"_s), u"12.34"_s);
        QCOMPARE(typed(Date, u"|"_s, u"1-2/3 m4"_s), u"12/34"_s);
    }

    void texts()
    {
        QCOMPARE(typed(Words, u"|"_s, u"È 1,5\u00a0%"_s), u"È 1,5\u00a0%"_s);
        QCOMPARE(typed(RunningText, u"|"_s, u"a\tb\r\nc\u2028d\b"_s), u"abcd"_s);
        QCOMPARE(typed(Words, u"ab|c"_s, u"xy"_s, 4), u"x"_s);
        QCOMPARE(typed(Words, u"a[bc]d"_s, u"xyz"_s, 4), u"xy"_s);
        QCOMPARE(typed(Words, u"|"_s, u"a😀b"_s, 2), u"ab"_s); // no half character
    }

    void commas()
    {
        for (const FieldKind kind : {DecimalNumber, Amount}) {
            QCOMPARE(brought(kind, u"12,5"_s), u"12.5 / 12.5"_s);
            QCOMPARE(brought(kind, u"1.234,50"_s), u"1.234.50 / (no)"_s);
            QCOMPARE(brought(kind, u"1,2,3"_s), u"1.2.3 / (no)"_s);
            QCOMPARE(brought(kind, u"1 234,5\n"_s), u"1 234.5\n / 1234.5"_s);
            QCOMPARE(brought(kind, u"18,5\n20\n"_s), u"18.5\n20\n / (no)"_s);
        }
        QCOMPARE(brought(WholeNumber, u"1,5"_s), u"1,5 / 1,5"_s);
        QCOMPARE(brought(Words, u"Rossi, Mario"_s), u"Rossi, Mario / Rossi, Mario"_s);
        QCOMPARE(brought(Words, u"Sala\tBagno"_s), u"Sala\tBagno / (no)"_s);
        QCOMPARE(brought(FreeFigure, u"1,05"_s), u"1.05 / 1.05"_s);
        QCOMPARE(brought(FreeFigure, u"[A,B]"_s), u"[A,B] / [A,B]"_s);
        QCOMPARE(brought(FreeFigure, u"circa 1,5"_s), u"circa 1.5 / circa 1.5"_s);
        QCOMPARE(brought(FreeFigure, u"1.234,50"_s), u"1.234.50 / (no)"_s);
        QCOMPARE(withPoints(FreeFigure, u","_s, u"[A"), u","_s);
    }

    void dates()
    {
        for (const auto& [typed, checked] : {std::pair{u""_s, u""_s},
                                             {u"  "_s, u"  "_s},
                                             {u"29/02/2012"_s, u"29/02/2012"_s},
                                             {u"01/01/0099"_s, u"01/01/0099"_s},
                                             {u"31122013"_s, u"31/12/2013"_s},
                                             {u"3112/2013"_s, u"31/12/2013"_s},
                                             {u"010129"_s, u"01/01/2029"_s},
                                             {u"010130"_s, u"01/01/1930"_s}})
            QCOMPARE(checkedText(Date, typed), checked);
        const QString bad =
            u"29/02/2013|29/02/1900|31/04/2013|3/1/2013|0102|01022|01/02/|01/02/201|"
            "01/02/20134|01/02/0000|00/02/2013|01/13/2013|//////|01/02/20/3|"
            "01 gen 2013|+1/02/2013|٠١/02/2013"_s;
        for (const QString& typed : bad.split(u'|'))
            QVERIFY2(!checkedText(Date, typed), qPrintable(typed));
        QCOMPARE(checkedText(Words, u"31/02/2013"_s), u"31/02/2013"_s);
    }
};

ZELTO_TEST(TestTypingRules)
#include "tst_typing_rules.moc"

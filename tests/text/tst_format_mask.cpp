// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/runner.h"
#include "text/decimal_text.h"
#include "text/format_mask.h"

#include <QTest>

#include <rapidcheck.h>

using namespace Qt::StringLiterals;
using namespace zelto::text;

class TestFormatMask : public QObject
{
    Q_OBJECT

private slots:
    void fields()
    {
        QCOMPARE(FormatMask(u"####0.000", u"12,3456"), u"   12.346"_s);
        QCOMPARE(FormatMask(u"\\      \\ ###0.00", u"Rif\t3.5"), u"Rif         3.50"_s);
        QCOMPARE(FormatMask(u" -  \\                  \\", u"Cucina"), u" -  Cucina"_s);
        QCOMPARE(FormatMask(u"\\  \\|", u"abcdef"), u"abcd|"_s);
        QCOMPARE(FormatMask(u"\\  ", u"abcdef"), u"abcd"_s); // nothing closes the field
        QCOMPARE(FormatMask(u"!-!", u"abc\t"), u"a-"_s);
        QCOMPARE(FormatMask(u"0.00", u"123.456"), u"3.46"_s); // wider than its field
        QCOMPARE(FormatMask(u"0.0 0.0", u"1"), u"1.0 0.0"_s); // a missing value is zero
        QCOMPARE(FormatMask(u"##", u"0"), QString());
        QCOMPARE(FormatMask(u"##", u"7"), u" 7"_s);
        QCOMPARE(FormatMask(u"0.0##", u"1.50"), u"  1.5"_s);
        QCOMPARE(FormatMask(u"###0.00", u"-1.005"), u"  -1.01"_s);
        QCOMPARE(FormatMask(u"###0.00", u"-0.001"), u"  -0.00"_s); // rounded away
        // The character behind a field begins none.
        QCOMPARE(FormatMask(u"0#0.0\\0", u"5"), u"005.0\\0"_s);
        QCOMPARE(FormatMask(u"n. #0 pag.", u"4"), u"n.  4 pag."_s);
        QCOMPARE(FormatMask(u"0-0.0.0", u"12.34"), u"1-2.3.4"_s);
        QCOMPARE(FormatMask(u"", u"1\t2"), QString());
        QCOMPARE(FormatMask(u"0.00", u"abc"), u"0.00"_s);
        QCOMPARE(FormatMask(u"##0.000", u"1.234,5"), u"  1.234"_s); // up to the second separator
    }

    void rounding()
    {
        const auto rounded = [](double number) {
            return NumberMask{"####################0.000"}.format(number).trimmed();
        };
        QCOMPARE(rounded(1.0005), u"1.001"_s); // below the half in binary
        QCOMPARE(rounded(0.0005), u"0.001"_s);
        QCOMPARE(rounded(0.000499999999), u"0.000"_s);
        QCOMPARE(rounded(333.33349999999999), u"333.334"_s); // a half at sixteen digits
        QCOMPARE(rounded(999.9995), u"1000.000"_s);
        QCOMPARE(rounded(0.9996), u"1.000"_s);
        QCOMPARE(rounded(1e-300), u"0.000"_s);
        QCOMPARE(rounded(123456789012345678.0), u"123456789012346000.000"_s); // fifteen digits
    }

    void singlesGoThroughTheirText()
    {
        QVERIFY(rc::check("a single prints as its seven digits do", [](float number) {
            RC_PRE(std::isfinite(number));
            const QString text = decimalText(number);
            RC_ASSERT(NumberMask{"####0.000"}.format(number) ==
                      FormatMask(u"####0.000", text).rightJustified(9));
        }));
    }

    void agreesWithExactDecimals()
    {
        QVERIFY(rc::check("three places of an exact decimal", [] {
            const auto millionths = *rc::gen::inRange<qint64>(0, 2'000'000'000);
            const qint64 rounded = (millionths + 500) / 1000;
            const QString out =
                NumberMask{"######0.000"}.format(static_cast<double>(millionths) / 1e6);
            const auto expected =
                u"%1.%2"_s.arg(rounded / 1000).arg(rounded % 1000, 3, 10, QChar(u'0'));
            RC_ASSERT(out.trimmed() == expected);
        }));
    }

    void refusesThirtyOneOfThem()
    {
        const QString fields = u"! "_s.repeated(MaxMaskValues);
        const QString values = u"a\t"_s.repeated(MaxMaskValues - 1);
        QCOMPARE(FormatMask(fields, values).size(), 2 * MaxMaskValues - 3);
        QVERIFY_THROWS_EXCEPTION(MaskError, FormatMask(fields + u"!"_s, values));
        QVERIFY_THROWS_EXCEPTION(MaskError, FormatMask(u"!", values + u"\t"_s));
    }

    void grouped()
    {
        for (const auto& [number, comma] : {std::pair{u"1234567.5"_s, u"1 234 567,50"_s},
                                            {u"0,5"_s, u"0,50"_s},
                                            {u"-123"_s, u"- 123,00"_s},
                                            {u"1234,5"_s, u"1 234,50"_s},
                                            {u"100"_s, u"100,00"_s},
                                            {u"0,00"_s, QString()},
                                            {QString(), QString()},
                                            {u"5"_s + u"\t"_s.repeated(31), u"5,00"_s}}) {
            QCOMPARE(FormatGroupedComma(number), comma);
            QCOMPARE(FormatGroupedPoint(number), QString(comma).replace(u',', u'.'));
            QCOMPARE(FormatGroupedComma(number, 1), QString());
            QCOMPARE(FormatGroupedPoint(number, 2), QString());
        }
    }
};

ZELTO_TEST(TestFormatMask)
#include "tst_format_mask.moc"

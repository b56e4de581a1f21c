// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/runner.h"
#include "text/decimal_text.h"

#include <QTest>

#include <cmath>
#include <limits>
#include <rapidcheck.h>

using namespace Qt::StringLiterals;
using namespace zelto::text;

namespace {
const auto commaMachine = DecimalSeparators::detect(QLocale(QLocale::Italian, QLocale::Italy));
const auto pointMachine = DecimalSeparators::detect(QLocale::c());
} // namespace

class TestDecimalText : public QObject
{
    Q_OBJECT

private slots:
    void normalising()
    {
        const auto texts = [](const QString& text) {
            QStringList all{ToPointDecimal(text)};
            for (const auto& machine : {commaMachine, pointMachine}) {
                QString inPlace = text;
                ToLocalDecimalInPlace(inPlace, machine);
                all << ToLocalDecimal(text, machine) << inPlace;
            }
            return all.join(u' ');
        };
        QCOMPARE(texts(u"12,5"_s), u"12.5 12,5 12,5 12.5 12.5"_s);
        QCOMPARE(texts(u"12.5"_s), u"12.5 12,5 12,5 12.5 12.5"_s);
        QCOMPARE(texts(u" 1 000,5 "_s), u"1000.5 1000,5 1000,5 1000.5 1000.5"_s);
        QCOMPARE(texts(u".5"_s), u".5 0,5 ,5 0.5 .5"_s);
        QCOMPARE(texts(u",5"_s), u".5 0,5 ,5 0.5 .5"_s);
        QCOMPARE(texts(u"1,2,3"_s), u"1.2,3 1,2,3 1,2,3 1.2,3 1.2,3"_s);
        QCOMPARE(texts(u"1.234,5"_s), u"1.234.5 1,234,5 1,234,5 1.234.5 1.234.5"_s);
        QCOMPARE(texts(QString()), u"    "_s);
    }

    void leadingNumberOfAText()
    {
        for (const auto& [text, number] : {std::pair{u"1.25"_s, 1.25},
                                           {u"1,25"_s, 1.0},
                                           {u"abc"_s, 0.0},
                                           {u" 12.5 mq"_s, 12.5},
                                           {u"-.5"_s, -0.5},
                                           {u"+7"_s, 7.0},
                                           {u"3."_s, 3.0},
                                           {u"."_s, 0.0},
                                           {u"-"_s, 0.0},
                                           {u"1.5E2"_s, 150.0},
                                           {u"1.5E"_s, 1.5},
                                           {u"inf"_s, 0.0},
                                           {u"0x10"_s, 0.0},
                                           {u"-1e999"_s, -std::numeric_limits<double>::max()},
                                           {u"1e-999"_s, 0.0},
                                           {u"0."_s + QString(400, u'0') + u"1e5"_s, 0.0},
                                           {u"\u0661"_s, 0.0}}) {
            QVERIFY2(leadingNumber(QStringView{text}) == number, qPrintable(text));
            QVERIFY2(leadingNumber(std::string_view{text.toStdString()}) == number,
                     qPrintable(text));
        }
    }

    void decimalTexts()
    {
        const auto texts = [](double number) {
            return decimalText(static_cast<float>(number)) + u' ' + decimalText(number);
        };
        QCOMPARE(texts(0.1), u"0.1 0.1"_s);
        QCOMPARE(texts(1.0 / 3), u"0.3333333 0.333333333333333"_s);
        QCOMPARE(texts(1000.0), u"1000 1000"_s);
        QCOMPARE(texts(-21.5), u"-21.5 -21.5"_s);
        QCOMPARE(texts(1234567.89012345), u"1234568 1234567.89012345"_s);
    }

    void everyDecimalTextReadsBack()
    {
        QVERIFY(rc::check("text of a double reads back to fifteen digits", [](double number) {
            RC_PRE(std::isfinite(number));
            const double back = leadingNumber(QStringView{decimalText(number)});
            RC_ASSERT(std::abs(back - number) <= std::abs(number) * 1e-14);
        }));
    }
};

ZELTO_TEST(TestDecimalText)

#include "tst_decimal_text.moc"

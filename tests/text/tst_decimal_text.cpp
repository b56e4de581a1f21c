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
const DecimalSeparators commaMachine{.LocalDecimalSeparator = u',',
                                     .ForeignDecimalSeparator = u'.'};
const DecimalSeparators pointMachine{.LocalDecimalSeparator = u'.',
                                     .ForeignDecimalSeparator = u','};
} // namespace

class TestDecimalText : public QObject
{
    Q_OBJECT

private slots:
    void separatorsOfAMachine()
    {
        const auto italian = DecimalSeparators::detect(QLocale(QLocale::Italian, QLocale::Italy));
        QCOMPARE(italian.LocalDecimalSeparator, QChar(u','));
        QCOMPARE(italian.ForeignDecimalSeparator, QChar(u'.'));
        const auto english = DecimalSeparators::detect(QLocale::c());
        QCOMPARE(english.LocalDecimalSeparator, QChar(u'.'));
        QCOMPARE(english.ForeignDecimalSeparator, QChar(u','));
    }

    void normalising_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("toPoint");
        QTest::addColumn<QString>("onComma");
        QTest::addColumn<QString>("onPoint");
        QTest::addRow("comma") << u"12,5"_s << u"12.5"_s << u"12,5"_s << u"12.5"_s;
        QTest::addRow("point") << u"12.5"_s << u"12.5"_s << u"12,5"_s << u"12.5"_s;
        QTest::addRow("blanks") << u" 1 000,5 "_s << u"1000.5"_s << u"1000,5"_s << u"1000.5"_s;
        QTest::addRow("begins with the separator") << u".5"_s << u".5"_s << u"0,5"_s << u"0.5"_s;
        QTest::addRow("two of a kind") << u"1,2,3"_s << u"1.2,3"_s << u"1,2,3"_s << u"1.2,3"_s;
        QTest::addRow("both") << u"1.234,5"_s << u"1.234.5"_s << u"1,234,5"_s << u"1.234.5"_s;
        QTest::addRow("empty") << u""_s << u""_s << u""_s << u""_s;
    }

    void normalising()
    {
        QFETCH(QString, text);
        QFETCH(QString, onComma);
        QFETCH(QString, onPoint);
        QTEST(ToPointDecimal(text), "toPoint");
        QTEST(ToLocalDecimal(text, commaMachine), "onComma");
        QTEST(ToLocalDecimal(text, pointMachine), "onPoint");
        for (const auto& machine : {commaMachine, pointMachine}) {
            QString inPlace = text;
            ToLocalDecimalInPlace(inPlace, machine);
            const QString whole = ToLocalDecimal(text, machine);
            QCOMPARE(inPlace, text.startsWith(u'.') ? whole.sliced(1) : whole);
        }
    }

    void leadingNumberOfAText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<double>("number");
        QTest::addRow("plain") << u"1.25"_s << 1.25;
        QTest::addRow("comma ends it") << u"1,25"_s << 1.0;
        QTest::addRow("letters") << u"abc"_s << 0.0;
        QTest::addRow("rest ignored") << u" 12.5 mq"_s << 12.5;
        QTest::addRow("negative") << u"-.5"_s << -0.5;
        QTest::addRow("signed") << u"+7"_s << 7.0;
        QTest::addRow("closing point") << u"3."_s << 3.0;
        QTest::addRow("lone point") << u"."_s << 0.0;
        QTest::addRow("lone sign") << u"-"_s << 0.0;
        QTest::addRow("exponent") << u"1.5E2"_s << 150.0;
        QTest::addRow("no exponent") << u"1.5E"_s << 1.5;
        QTest::addRow("word that reads as infinite") << u"inf"_s << 0.0;
        QTest::addRow("hexadecimal is not ours") << u"0x10"_s << 0.0;
        QTest::addRow("too large") << u"-1e999"_s << -std::numeric_limits<double>::max();
        QTest::addRow("too small") << u"1e-999"_s << 0.0;
        QTest::addRow("long and small") << u"0."_s + QString(400, u'0') + u"1e5"_s << 0.0;
        QTest::addRow("other digits") << u"\u0661"_s << 0.0;
    }

    void leadingNumberOfAText()
    {
        QFETCH(QString, text);
        QFETCH(double, number);
        QCOMPARE(leadingNumber(QStringView{text}), number);
        QCOMPARE(leadingNumber(std::string_view{text.toStdString()}), number);
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

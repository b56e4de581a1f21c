// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/runner.h"
#include "text/literals.h"
#include "widgets/field_rules.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::widgets;

namespace {

/// "1[2]3" has its 2 selected, "12|3" the caret before the 3.
FieldText field(QString text)
{
    const auto start = std::max(text.indexOf(u'['), text.indexOf(u'|'));
    const auto end = text.indexOf(u']');
    text.remove(u'[').remove(u']').remove(u'|');
    return {.text = text,
            .selectionStart = static_cast<int>(start),
            .selectionLength = end < 0 ? 0 : static_cast<int>(end - start - 1)};
}

} // namespace

class TestTypingRules : public QObject
{
    Q_OBJECT

private slots:
    void typed_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("taken");
        QTest::addColumn<int>("maxLength");
        const auto row = [](const char* name) -> QTestData& { return QTest::addRow("%s", name); };
        row("second point") << u"SOL"_s << u"|"_s << u"1.2.3"_s << u"1.23"_s << 0;
        row("second minus") << u"SOL"_s << u"|"_s << u"-5-"_s << u"-5"_s << 0;
        row("minus within") << u"DOL"_s << u"1|2"_s << u"-"_s << u"-"_s << 0;
        row("selected point") << u"COL"_s << u"[1.2]"_s << u".5."_s << u"5."_s << 0;
        row("no figures") << u""_s << u"|"_s << u"1, 5e\t3\n"_s << u"153"_s << 0;
        row("foreign digits") << u"SOL"_s << u"|"_s << u"1\u0662\uff13"_s << u"1"_s << 0;
        row("small type code") << u"iOL"_s << u"|"_s << u"-1.2"_s << u"-12"_s << 0;
        row("unknown code") << u"?"_s << u"|"_s << u"a1.2.3"_s << u"1.23"_s << 0;
        row("third decimal") << u"EOL"_s << u"12.34|"_s << u"5"_s << u""_s << 0;
        row("behind the point") << u"EOL"_s << u"12.|34"_s << u"56"_s << u"5"_s << 0;
        row("before the point") << u"EOL"_s << u"12|.34"_s << u"567"_s << u"567"_s << 0;
        row("amount anew") << u"EOL"_s << u"[1234]"_s << u"12.345"_s << u"12.34"_s << 0;
        row("date") << u"TOLD+"_s << u"|"_s << u"1-2/3 m4"_s << u"12/34"_s << 0;
        row("free text") << u"AOL"_s << u"|"_s << u"È 1,5\u00a0%"_s << u"È 1,5\u00a0%"_s << 0;
        row("one line") << u"MOL"_s << u"|"_s << u"a\tb\r\nc\u2028d\b"_s << u"abcd"_s << 0;
        row("full") << u"AOL"_s << u"ab|c"_s << u"xy"_s << u"x"_s << 4;
        row("selection makes room") << u"AOL"_s << u"a[bc]d"_s << u"xyz"_s << u"xy"_s << 4;
        row("refused take no room") << u"SOL"_s << u"|"_s << u"a1b2c3"_s << u"12"_s << 2;
        row("half a character") << u"AOL"_s << u"|"_s << u"a😀b"_s << u"ab"_s << 2;
    }
    void typed()
    {
        QFETCH(QString, tag);
        QFETCH(QString, before);
        QFETCH(QString, typed);
        QFETCH(int, maxLength);
        QTEST(typeable(FieldTag(tag), typed, field(before), maxLength), "taken");
    }

    /// How commas come in, typed behind a text and pasted; "(no)" for what is refused.
    void commas_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::addColumn<bool>("figures");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("pasted");
        const auto row = [](const QString& tag, bool figures, const QString& text,
                            const QString& typed, const QString& pasted) {
            QTest::addRow("%s%d %s", qPrintable(tag), figures, qPrintable(text))
                << tag << figures << text << typed << pasted;
        };
        const QString no = u"(no)"_s;
        for (const QString& tag : {u"SOL"_s, u"DOL"_s, u"COL"_s, u"EOL"_s, QString()}) {
            row(tag, false, u"12,5"_s, u"12.5"_s, u"12.5"_s);
            row(tag, false, u"1.234,50"_s, u"1.234.50"_s, no);
            row(tag, false, u"1,2,3"_s, u"1.2.3"_s, no);
            row(tag, false, u"1 234,5\n"_s, u"1 234.5\n"_s, u"1234.5"_s);
            row(tag, false, u"18,5\n20\n"_s, u"18.5\n20\n"_s, no);
        }
        row(u"LOL"_s, false, u"1,5"_s, u"1,5"_s, u"1,5"_s);
        row(u"AOL"_s, false, u"Rossi, Mario"_s, u"Rossi, Mario"_s, u"Rossi, Mario"_s);
        row(u"AOL"_s, false, u"Sala\tBagno"_s, u"Sala\tBagno"_s, no);
        row(u"AOL"_s, true, u"1,05"_s, u"1.05"_s, u"1.05"_s);
        row(u"AOL"_s, true, u"[A,B]"_s, u"[A,B]"_s, u"[A,B]"_s);
        row(u"AOL"_s, true, u"circa 1,5"_s, u"circa 1.5"_s, u"circa 1.5"_s);
        row(u"AOL"_s, true, u"1.234,50"_s, u"1.234.50"_s, no);
    }
    void commas()
    {
        QFETCH(bool, figures);
        QFETCH(QString, tag);
        QFETCH(QString, text);
        const FieldTag kind(tag, figures ? FieldTag::Holds::Figures : FieldTag::Holds::Words);
        QTEST(withPoints(kind, text, {}), "typed");
        QTEST(pasteable(kind, text).value_or(u"(no)"_s), "pasted");
        QCOMPARE(withPoints(FieldTag(u"AOL"_s, FieldTag::Holds::Figures), u","_s, u"[A"), u","_s);
    }

    void checked_data()
    {
        QTest::addColumn<QString>("tag");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("result");
        QTest::addColumn<int>("maxLength");
        const auto row = [](const QString& tag, const QString& text, const QString& result,
                            int maxLength = 10) {
            QTest::addRow("%s %s", qPrintable(tag), qPrintable(text))
                << tag << text << result << maxLength;
        };
        for (const QString& same : {u""_s, u"  "_s, u"29/02/2012"_s, u"01/01/0099"_s})
            row(u"TOLD+"_s, same, same);
        row(u"TOLD+"_s, u"31122013"_s, u"31/12/2013"_s);
        row(u"TOLD+"_s, u"3112/2013"_s, u"31/12/2013"_s);
        row(u"TOLD+"_s, u"010129"_s, u"01/01/2029"_s);
        row(u"TOLD+"_s, u"010130"_s, u"01/01/1930"_s);
        for (const char* bad :
             {"29/02/2013", "29/02/1900", "31/04/2013", "3/1/2013", "0102", "01022", "01/02/",
              "01/02/201", "01/02/20134", "01/02/0000", "00/02/2013", "01/13/2013", "//////",
              "01/02/20/3", "01 gen 2013", "+1/02/2013", "٠١/02/2013"})
            row(u"TOLD+"_s, QString::fromUtf8(bad), u"(fails)"_s);
        row(u"AOLRabc"_s, u"cab"_s, u"cab"_s);
        row(u"AOLRabc"_s, u"caB"_s, u"(fails)"_s);
        row(u"AOLRabc"_s, u"cax"_s, u"cax"_s, 2);
        row(u"AOLRabc"_s, u"xyz"_s, u"xyz"_s, 0);
        row(u"AOLV;SI;NO;"_s, u"si"_s, u"si"_s);
        row(u"AOLV;SI;NO;"_s, u"s"_s, u"(fails)"_s);
        row(u"AOLV;SI;;"_s, u""_s, u""_s);
    }
    void checked()
    {
        QFETCH(QString, tag);
        QFETCH(QString, text);
        QFETCH(int, maxLength);
        QTEST(checkedText(FieldTag(tag), text, maxLength).value_or(u"(fails)"_s), "result");
    }
};

ZELTO_TEST(TestTypingRules)
#include "tst_typing_rules.moc"

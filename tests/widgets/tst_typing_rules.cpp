// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/runner.h"
#include "text/literals.h"
#include "widgets/field_rules.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::widgets;
using enum FieldKind;

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
        QTest::addColumn<FieldKind>("kind");
        QTest::addColumn<QString>("before");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("taken");
        QTest::addColumn<int>("maxLength");
        const auto row = [](const char* name) -> QTestData& { return QTest::addRow("%s", name); };
        row("second point") << DecimalNumber << u"|"_s << u"1.2.3"_s << u"1.23"_s << 0;
        row("second minus") << DecimalNumber << u"|"_s << u"-5-"_s << u"-5"_s << 0;
        row("minus within") << DecimalNumber << u"1|2"_s << u"-"_s << u"-"_s << 0;
        row("selected point") << DecimalNumber << u"[1.2]"_s << u".5."_s << u"5."_s << 0;
        row("no figures") << DecimalNumber << u"|"_s << u"1, 5e\t3\n"_s << u"153"_s << 0;
        row("foreign digits") << DecimalNumber << u"|"_s << u"1\u0662\uff13"_s << u"1"_s << 0;
        row("whole number") << WholeNumber << u"|"_s << u"-1.2"_s << u"-12"_s << 0;
        row("third decimal") << Amount << u"12.34|"_s << u"5"_s << u""_s << 0;
        row("behind the point") << Amount << u"12.|34"_s << u"56"_s << u"5"_s << 0;
        row("before the point") << Amount << u"12|.34"_s << u"567"_s << u"567"_s << 0;
        row("amount anew") << Amount << u"[1234]"_s << u"12.345"_s << u"12.34"_s << 0;
        row("date") << Date << u"|"_s << u"1-2/3 m4"_s << u"12/34"_s << 0;
        row("free text") << Words << u"|"_s << u"È 1,5\u00a0%"_s << u"È 1,5\u00a0%"_s << 0;
        row("one line") << RunningText << u"|"_s << u"a\tb\r\nc\u2028d\b"_s << u"abcd"_s << 0;
        row("full") << Words << u"ab|c"_s << u"xy"_s << u"x"_s << 4;
        row("in place of a selection") << Words << u"a[bc]d"_s << u"xyz"_s << u"xy"_s << 4;
        row("refused do not count") << DecimalNumber << u"|"_s << u"a1b2c3"_s << u"12"_s << 2;
        row("half a character") << Words << u"|"_s << u"a😀b"_s << u"ab"_s << 2;
    }
    void typed()
    {
        QFETCH(FieldKind, kind);
        QFETCH(QString, before);
        QFETCH(QString, typed);
        QFETCH(int, maxLength);
        QTEST(typeable(kind, typed, field(before), maxLength), "taken");
    }

    /// How commas come in, typed behind a text and pasted; "(no)" for what is refused.
    void commas_data()
    {
        QTest::addColumn<FieldKind>("kind");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("pasted");
        const auto row = [](FieldKind kind, const QString& text, const QString& typed,
                            const QString& pasted) {
            QTest::addRow("%d %s", static_cast<int>(kind), qPrintable(text))
                << kind << text << typed << pasted;
        };
        const QString no = u"(no)"_s;
        for (const FieldKind kind : {DecimalNumber, Amount}) {
            row(kind, u"12,5"_s, u"12.5"_s, u"12.5"_s);
            row(kind, u"1.234,50"_s, u"1.234.50"_s, no);
            row(kind, u"1,2,3"_s, u"1.2.3"_s, no);
            row(kind, u"1 234,5\n"_s, u"1 234.5\n"_s, u"1234.5"_s);
            row(kind, u"18,5\n20\n"_s, u"18.5\n20\n"_s, no);
        }
        row(WholeNumber, u"1,5"_s, u"1,5"_s, u"1,5"_s);
        row(Words, u"Rossi, Mario"_s, u"Rossi, Mario"_s, u"Rossi, Mario"_s);
        row(Words, u"Sala\tBagno"_s, u"Sala\tBagno"_s, no);
        row(FreeFigure, u"1,05"_s, u"1.05"_s, u"1.05"_s);
        row(FreeFigure, u"[A,B]"_s, u"[A,B]"_s, u"[A,B]"_s);
        row(FreeFigure, u"circa 1,5"_s, u"circa 1.5"_s, u"circa 1.5"_s);
        row(FreeFigure, u"1.234,50"_s, u"1.234.50"_s, no);
    }
    void commas()
    {
        QFETCH(FieldKind, kind);
        QFETCH(QString, text);
        QTEST(withPoints(kind, text, {}), "typed");
        QTEST(pasteable(kind, text).value_or(u"(no)"_s), "pasted");
        QCOMPARE(withPoints(FreeFigure, u","_s, u"[A"), u","_s);
    }

    void dates()
    {
        const QList<std::pair<QString, QString>> good{{u""_s, u""_s},
                                                      {u"  "_s, u"  "_s},
                                                      {u"29/02/2012"_s, u"29/02/2012"_s},
                                                      {u"01/01/0099"_s, u"01/01/0099"_s},
                                                      {u"31122013"_s, u"31/12/2013"_s},
                                                      {u"3112/2013"_s, u"31/12/2013"_s},
                                                      {u"010129"_s, u"01/01/2029"_s},
                                                      {u"010130"_s, u"01/01/1930"_s}};
        for (const auto& [typed, checked] : good)
            QCOMPARE(checkedText(Date, typed), checked);
        for (const QString& bad :
             {u"29/02/2013"_s, u"29/02/1900"_s, u"31/04/2013"_s, u"3/1/2013"_s, u"0102"_s,
              u"01022"_s, u"01/02/"_s, u"01/02/201"_s, u"01/02/20134"_s, u"01/02/0000"_s,
              u"00/02/2013"_s, u"01/13/2013"_s, u"//////"_s, u"01/02/20/3"_s, u"01 gen 2013"_s,
              u"+1/02/2013"_s, u"٠١/02/2013"_s})
            QVERIFY2(!checkedText(Date, bad), qPrintable(bad));
        QCOMPARE(checkedText(Words, u"31/02/2013"_s), u"31/02/2013"_s);
    }
};

ZELTO_TEST(TestTypingRules)
#include "tst_typing_rules.moc"

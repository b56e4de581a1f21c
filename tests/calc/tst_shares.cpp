// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/share_rule.h"
#include "calc/shares.h"
#include "calc/staircase_shares.h"
#include "support/building.h"
#include "support/runner.h"

using namespace zelto::calc;
using namespace zelto::test;

class TestShares : public QObject
{
    Q_OBJECT

private slots:
    void oneShare()
    {
        const auto tenThousandths = [](double parte, double totale) {
            return QuotaMillesimale(parte, totale).tenThousandths();
        };
        QCOMPARE(tenThousandths(5, 0), 0);
        QCOMPARE(tenThousandths(1, 3), 3333330);
        QCOMPARE(tenThousandths(1.0005, 1000), 10010); // half of a thousandth
        QCOMPARE(tenThousandths(7.5, 7.5), 10000000);
        QCOMPARE(tenThousandths(-1, 3), -3333330);
        QCOMPARE(tenThousandths(-1e6, 3), -3333333333330);
        QCOMPARE(tenThousandths(1e300, 1e-5), 10'000'000'000'000); // beyond all
    }

    /// The residual goes to the first of equals; other shares are held against fractions.
    void generalShares()
    {
        const auto shares = [](const std::vector<UnitData>& units) {
            return sharesText(calcolaMillGen(calcolaConsistenze(building(units))));
        };
        QCOMPARE(shares({{10}, {10}, {10}}), u"333.334 333.333 333.333"_s);
        QCOMPARE(shares({{0}, {0}}), u"0 0"_s);
        QCOMPARE(shares({}), QString());
    }

    void tableShares()
    {
        const ModelloLavoro modello = building({{.size = 30, .flags = u"X"_s},
                                                {.size = 30, .flags = u"xX"_s},
                                                {.size = 60, .flags = u"X"_s}});
        const auto shares = [&, consistenze = calcolaConsistenze(modello)](int table) {
            return sharesText(calcolaMillTab(modello, consistenze, table));
        };
        QCOMPARE(shares(1), u"333.333 0 666.667"_s);
        QCOMPARE(shares(2), u"0 1000 0"_s);
        QCOMPARE(shares(3), u"0 0 0"_s);
    }

    void staircasesInOrderOfAppearance()
    {
        const ModelloLavoro modello = building(
            {{.scala = u"B"_s}, {.scala = u" "_s}, {.scala = u"A"_s}, {}, {.scala = u"B"_s}});
        QCOMPARE(elencoScale(modello), (std::vector<QString>{u"B"_s, u"A"_s}));
    }

    /// The first line of a code counts, whatever its letter case.
    void staircaseShares()
    {
        ModelloLavoro modello = building({{.size = 50, .scala = u"A"_s, .HPiano = 1},
                                          {.size = 50, .scala = u"A"_s, .HPiano = 4},
                                          {.size = 80, .scala = u"B"_s, .HPiano = 2}});
        modello.tabellaCodici = {{.codice = u"a"_s, .percentuale = 30},
                                 {.codice = u"A"_s, .percentuale = 99}};
        const QuoteScala quote =
            calcolaScala(modello, calcolaConsistenze(modello), u"A"_s, IndicePiano::Proporzionale);
        QCOMPARE(sharesText(quote.MillPiano), u"200 800 0"_s);
        QCOMPARE(sharesText(quote.MillScala), u"410 590 0"_s);
    }
};

ZELTO_TEST(TestShares)
#include "tst_shares.moc"

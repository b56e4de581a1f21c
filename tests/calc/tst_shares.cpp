// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/share_rule.h"
#include "calc/shares.h"
#include "calc/staircase_shares.h"
#include "support/building.h"
#include "support/property.h"
#include "support/runner.h"

#include <QTest>

#include <numeric>

using namespace Qt::StringLiterals;
using namespace zelto::calc;
using zelto::test::building;
using zelto::test::sharesText;
using zelto::test::UnitData;

class TestShares : public QObject
{
    Q_OBJECT

private slots:
    void oneShare_data()
    {
        QTest::addColumn<double>("parte");
        QTest::addColumn<double>("totale");
        QTest::addColumn<qint64>("tenThousandths");
        QTest::addRow("no total") << 5.0 << 0.0 << qint64{0};
        QTest::addRow("third") << 1.0 << 3.0 << qint64{3333330};
        QTest::addRow("half of a thousandth") << 1.0005 << 1000.0 << qint64{10010};
        QTest::addRow("all") << 7.5 << 7.5 << qint64{10000000};
        QTest::addRow("negative size") << -1.0 << 3.0 << qint64{-3333330};
        QTest::addRow("many digits") << -1e6 << 3.0 << qint64{-3333333333330};
        QTest::addRow("beyond all") << 1e300 << 1e-5 << qint64{10'000'000'000'000};
    }

    void oneShare()
    {
        QFETCH(double, parte);
        QFETCH(double, totale);
        QFETCH(qint64, tenThousandths);
        QCOMPARE(QuotaMillesimale(parte, totale).tenThousandths(), tenThousandths);
    }

    void generalShares_data()
    {
        QTest::addColumn<QList<float>>("sizes");
        QTest::addColumn<QString>("shares");
        QTest::addRow("residual to the first of equals")
            << QList<float>{10, 10, 10} << u"333.334 333.333 333.333"_s;
        QTest::addRow("residual to the largest")
            << QList<float>{1, 1, 4} << u"166.667 166.667 666.666"_s;
        QTest::addRow("no residual") << QList<float>{500.0004F, 499.9996F} << u"500 500"_s;
        QTest::addRow("size zero still there") << QList<float>{5, 0, 5} << u"500 0 500"_s;
        QTest::addRow("no size at all") << QList<float>{0, 0} << u"0 0"_s;
        QTest::addRow("no unit") << QList<float>{} << u""_s;
    }

    void generalShares()
    {
        QFETCH(QList<float>, sizes);
        std::vector<UnitData> units;
        for (const float size : sizes)
            units.push_back({.size = size});
        QTEST(sharesText(calcolaMillGen(calcolaConsistenze(building(units)))), "shares");
    }

    void tableShares()
    {
        const ModelloLavoro modello = building({{.size = 30, .flags = u"X"_s},
                                                {.size = 30, .flags = u"xX"_s},
                                                {.size = 60, .flags = u"X"_s},
                                                {.size = 10, .flags = u" X"_s}});
        const Consistenze consistenze = calcolaConsistenze(modello);
        QCOMPARE(sharesText(calcolaMillTab(modello, consistenze, 1)), u"333.333 0 666.667 0"_s);
        QCOMPARE(sharesText(calcolaMillTab(modello, consistenze, 2)), u"0 750 0 250"_s);
        QCOMPARE(sharesText(calcolaMillTab(modello, consistenze, 3)), u"0 0 0 0"_s);
    }

    void staircasesInOrderOfAppearance()
    {
        const ModelloLavoro modello = building(
            {{.scala = u"B"_s}, {.scala = u" "_s}, {.scala = u"A"_s}, {}, {.scala = u"B"_s}});
        QCOMPARE(elencoScale(modello), (std::vector<QString>{u"B"_s, u"A"_s}));
    }

    void staircaseShares_data()
    {
        QTest::addColumn<double>("percentuale");
        QTest::addColumn<QString>("scala");
        QTest::addRow("zero is the half of the law") << 0.0 << u"350 650 0"_s;
        QTest::addRow("thirty percent") << 30.0 << u"410 590 0"_s;
    }

    /// Two equal flats, one four times as high as the other, and one of another staircase. The
    /// first line of a code counts, whatever its letter case.
    void staircaseShares()
    {
        QFETCH(double, percentuale);
        ModelloLavoro modello = building({{.size = 50, .scala = u"A"_s, .HPiano = 1},
                                          {.size = 50, .scala = u"A"_s, .HPiano = 4},
                                          {.size = 80, .scala = u"B"_s, .HPiano = 2}});
        modello.tabellaCodici = {{.codice = u"a"_s, .percentuale = percentuale},
                                 {.codice = u"A"_s, .percentuale = 99}};
        const Consistenze consistenze = calcolaConsistenze(modello);
        for (const auto indice : {IndicePiano::Proporzionale, IndicePiano::PerConsistenza}) {
            const QuoteScala quote = calcolaScala(modello, consistenze, u"A"_s, indice);
            QCOMPARE(sharesText(quote.MillPiano), u"200 800 0"_s);
            QTEST(sharesText(quote.MillScala), "scala");
        }
    }

    /// Sizes in whole hundredths, as surveyors write them, in any order of units.
    void orderOfUnitsDoesNotMatter()
    {
        QVERIFY(zelto::test::holds("a unit's share follows it", [] {
            const auto cents = *rc::gen::nonEmpty(
                rc::gen::container<std::vector<int>>(rc::gen::inRange(1, 20000)));
            std::vector<double> bases;
            bases.reserve(cents.size());
            for (const int c : cents)
                bases.push_back(c / 100.0);
            std::vector<double> reversed(bases.rbegin(), bases.rend());
            Partecipanti all(bases.size());
            std::iota(all.begin(), all.end(), 0U);
            const auto shares = quoteChiuse(bases, all);
            auto back = quoteChiuse(reversed, all);
            std::reverse(back.begin(), back.end());

            const auto largest = *std::max_element(bases.begin(), bases.end());
            Millesimi sum;
            for (std::size_t i = 0; i < bases.size(); ++i) {
                sum += shares[i];
                RC_ASSERT(bases[i] == largest || shares[i] == back[i]);
            }
            RC_ASSERT(sum == Mille);
        }));
    }
};

ZELTO_TEST(TestShares)
#include "tst_shares.moc"

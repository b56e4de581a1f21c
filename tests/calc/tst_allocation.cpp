// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/allocation.h"
#include "support/building.h"
#include "support/runner.h"

#include <numeric>
#include <rapidcheck.h>

using namespace zelto::calc;
using namespace zelto::test;

class TestAllocation : public QObject
{
    Q_OBJECT

private slots:
    void amounts()
    {
        QCOMPARE(importoCent(u"1000,50"_s), 100050.0);
        QCOMPARE(importoCent(u"1 000"_s), 100000.0);
        QCOMPARE(importoCent(u"0.29"_s), 29.0); // not whole in binary
        QCOMPARE(importoCent(u"-4.35"_s), -435.0);
        QCOMPARE(importoCent(u"euro"_s), 0.0);
    }

    void parts()
    {
        const auto part = [](qint64 tenThousandths, double cent) {
            return quotaCent(Millesimi::fromTenThousandths(tenThousandths), cent);
        };
        QCOMPARE(part(3333340, 10000), 3333.0);
        QCOMPARE(part(5000000, 1), 0.0); // a half goes to the even one
        QCOMPARE(part(5000000, 3), 2.0);
        QCOMPARE(part(1450, 100000), 14.0); // a half that binary fractions miss
        QCOMPARE(part(1350, 100000), 14.0);
        QCOMPARE(part(100000, 99999999999), 1000000000.0);
    }

    void closedParts()
    {
        using Parts = QList<double>;
        const auto closed = [](const QList<qint64>& tenThousandths, double cent) {
            std::vector<Millesimi> shares;
            for (const qint64 share : tenThousandths)
                shares.push_back(Millesimi::fromTenThousandths(share));
            const auto parts = calcolaQuote(building(std::vector<UnitData>(shares.size())), shares,
                                            cent, Arrotondamento::AQuadratura);
            return Parts(parts.begin(), parts.end());
        };
        const QList<qint64> thirds{3333340, 3333330, 3333330};
        QCOMPARE(closed(thirds, 10000), (Parts{3334, 3333, 3333})); // to the largest remainder
        QCOMPARE(closed(thirds, -10000), (Parts{-3334, -3333, -3333}));
        QCOMPARE(closed(QList<qint64>(4, 2500000), 2), (Parts{1, 1, 0, 0})); // equal ones in order
        QCOMPARE(closed({0, 5000000, 5000000}, 1), (Parts{0, 1, 0}));
        const QList<qint64> signedShares{20000000, -5000000, -5000000};
        QCOMPARE(closed(signedShares, 1), (Parts{2, 0, -1}));
        QCOMPARE(closed(signedShares, -1), (Parts{-2, 0, 1}));
        QCOMPARE(closed({0, 0}, 100), (Parts{0, 0}));
    }

    /// Whatever building and amount, of either sign: nothing is missing, and no part is a whole
    /// hundredth off. Only parts that cannot be printed are refused.
    void closedPartsMissNothing()
    {
        const auto closes = [](const std::vector<std::int16_t>& sizes, std::int32_t cent) {
            std::vector<UnitData> units{{.size = 1}};
            for (const std::int16_t size : sizes)
                units.push_back({.size = static_cast<float>(size)});
            const ModelloLavoro modello = building(units);
            const auto shares = calcolaMillGen(calcolaConsistenze(modello));
            const bool hasShares = shares.front() != Millesimi();
            const double importo = cent;
            const auto exact = [&](Millesimi share) { return share.toDouble() * importo / 1000; };
            std::vector<double> parts;
            try {
                parts = calcolaQuote(modello, shares, importo, Arrotondamento::AQuadratura);
            } catch (const CalcError&) {
                RC_ASSERT(std::ranges::any_of(shares, [&](Millesimi share) {
                    return exact(share) > 999'999'998 || exact(share) < -99'999'998;
                }));
                return;
            }
            RC_ASSERT(!hasShares || std::accumulate(parts.begin(), parts.end(), 0.0) == importo);
            for (std::size_t u = 0; u < parts.size(); ++u)
                RC_ASSERT(std::abs(parts[u] - exact(shares[u])) < 1.001);
        };
        QVERIFY(rc::check("parts close", closes));
    }

    void tooLarge()
    {
        const ModelloLavoro modello = building({{.size = 1}, {.size = 1}});
        const auto shares = calcolaMillGen(calcolaConsistenze(modello));
        const auto refusal = [&](double cent) {
            try {
                return QString::number(calcolaQuote(modello, shares, cent).size());
            } catch (const CalcError& error) {
                return QString::fromUtf8(error.what());
            }
        };
        QCOMPARE(refusal(1999999998), u"2"_s); // the largest part that can be printed
        for (const double cent : {2000000000.0, -200000000.0})
            QVERIFY2(refusal(cent).contains(u"unità 1 (Int. 1)"), qPrintable(refusal(cent)));
        for (const double cent : {1e11, qQNaN()})
            QVERIFY2(refusal(cent).contains(u"999 999 999,99"), qPrintable(refusal(cent)));
    }
};

ZELTO_TEST(TestAllocation)
#include "tst_allocation.moc"

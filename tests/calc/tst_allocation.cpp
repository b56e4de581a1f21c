// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/allocation.h"
#include "support/building.h"
#include "support/runner.h"

#include <QTest>

#include <numeric>
#include <rapidcheck.h>

using namespace Qt::StringLiterals;
using namespace zelto::calc;

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

    void closedParts_data()
    {
        QTest::addColumn<QList<qint64>>("tenThousandths");
        QTest::addColumn<double>("cent");
        QTest::addColumn<QList<double>>("parts");
        const QList<qint64> thirds{3333340, 3333330, 3333330};
        QTest::addRow("largest remainder") << thirds << 10000.0 << QList<double>{3334, 3333, 3333};
        QTest::addRow("equal ones in order") << QList<qint64>{2500000, 2500000, 2500000, 2500000}
                                             << 2.0 << QList<double>{1, 1, 0, 0};
        QTest::addRow("negative") << thirds << -10000.0 << QList<double>{-3334, -3333, -3333};
        QTest::addRow("one hundredth")
            << QList<qint64>{0, 5000000, 5000000} << 1.0 << QList<double>{0, 1, 0};
        const QList<qint64> signedShares{20000000, -5000000, -5000000};
        QTest::addRow("shares of both signs") << signedShares << 1.0 << QList<double>{2, 0, -1};
        QTest::addRow("both signs, negative") << signedShares << -1.0 << QList<double>{-2, 0, 1};
        QTest::addRow("shares of nothing") << QList<qint64>{0, 0} << 100.0 << QList<double>{0, 0};
    }

    void closedParts()
    {
        QFETCH(QList<qint64>, tenThousandths);
        QFETCH(double, cent);
        std::vector<Millesimi> shares;
        for (const qint64 share : tenThousandths)
            shares.push_back(Millesimi::fromTenThousandths(share));
        const ModelloLavoro modello =
            zelto::test::building(std::vector<zelto::test::UnitData>(shares.size()));
        const auto parts = calcolaQuote(modello, shares, cent, Arrotondamento::AQuadratura);
        QTEST(QList<double>(parts.begin(), parts.end()), "parts");
    }

    /// Whatever building and amount, of either sign: nothing is missing, and no part is a whole
    /// hundredth off. Only parts that cannot be printed are refused.
    void closedPartsMissNothing()
    {
        const auto holds = [](const std::vector<std::int16_t>& sizes, std::int32_t cent) {
            std::vector<zelto::test::UnitData> units{{.size = 1}};
            for (const std::int16_t size : sizes)
                units.push_back({.size = static_cast<float>(size)});
            const ModelloLavoro modello = zelto::test::building(units);
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
        QVERIFY(rc::check("parts close", holds));
    }

    void tooLarge_data()
    {
        QTest::addColumn<double>("cent");
        QTest::addColumn<QString>("named"); // what the message has to name, empty where it is fine
        QTest::addRow("largest part") << 1999999998.0 << u""_s;
        QTest::addRow("part too large") << 2000000000.0 << u"unità 1 (Int. 1)"_s;
        QTest::addRow("amount too large") << 1e11 << u"999 999 999,99"_s;
        QTest::addRow("negative part too large") << -200000000.0 << u"unità 1 (Int. 1)"_s;
        QTest::addRow("no amount") << qQNaN() << u"999 999 999,99"_s;
    }

    void tooLarge()
    {
        QFETCH(double, cent);
        QFETCH(QString, named);
        const ModelloLavoro modello = zelto::test::building({{.size = 1}, {.size = 1}});
        const auto shares = calcolaMillGen(calcolaConsistenze(modello));
        QString message;
        try {
            QCOMPARE(calcolaQuote(modello, shares, cent).size(), 2U);
        } catch (const CalcError& error) {
            message = QString::fromUtf8(error.what());
        }
        QCOMPARE(message.isEmpty(), named.isEmpty());
        QVERIFY2(message.contains(named), qPrintable(message));
    }
};

ZELTO_TEST(TestAllocation)
#include "tst_allocation.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
// The shares of random buildings against a second way of computing them: exact fractions.
#include "calc/share_rule.h"
#include "calc/shares.h"
#include "calc/staircase_shares.h"
#include "support/building.h"
#include "support/runner.h"
#include "text/decimal_text.h"

#include <algorithm>
#include <cmath>
#include <gmpxx.h>
#include <random>

using namespace zelto::calc;
using namespace zelto::test;

namespace {

using Fraction = mpq_class;
using Fractions = std::vector<Fraction>;

/// The nearest whole number, halves away from zero.
mpz_class nearest(const Fraction& value)
{
    const Fraction shifted = abs(value) + Fraction(1, 2);
    const mpz_class whole = shifted.get_num() / shifted.get_den();
    return value < 0 ? mpz_class(-whole) : whole;
}

/// The fraction as a single-precision number holds it.
Fraction single(const Fraction& value)
{
    return Fraction(static_cast<float>(value.get_d()));
}

/// Shares in thousandths of a thousandth: rounded one by one, the difference to the first largest.
std::vector<qint64> closedShares(const Fractions& bases, const std::vector<bool>& member)
{
    Fraction total = 0;
    for (std::size_t i = 0; i < bases.size(); ++i)
        if (member[i])
            total += bases[i];
    std::vector<qint64> shares(bases.size(), 0);
    if (total == 0)
        return shares;
    qint64 missing = 1'000'000;
    for (std::size_t i = 0; i < bases.size(); ++i) {
        if (member[i])
            shares[i] = nearest(bases[i] / total * 1'000'000).get_si();
        missing -= shares[i];
    }
    const auto largest = std::ranges::max_element(shares);
    if (*largest > 0)
        *largest += missing;
    return shares;
}

std::vector<qint64> inThousandths(const std::vector<Millesimi>& shares)
{
    std::vector<qint64> values;
    values.reserve(shares.size());
    for (const Millesimi share : shares)
        values.push_back(share.tenThousandths() / 10);
    return values;
}

struct RandomBuilding
{
    std::mt19937 random;

    ModelloLavoro make()
    {
        ModelloLavoro modello =
            building(std::vector<UnitData>(static_cast<std::size_t>(within(1, 60))));
        for (UnitaImmobiliare& unita : modello.unita)
            fill(unita);
        modello.tabellaCodici = {{u"A"_s, u""_s, static_cast<double>(within(0, 80))}};
        return modello;
    }

    int within(int low, int high) { return std::uniform_int_distribution{low, high}(random); }

    float decimal(int low, int high, int places)
    {
        const QString text = QString::number(within(low, high) / std::pow(10, places), 'f', places);
        return static_cast<float>(zelto::text::leadingNumber(QStringView{text}));
    }

    void fill(UnitaImmobiliare& unita)
    {
        unita.CodScala = u"AB "_s.at(within(0, 2));
        unita.HPiano = decimal(0, 6, 1);
        for (QChar& flag : unita.FlagTab)
            flag = within(0, 2) == 0 ? u' ' : u'X';
        unita.vani.clear();
        for (int rooms = within(0, 9); rooms > 0; --rooms) {
            unita.vani.push_back({.CR = decimal(100, 6000, 2),
                                  .CD = decimal(20, 110, 2),
                                  .CO = decimal(95, 105, 2),
                                  .CP = decimal(90, 110, 2),
                                  .CL = decimal(90, 110, 2),
                                  .CFU = decimal(80, 110, 2),
                                  .PR = decimal(70, 110, 2)});
            calcolaVano(unita.vani.back());
        }
    }
};

Fraction exactSize(const UnitaImmobiliare& unita)
{
    Fraction size = 0;
    for (const Vano& vano : unita.vani) {
        const Fraction CF = single(Fraction(vano.CR) * Fraction(vano.CD));
        const Fraction CVT = single(CF * Fraction(vano.CO) * Fraction(vano.CP) * Fraction(vano.CL) *
                                    Fraction(vano.CFU));
        size += single(CVT * Fraction(vano.PR));
    }
    return size;
}

Fractions exactIndexes(const ModelloLavoro& modello, const Fractions& sizes,
                       const std::vector<bool>& member, IndicePiano indice)
{
    Fractions indexes;
    for (std::size_t u = 0; u < sizes.size(); ++u) {
        Fraction index = Fraction(modello.unita[u].HPiano) * sizes[u];
        if (indice == IndicePiano::Proporzionale) {
            Fraction floor = 0;
            for (std::size_t other = 0; other < sizes.size(); ++other)
                if (member[other] && modello.unita[other].HPiano == modello.unita[u].HPiano)
                    floor += sizes[other];
            index = floor == 0 ? Fraction(0) : Fraction(index / floor);
        }
        indexes.push_back(member[u] ? single(index) : Fraction(0));
    }
    return indexes;
}

void compareStaircase(const ModelloLavoro& modello, const Fractions& sizes, const QString& codice,
                      IndicePiano indice)
{
    std::vector<bool> member;
    for (const UnitaImmobiliare& unita : modello.unita)
        member.push_back(unita.CodScala == codice);
    const QuoteScala quote = calcolaScala(modello, calcolaConsistenze(modello), codice, indice);
    const auto ownership = closedShares(sizes, member);
    QCOMPARE(inThousandths(quote.MillProp), ownership);
    const auto floor = closedShares(exactIndexes(modello, sizes, member, indice), member);
    QCOMPARE(inThousandths(quote.MillPiano), floor);

    const double percent = codice == u"A" ? modello.tabellaCodici.front().percentuale : 0;
    const Fraction weight = percent == 0 ? Fraction(1, 2) : Fraction(Fraction(percent) / 100);
    Fractions combined;
    for (std::size_t u = 0; u < sizes.size(); ++u)
        combined.emplace_back(static_cast<long>(floor[u]) * weight +
                              static_cast<long>(ownership[u]) * (1 - weight));
    QCOMPARE(inThousandths(quote.MillScala), closedShares(combined, member));
}

} // namespace

class TestSharesExact : public QObject
{
    Q_OBJECT

private slots:
    void randomBuildings()
    {
        for (unsigned number = 0; number < 400; ++number) {
            const ModelloLavoro modello = RandomBuilding{std::mt19937(number)}.make();
            const Consistenze consistenze = calcolaConsistenze(modello);
            Fractions sizes;
            for (const UnitaImmobiliare& unita : modello.unita)
                sizes.push_back(exactSize(unita));
            const std::vector<bool> all(sizes.size(), true);
            QCOMPARE(inThousandths(calcolaMillGen(consistenze)), closedShares(sizes, all));

            for (int t = 1; t <= zelto::store::SpecialTables; ++t) {
                std::vector<bool> member;
                for (const UnitaImmobiliare& unita : modello.unita)
                    member.push_back(unita.isInTable(t));
                QCOMPARE(inThousandths(calcolaMillTab(modello, consistenze, t)),
                         closedShares(sizes, member));
            }
            for (const QString& codice : elencoScale(modello)) {
                compareStaircase(modello, sizes, codice, IndicePiano::PerConsistenza);
                compareStaircase(modello, sizes, codice, IndicePiano::Proporzionale);
                if (QTest::currentTestFailed())
                    return;
            }
        }
    }

    /// As surveyors write them, of a total of which every eighth share lies half way.
    void sizesInWholeHundredths()
    {
        std::mt19937 random;
        for (int round = 0; round < 400; ++round) {
            std::vector<double> bases;
            Fractions exact;
            Partecipanti all;
            for (int rest = 64'000, cents = 0; rest > 0; rest -= cents) {
                cents = std::min(rest, std::uniform_int_distribution{1, 3000}(random));
                bases.push_back(cents / 100.0);
                exact.emplace_back(Fraction(cents) / 100);
                all.push_back(all.size());
            }
            QCOMPARE(inThousandths(quoteChiuse(bases, all)),
                     closedShares(exact, std::vector<bool>(all.size(), true)));
        }
    }
};

ZELTO_TEST(TestSharesExact)
#include "tst_shares_exact.moc"

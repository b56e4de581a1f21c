// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/allocation.h"

#include "text/decimal_text.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <numeric>
#include <utility>

namespace zelto::calc {

namespace {

/// What fits the printed columns; a minus sign takes the place of one digit.
constexpr double MaxImportoCent = 99'999'999'999;
constexpr double MinImportoCent = -9'999'999'999;
constexpr double MaxQuotaCent = 999'999'999;
constexpr double MinQuotaCent = -99'999'999;

bool areWhole(std::span<const Millesimi> shares)
{
    return std::accumulate(shares.begin(), shares.end(), Millesimi()) == Mille;
}

/// The quotient rounded down and what remains, which is never negative.
std::pair<std::int64_t, std::int64_t> floorDivision(std::int64_t number, std::int64_t divisor)
{
    const std::int64_t remainder = (number % divisor + divisor) % divisor;
    return {(number - remainder) / divisor, remainder};
}

/// Parts of whole hundredths that add up to the amount. The shares may be of either sign; those
/// that give parts within the limits have products far below 2^63.
std::vector<double> quoteQuadrate(std::span<const Millesimi> shares, double importoCent)
{
    const double sign = importoCent < 0 ? -1 : 1;
    const std::int64_t importo = std::llround(std::abs(importoCent));
    const std::int64_t whole = Mille.tenThousandths();
    std::vector<double> quote;
    std::vector<std::pair<std::int64_t, std::size_t>> remainders; // with the unit's place
    std::int64_t missing = importo;
    for (const Millesimi share : shares) {
        const auto [part, remainder] = floorDivision(share.tenThousandths() * importo, whole);
        remainders.emplace_back(remainder, quote.size());
        quote.push_back(sign * static_cast<double>(part));
        missing -= part;
    }
    // As many as one hundredth each can make good: every remainder is below a hundredth.
    std::ranges::stable_sort(remainders, std::greater(),
                             &std::pair<std::int64_t, std::size_t>::first);
    for (std::size_t i = 0; i < static_cast<std::size_t>(missing); ++i)
        quote[remainders[i].second] += sign;
    return quote;
}

void requirePrintable(const ModelloLavoro& modello, std::span<const double> quote)
{
    for (std::size_t u = 0; u < quote.size(); ++u)
        if (quote[u] > MaxQuotaCent || quote[u] < MinQuotaCent)
            throw CalcError(u"La quota dell'unità %1 (%2) non sta nella sua colonna (al massimo "
                            u"9 999 999,99, se negativa 999 999,99): ripartire l'importo in più "
                            u"parti."_s.arg(QString::number(modello.unita[u].RifUI),
                                            modello.unita[u].Riferimento));
}

} // namespace

double importoCent(const QString& importo)
{
    // 0.29 × 100 is 28.999… in binary: its fifteen digits say 29.
    const double cent = text::readNumber(importo) * 100;
    return std::isfinite(cent) ? text::readNumber(text::decimalText(cent)) : cent;
}

double quotaCent(Millesimi share, double importoCent)
{
    // A share has three places: the product of whole numbers is exact below 2^53 and its quotient
    // is then a half exactly when the true one is.
    const double thousandths = static_cast<double>(share.tenThousandths()) / 10;
    return std::nearbyint(thousandths * importoCent / 1'000'000);
}

std::vector<double> calcolaQuote(const ModelloLavoro& modello, std::span<const Millesimi> shares,
                                 double importoCent, Arrotondamento arrotondamento)
{
    if (!(importoCent <= MaxImportoCent && importoCent >= MinImportoCent))
        throw CalcError(u"L'importo da ripartire ha troppe cifre: al massimo 999 999 999,99, "
                        u"se negativo 99 999 999,99."_s);
    // Before any arithmetic with whole numbers, which huge shares would overflow.
    std::vector<double> quote(shares.size());
    std::ranges::transform(shares, quote.begin(),
                           [=](Millesimi share) { return quotaCent(share, importoCent); });
    requirePrintable(modello, quote);
    if (arrotondamento == Arrotondamento::AQuadratura && areWhole(shares)) {
        quote = quoteQuadrate(shares, importoCent);
        requirePrintable(modello, quote);
    }
    return quote;
}

} // namespace zelto::calc

// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/share_rule.h"

#include "text/format_mask.h"

#include <algorithm>
#include <cmath>

namespace zelto::calc {

namespace {

constexpr double LargestShare = 1e9;
constexpr text::NumberMask Maschera{"##########0.000"};

} // namespace

Millesimi QuotaMillesimale(double parte, double totale)
{
    if (totale == 0)
        return {};
    const double share = std::clamp(parte / totale * 1000, -LargestShare, LargestShare);
    return Millesimi::fromTenThousandths(std::llround(Maschera.shown(share) * 1000) * 10);
}

void Somma::add(double term)
{
    const double sum = m_sum + term;
    m_carry += std::abs(m_sum) >= std::abs(term) ? (m_sum - sum) + term : (term - sum) + m_sum;
    m_sum = sum;
}

std::vector<Millesimi> quoteChiuse(std::span<const double> basi, const Partecipanti& partecipanti)
{
    Somma totale;
    for (const std::size_t u : partecipanti)
        totale.add(basi[u]);

    std::vector<Millesimi> quote(basi.size());
    Millesimi somma;
    Millesimi* maggiore = nullptr;
    for (const std::size_t u : partecipanti) {
        quote[u] = QuotaMillesimale(basi[u], totale.value());
        somma += quote[u];
        if (quote[u] > (maggiore != nullptr ? *maggiore : Millesimi{}))
            maggiore = &quote[u];
    }
    if (maggiore != nullptr)
        *maggiore += Mille - somma;
    return quote;
}

} // namespace zelto::calc

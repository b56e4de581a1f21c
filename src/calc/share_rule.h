// SPDX-License-Identifier: GPL-3.0-or-later
// How one share is rounded and a set of shares comes to a thousand.
#pragma once

#include "calc/millesimi.h"

#include <cstddef>
#include <span>
#include <vector>

namespace zelto::calc {

/// The share of a part in a total: parte / totale × 1000, rounded to three places on its decimal
/// text of fifteen digits, halves away from zero. 0 when the total is 0. Signed sizes can make a
/// share of any size: it ends at ±10^9, far beyond what reports print.
Millesimi QuotaMillesimale(double parte, double totale);

/// A running sum in double precision that carries what each addition rounds away, so that the order
/// of the terms does not change a share.
class Somma
{
public:
    void add(double term);
    [[nodiscard]] double value() const { return m_sum + m_carry; }

private:
    double m_sum = 0;
    double m_carry = 0;
};

/// The units of a set, by their index in the model, in unit order.
using Partecipanti = std::vector<std::size_t>;

/// A closed set of shares: one for every base, 0 for those that take no part. The residual of
/// rounding goes to the largest share, among equals to the first in order, so that the set comes to
/// exactly 1000; where no share is above 0 nothing is placed.
std::vector<Millesimi> quoteChiuse(std::span<const double> basi, const Partecipanti& partecipanti);

} // namespace zelto::calc

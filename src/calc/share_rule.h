// SPDX-License-Identifier: GPL-3.0-or-later
// How one share is rounded and a set of shares comes to a thousand.
#pragma once

#include "calc/millesimi.h"
#include "text/format_mask.h"

#include <cstddef>
#include <span>
#include <vector>

namespace zelto::calc {

/// Masks through which shares are rounded to three places.
inline constexpr text::NumberMask MascheraGenerale{"#####0.000"};
inline constexpr text::NumberMask MascheraQuota{"####0.000"};

/// The share of a part in a total: parte / totale × 1000, rounded to three places on its decimal
/// text of fifteen digits, halves away from zero. 0 when the total is 0.
Millesimi QuotaMillesimale(double parte, double totale,
                           const text::NumberMask& maschera = MascheraQuota);

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
std::vector<Millesimi> quoteChiuse(std::span<const double> basi, const Partecipanti& partecipanti,
                                   const text::NumberMask& maschera = MascheraQuota);

} // namespace zelto::calc

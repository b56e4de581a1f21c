// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <compare>
#include <cstdint>

namespace zelto::calc {

/// A share in thousandths, held as a whole number of ten-thousandths: sums are exact.
class Millesimi
{
public:
    constexpr Millesimi() = default;

    static constexpr Millesimi fromTenThousandths(std::int64_t value)
    {
        Millesimi result;
        result.m_value = value;
        return result;
    }

    [[nodiscard]] constexpr std::int64_t tenThousandths() const { return m_value; }
    [[nodiscard]] constexpr double toDouble() const
    {
        return static_cast<double>(m_value) / 10'000;
    }

    constexpr Millesimi& operator+=(Millesimi other)
    {
        m_value += other.m_value;
        return *this;
    }
    friend constexpr Millesimi operator+(Millesimi a, Millesimi b) { return a += b; }
    friend constexpr Millesimi operator-(Millesimi a, Millesimi b)
    {
        return fromTenThousandths(a.m_value - b.m_value);
    }
    friend constexpr auto operator<=>(Millesimi a, Millesimi b) = default;

private:
    std::int64_t m_value = 0;
};

/// What every set of shares adds up to.
inline constexpr Millesimi Mille = Millesimi::fromTenThousandths(10'000'000);

} // namespace zelto::calc

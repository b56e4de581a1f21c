// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/check_parts.h"
#include "calc/share_rule.h"
#include "text/decimal_text.h"

#include <algorithm>
#include <cmath>

namespace zelto::calc {

namespace {

double quota(double parte, double totale)
{
    return totale == 0 ? 0 : parte / totale * 1000;
}

} // namespace

Bilancia::Bilancia(std::span<const double> basi) : m_basi(basi)
{
    Somma totale;
    for (std::size_t u = 0; u < basi.size(); ++u) {
        totale.add(basi[u]);
        if (u == 0 || std::abs(basi[u]) <= std::abs(basi[m_maggiore])) {
            if (u > 0 && std::abs(basi[u]) > std::abs(m_seconda))
                m_seconda = basi[u];
            continue;
        }
        m_seconda = basi[m_maggiore];
        m_maggiore = u;
    }
    m_totale = totale.value();
}

double Bilancia::spostamento(std::size_t u, double variazione) const
{
    const double dopo = m_totale + variazione;
    const double altra = u == m_maggiore ? m_seconda : m_basi[m_maggiore];
    return std::max(std::abs(quota(m_basi[u] + variazione, dopo) - quota(m_basi[u], m_totale)),
                    std::abs(quota(altra, dopo) - quota(altra, m_totale)));
}

double spostamento(std::span<const double> basi, std::span<const double> variazioni)
{
    Somma prima;
    Somma dopo;
    for (std::size_t u = 0; u < basi.size(); ++u) {
        prima.add(basi[u]);
        dopo.add(basi[u] + variazioni[u]);
    }
    double massimo = 0;
    for (std::size_t u = 0; u < basi.size(); ++u)
        massimo = std::max(massimo, std::abs(quota(basi[u] + variazioni[u], dopo.value()) -
                                             quota(basi[u], prima.value())));
    return massimo;
}

std::optional<double> numeroInteso(const QString& testo)
{
    const QString conPunto = text::ToPointDecimal(testo);
    if (!text::isNumber(conPunto))
        return std::nullopt;
    return text::leadingNumber(conPunto);
}

} // namespace zelto::calc

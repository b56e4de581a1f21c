// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/allocation.h"

#include "text/decimal_text.h"

#include <cmath>

namespace zelto::calc {

namespace {

/// What fits the printed columns; a minus sign takes the place of one digit.
constexpr double MaxImportoCent = 99'999'999'999;
constexpr double MinImportoCent = -9'999'999'999;
constexpr double MaxQuotaCent = 999'999'999;
constexpr double MinQuotaCent = -99'999'999;

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
                                 double importoCent)
{
    if (importoCent > MaxImportoCent || importoCent < MinImportoCent)
        throw CalcError(
            QStringLiteral("L'importo da ripartire ha troppe cifre: al massimo 999 999 999,99, "
                           "se negativo 99 999 999,99."));
    std::vector<double> quote;
    quote.reserve(shares.size());
    for (std::size_t u = 0; u < shares.size(); ++u) {
        quote.push_back(quotaCent(shares[u], importoCent));
        if (quote.back() > MaxQuotaCent || quote.back() < MinQuotaCent)
            throw CalcError(
                QStringLiteral("La quota dell'unità %1 (%2) non sta nella sua colonna (al massimo "
                               "9 999 999,99, se negativa 999 999,99): ripartire l'importo in più "
                               "parti.")
                    .arg(QString::number(modello.unita[u].RifUI), modello.unita[u].Riferimento));
    }
    return quote;
}

} // namespace zelto::calc

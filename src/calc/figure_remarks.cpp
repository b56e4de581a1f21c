// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/figure_remarks.h"

#include "calc/staircase_shares.h"
#include "text/decimal_text.h"
#include "text/literals.h"

namespace zelto::calc {

namespace {

QString noNumber(const QString& testo, double valore)
{
    return u"«%1» non è un numero: vale %2 nel calcolo."_s.arg(testo, text::decimalText(valore));
}

QString zero(const QString& testo)
{
    return u"«%1» vale 0 nel calcolo."_s.arg(testo);
}

} // namespace

QString osservaCifra(const QString& testo)
{
    return testo.isEmpty() || text::isNumber(testo) ? QString()
                                                    : noNumber(testo, text::leadingNumber(testo));
}

QString osservaConsistenza(const QString& testo)
{
    const bool isZero = text::isNumber(testo) && text::leadingNumber(testo) == 0;
    return isZero ? zero(testo) : osservaCifra(testo);
}

QString osservaPercentuale(const QString& testo)
{
    if (testo.isEmpty() || text::isNumber(text::ToPointDecimal(testo)))
        return {};
    const double percentuale = text::readNumber(testo);
    return noNumber(testo, percentuale == 0 ? PercentualeUsuale : percentuale);
}

QString osservaCoefficiente(CoefficientList& lista, const QString& testo)
{
    const std::string campo = testo.toStdString();
    if (!campo.starts_with('['))
        return osservaConsistenza(testo);
    if (lista.rowOf(campo) == 0)
        return u"«%1» non è nell'elenco dei coefficienti: vale 0 nel calcolo."_s.arg(testo);
    return lista.resolve(campo) == 0 ? zero(testo) : QString();
}

} // namespace zelto::calc

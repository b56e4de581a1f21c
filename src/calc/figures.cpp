// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/figures.h"

namespace zelto::calc {

QString Intestatario::nome() const
{
    const QString unit =
        u"dell'unità %1 (%2)"_s.arg(QString::number(unita.RifUI), unita.Riferimento);
    return vano == 0 ? unit : u"del vano %1 "_s.arg(vano) + unit;
}

CalcError cifraTagliata(double figure, QStringView column, const Intestatario& di)
{
    return CalcError(u"La cifra «%1» %2 è %3 e non sta nella sua colonna di stampa: controllare "
                     u"consistenze, coefficienti e altezze."_s.arg(
                         column, di.nome(), QString::number(figure, 'g', 12)));
}

} // namespace zelto::calc

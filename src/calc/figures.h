// SPDX-License-Identifier: GPL-3.0-or-later
// Masks of the printed figures, and the figures in them.
#pragma once

#include "calc/calc_error.h"
#include "calc/millesimi.h"
#include "calc/modello_lavoro.h"
#include "text/format_mask.h"
#include "text/literals.h"

#include <QString>

namespace zelto::calc {

inline constexpr text::NumberMask MascheraNumero{"##"};
inline constexpr text::NumberMask MascheraSuperficie{"####0.00"};
inline constexpr text::NumberMask MascheraCoefficiente{"#0.000"};
inline constexpr text::NumberMask MascheraTotaleUnita{"#####0.00"};
inline constexpr text::NumberMask MascheraConsistenza{"####0.0000"};
inline constexpr text::NumberMask MascheraMillesimi{"####0.000"};

/// Whose figure is printed, for the message when it does not fit.
struct Intestatario
{
    const UnitaImmobiliare& unita;
    int vano = 0; ///< number of the room, 0 for the unit itself

    [[nodiscard]] QString nome() const
    {
        const QString unit =
            u"dell'unità %1 (%2)"_s.arg(QString::number(unita.RifUI), unita.Riferimento);
        return vano == 0 ? unit : u"del vano %1 "_s.arg(vano) + unit;
    }
};

/// Throws CalcError, which names unit, column and figure, when the mask would cut the figure.
template <typename Real>
void richiediIntera(const text::NumberMask& mask, Real figure, QStringView column,
                    const Intestatario& di)
{
    if (!mask.fits(figure))
        throw CalcError(u"La cifra «%1» %2 è %3 e non sta nella sua colonna di stampa: controllare "
                        u"consistenze, coefficienti e altezze."_s.arg(
                            column, di.nome(), QString::number(double{figure}, 'g', 12)));
}

/// The figure as it is printed. Throws like richiediIntera.
template <typename Real>
QString cifra(const text::NumberMask& mask, Real figure, QStringView column, const Intestatario& di)
{
    richiediIntera(mask, figure, column, di);
    return mask.format(figure);
}

inline QString cifra(Millesimi share, QStringView column, const Intestatario& di)
{
    return cifra(MascheraMillesimi, share.toDouble(), column, di);
}

} // namespace zelto::calc

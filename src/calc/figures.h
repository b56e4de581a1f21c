// SPDX-License-Identifier: GPL-3.0-or-later
// Masks of the printed figures, and the figures in them.
#pragma once

#include "calc/calc_error.h"
#include "calc/millesimi.h"
#include "calc/modello_lavoro.h"
#include "text/format_mask.h"

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

    [[nodiscard]] QString nome() const;
};

/// What is wrong with a figure that its mask would cut, naming unit, column and figure.
[[nodiscard]] CalcError cifraTagliata(double figure, QStringView column, const Intestatario& di);

/// Throws CalcError when the mask would cut the figure.
template <typename Real>
void richiediIntera(const text::NumberMask& mask, Real figure, QStringView column,
                    const Intestatario& di)
{
    if (!mask.fits(figure))
        throw cifraTagliata(double{figure}, column, di);
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

// SPDX-License-Identifier: GPL-3.0-or-later
// Masks of the printed figures.
#pragma once

#include "calc/millesimi.h"
#include "text/format_mask.h"

#include <QString>

namespace zelto::reports {

inline constexpr text::NumberMask MascheraNumero{"##"};
inline constexpr text::NumberMask MascheraSuperficie{"####0.00"};
inline constexpr text::NumberMask MascheraCoefficiente{"#0.000"};
inline constexpr text::NumberMask MascheraTotaleUnita{"#####0.00"};
inline constexpr text::NumberMask MascheraConsistenza{"####0.0000"};
inline constexpr text::NumberMask MascheraMillesimi{"####0.000"};

/// Stands in a column that does not apply to a unit.
inline const QString NonApplicabile = QStringLiteral(" ------     ");

/// What every complete set of shares adds up to, as total rows print it.
inline const QString TotaleMillesimi = QStringLiteral("1000.000");

inline QString cifra(calc::Millesimi share)
{
    return MascheraMillesimi.format(share.toDouble());
}

} // namespace zelto::reports

// SPDX-License-Identifier: GPL-3.0-or-later
// The lists of values that the attributes of a room are chosen from. A job keeps each as a table
// text with the cells Valore, Variabile and Descrizione in every row.
#pragma once

#include "text/literals.h"

#include <QStringList>

namespace zelto::coefficients {

/// Rows of a group that readers take notice of.
inline constexpr int MaxGroupRows = 200;

/// The field of the job that keeps the group, 0 to 6.
[[nodiscard]] inline QString groupField(int group)
{
    return u"Var%1"_s.arg(group);
}

/// Names of the groups: Ambiente, then the six coefficients.
[[nodiscard]] inline const QStringList& groupNames()
{
    static const QStringList names{u"Ambiente"_s,       u"Destinazione"_s, u"Orientamento"_s,
                                   u"Prospetto"_s,      u"Luminosità"_s,   u"Funzionalità"_s,
                                   u"Piano riduttore"_s};
    return names;
}

} // namespace zelto::coefficients

// SPDX-License-Identifier: GPL-3.0-or-later
// What a text that stands for a figure has to tell its user: that it counts for something else than
// it seems. Empty when it counts as written, and for an empty text.
#pragma once

#include "calc/coefficient_list.h"

#include <QString>

namespace zelto::calc {

/// A floor's height or the value of a coefficient's list, read up to the first character that is no
/// part of a number.
[[nodiscard]] QString osservaCifra(const QString& testo);

/// The size of a room: as a figure, and one of 0 leaves the room out.
[[nodiscard]] QString osservaConsistenza(const QString& testo);

/// A staircase's percentage, in which a comma is a point; 0 stands for 50.
[[nodiscard]] QString osservaPercentuale(const QString& testo);

/// A room's coefficient: a reference to an entry of its list, or a figure.
[[nodiscard]] QString osservaCoefficiente(CoefficientList& lista, const QString& testo);

} // namespace zelto::calc

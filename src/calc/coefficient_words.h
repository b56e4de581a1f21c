// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/written_job.h"

#include <array>
#include <vector>

namespace zelto::calc {

/// What the coefficients of a room are taken from, in the order of their lists: "[S] Sud". Empty
/// for a figure of the room's own; a reference that leads nowhere stands as it is written.
using ParoleVano = std::array<QString, store::Coefficients>;

/// The words of every room of the model, unit by unit, from the texts it was loaded from. A room
/// whose texts make another one by now has none.
[[nodiscard]] std::vector<std::vector<ParoleVano>> paroleVani(const ModelloLavoro& modello,
                                                              const LavoroScritto& scritto);

} // namespace zelto::calc

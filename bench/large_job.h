// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zelto::bench {

/// As many units and rooms as a job may have.
inline constexpr int Units = 300;
inline constexpr int RoomsOfUnit = 50;

/// Writes a job of that size: general data, coefficients, units and rooms of the example job, the
/// latter two over and over, in ten special tables and six staircases. Throws DatabaseError.
void writeLargeJob(const QString& exampleJob, const QString& path);

} // namespace zelto::bench

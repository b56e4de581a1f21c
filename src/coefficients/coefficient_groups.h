// SPDX-License-Identifier: GPL-3.0-or-later
// The lists of values that the attributes of a room are chosen from.
#pragma once

#include "store/job_limits.h"

#include <QString>

#include <array>

namespace zelto::store {
class Database;
} // namespace zelto::store

namespace zelto::coefficients {

/// One table text for each group, with the cells Valore, Variabile and Descrizione in every row.
using GroupTexts = std::array<QString, store::Groups>;

/// The groups of a job; one that is Null is empty. A job without a record of groups gets one of
/// blanks first. Throws DatabaseError.
[[nodiscard]] GroupTexts loadGroups(store::Database& lavoro);

/// Stores all groups at once, an empty one as Null, in place of those that were loaded. Throws
/// DatabaseError and leaves the job as it was then: RecordChanged when it holds other groups by
/// now.
void saveGroups(store::Database& lavoro, const GroupTexts& groups, const GroupTexts& loaded);

} // namespace zelto::coefficients

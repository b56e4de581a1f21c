// SPDX-License-Identifier: GPL-3.0-or-later
// The lists of values that the attributes of a room are chosen from.
#pragma once

#include <QString>
#include <QStringList>

#include <array>

namespace zelto::store {
class Database;
} // namespace zelto::store

namespace zelto::coefficients {

inline constexpr int NumGroups = 7;

/// Rows of a group that readers take notice of.
inline constexpr int MaxGroupRows = 200;

/// One table text for each group, with the cells Valore, Variabile and Descrizione in every row.
using GroupTexts = std::array<QString, NumGroups>;

/// Names of the groups: Ambiente, then the six coefficients.
[[nodiscard]] const QStringList& groupNames();

/// The groups of a job; one that is Null is empty. A job without a record of groups gets one of
/// blanks first. Throws DatabaseError.
[[nodiscard]] GroupTexts loadGroups(store::Database& lavoro);

/// Stores all groups at once, an empty one as Null, in place of those that were loaded. Throws
/// DatabaseError and leaves the job as it was then: RecordChanged when it holds other groups by
/// now.
void saveGroups(store::Database& lavoro, const GroupTexts& groups, const GroupTexts& loaded);

} // namespace zelto::coefficients

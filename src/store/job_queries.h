// SPDX-License-Identifier: GPL-3.0-or-later
// What is asked of the units and rooms of a job beyond the records with a value in a field.
#pragma once

#include "store/database.h"

#include <QStringList>

#include <array>

namespace zelto::store {

/// The levels of the units, each once whatever its letter case.
[[nodiscard]] QStringList levels(Database& job);

/// The unit whose number is nearest to the given one; 0 when there is none.
[[nodiscard]] int nearestUnit(Database& job, int number);

/// The number behind every one that a unit or a room has, in its fields or in its key: a room whose
/// unit another program deleted still keeps its key.
[[nodiscard]] int nextUnit(Database& job);

/// The position behind that of the unit's last room.
[[nodiscard]] int nextPosition(Database& job, int unit);

/// How many units have a smaller key.
[[nodiscard]] int unitsBefore(Database& job, const Value& key);

/// Finds rooms by the key of their unit, in the order of their keys. It finds none until it is
/// restarted with the keys of a unit.
[[nodiscard]] Query roomsByKey(Database& job);
[[nodiscard]] std::array<Value, 2> roomKeysOf(int unit);

/// The rooms that roomsByKey finds for no unit of the job.
[[nodiscard]] Query roomsWithoutUnit(Database& job);

} // namespace zelto::store

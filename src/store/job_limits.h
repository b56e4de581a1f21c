// SPDX-License-Identifier: GPL-3.0-or-later
// How large a job may be, whichever edition made it.
#pragma once

#include <QtGlobal>

namespace zelto::store {

/// Bytes of a job file.
inline constexpr qint64 LargestFile = qint64{256} << 20;

/// Characters of a memo; about 1 MB.
inline constexpr qint64 LongestMemo = qint64{1} << 20;

/// Units of a job, and rooms of a unit: what their number fields can tell apart.
inline constexpr int MostRecords = 32'767;

/// What the calculation takes: units of a job and rooms of a unit.
inline constexpr int MostUnits = 300;
inline constexpr int MostRooms = 50;

/// Special tables of a job.
inline constexpr int SpecialTables = 10;

/// Groups of values for the attributes of a room: its name, then its coefficients.
inline constexpr int Groups = 7;
inline constexpr int Coefficients = Groups - 1;

/// Rows of a group that readers take notice of.
inline constexpr int MostGroupRows = 200;

/// Pages of a printed document.
inline constexpr int MostPages = 9'999;

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zelto::store {

/// What came of a repair.
struct RepairResult
{
    /// Where the damaged file is kept; empty when the file was sound.
    QString damagedOriginal;

    // Of a damaged file: units and rooms that the repaired one has, and how many records and fields
    // are known to be lost.
    int units = 0;
    int rooms = 0;
    int leftOut = 0;
};

/// Writes a sound database anew, and in place of a damaged job one with all records that can still
/// be read. The file is replaced only by one that passed its check. A file with no readable unit
/// or room is left as it was: Damaged. Other errors are those of opening it. The file must not be
/// open in this program.
RepairResult repair(const QString& path);

} // namespace zelto::store

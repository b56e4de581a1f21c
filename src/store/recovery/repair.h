// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zelto::store {

/// What came of a repair.
struct RepairResult
{
    /// Where the file of before is kept; empty when it was only written anew.
    QString damagedOriginal;
    /// Its pages had to be searched for records. Otherwise nothing is lost.
    bool damaged = false;

    // Units and rooms that the repaired file has, and how many records and fields are known to be
    // lost.
    int units = 0;
    int rooms = 0;
    int leftOut = 0;

    // Pages that the file says it had, and how many of them it lacks.
    qint64 pages = 0;
    qint64 missingPages = 0;
};

/// Writes a sound database anew, and in place of a damaged job one with all records that can still
/// be read. The file is replaced only by one that passed its check. A file with no readable unit
/// or room is left as it was: Damaged. Other errors are those of opening it. The file must not be
/// open in this program.
RepairResult repair(const QString& path);

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/value.h"

#include <QByteArray>
#include <QStringView>

#include <map>
#include <optional>
#include <vector>

namespace zelto::store {

class Database;
struct FoundRecord;

/// The records of a job that can still be read in the bytes of its damaged file.
struct SalvagedJob
{
    /// By the table's name, in the order in which they are to be stored: of two with the same key
    /// the first counts.
    std::map<QStringView, std::vector<Record>> records;

    /// Records, or fields of records, that cannot be read.
    int broken = 0;
};

/// Reads every page, whatever the tables' own pages look like.
[[nodiscard]] SalvagedJob salvage(const QByteArray& bytes);

/// A record that was found as that table takes it, with key and numbers that agree; none when both
/// are lost.
[[nodiscard]] std::optional<Record> recordOfTable(QStringView table, const FoundRecord& found);

/// Gives an empty database the tables of a job and these records. What breaks a rule of the tables
/// is left out: the field, or the record when its key is there already. Returns how many were. What
/// every job has is added where it is missing: the marker, general data, coefficient groups, and
/// the units of rooms. Throws DatabaseError for any other failure.
int writeSalvaged(Database& database, const SalvagedJob& job);

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace zelto::store {

class Database;
struct SalvagedJob;

/// Gives an empty database the tables of a job and these records. What breaks a rule of the tables
/// is left out: the field, or the record when its key is there already. Returns how many were. What
/// every job has is added where it is missing: the marker, general data, coefficient groups, and
/// the units of rooms. Throws DatabaseError for any other failure.
int writeSalvaged(Database& database, const SalvagedJob& job);

} // namespace zelto::store

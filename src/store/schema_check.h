// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

namespace zelto::store {

class Database;

/// Refuses a database whose tables or contents are not those of a job, whoever made it: readers
/// address fields by position and rely on types and lengths. The coefficient groups may be missing;
/// ControllaVersione adds them. Throws DatabaseError: TableNotFound, Damaged when a table's fields
/// are not the job's, IndexNotFound, or what storing a value that does not fit throws.
void ControllaTabelle(Database& database);

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zelto::store {

class Database;

/// Refuses a database that lacks a table of a job, whose contents do not keep the rules of its
/// fields, whoever wrote them, or that is larger than a job may be: readers rely on it all. The
/// coefficient groups may be missing; ControllaVersione adds them. Throws DatabaseError:
/// TableNotFound, Damaged for too many records, or what storing a value that does not fit throws.
void ControllaTabelle(Database& database);

/// Throws Damaged for more units, or rooms of a unit, than their numbers can tell apart; the error
/// names the file of the path.
void ControllaLimiti(Database& database, const QString& path);

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zelto::store {

class Database;
class Messages;

/// What the user reads of a file of another format.
inline constexpr QStringView IncompatibleFormat =
    u"Formato non compatibile, eseguire la conversione dell'archivio";

/// Whether the marker names the current format. Throws DatabaseError when its record is missing or
/// empty.
[[nodiscard]] bool isOfThisFormat(Database& database);

/// Leaves the path as it is when the file is a job of the current format; otherwise says so and
/// empties it. The file is only read. Throws DatabaseError when it cannot be read as a database or
/// its marker record is missing or empty.
void VerificaFormato(QString& path, Messages& user);

/// Gives a job of an earlier edition, which lacks the table "Variabili" or its record, what a new
/// job has there. Leaves a current job as it is.
void ControllaVersione(Database& database);

/// Refuses a database that lacks a table of a job, whose contents do not keep the rules of its
/// fields, whoever wrote them, or that is larger than a job may be: readers rely on it all. The
/// coefficient groups may be missing; ControllaVersione adds them. Throws DatabaseError:
/// TableNotFound, Damaged for too many records, or what storing a value that does not fit throws.
void ControllaTabelle(Database& database);

/// Throws Damaged for more units, or rooms of a unit, than their numbers can tell apart; the error
/// names the file of the path.
void ControllaLimiti(Database& database, const QString& path);

} // namespace zelto::store

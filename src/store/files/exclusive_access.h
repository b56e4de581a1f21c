// SPDX-License-Identifier: GPL-3.0-or-later
// The engine's part in operations on whole files.
#pragma once

#include "store/connection.h"

#include <QString>

namespace zelto::store {

class NewFile;

/// Opens the file as Database::open does and keeps every other program from reading and writing it
/// until the connection is closed. InUse when one does not let go of it in time, ReadOnly when the
/// file is write-protected.
[[nodiscard]] ConnectionPtr openExclusively(const QString& path);

/// Writes the database anew, table by table, with the permissions of its file, and checks what was
/// written. Not within a transaction.
void writeCompacted(Connection& source, NewFile& target);

/// Reads every page and every index of the file; Damaged when one is not sound.
void checkWhole(Connection& database);

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
// What a database may hold beside records: our tables as we write them, and others that are plain.
#pragma once

#include <QString>

#include <SQLiteCpp/Database.h>

namespace zelto::store {

/// Refuses what could run when the file is read, or cost any time: views, triggers, virtual tables;
/// CHECK conditions, generated columns, indexes on expressions or on a part of the records; and
/// tables of ours in any text but those that we write, with indexes of their own. Other tables of
/// plain columns are nobody's business. Throws DatabaseError: NotADatabase, or Damaged for a table
/// of ours. SQLite::Exception as well.
void checkObjects(SQLite::Database& handle, const QString& path);

/// Removes all that checkObjects refuses but tables of ours, whatever their text. Throws
/// SQLite::Exception, too when something cannot be removed without running its code.
void removeForeignObjects(SQLite::Database& handle);

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/exclusive_access.h"

#include "store/engine_errors.h"
#include "store/files/new_file.h"

#include <QFile>

#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>

namespace zelto::store {

ConnectionPtr openExclusively(const QString& path)
{
    ConnectionPtr connection = openFile(path, OpenMode::ReadWrite);
    onFile(path, [&] {
        if (sqlite3_db_readonly(connection->handle.getHandle(), "main") != 0)
            throw SQLite::Exception("", SQLITE_READONLY);
        // In this mode the lock of the first change stays.
        connection->handle.exec("PRAGMA main.locking_mode=EXCLUSIVE; BEGIN EXCLUSIVE; COMMIT;");
    });
    return connection;
}

void writeCompacted(Connection& source, NewFile& target)
{
    try {
        SQLite::Statement vacuum(source.handle, "VACUUM INTO ?");
        vacuum.bind(1, QFile::encodeName(target.path()).toStdString());
        vacuum.exec();
    } catch (const SQLite::Exception& failure) {
        const int code = failure.getErrorCode() & 0xff;
        throw translated(failure, code == SQLITE_FULL || code == SQLITE_CANTOPEN ? target.target()
                                                                                 : source.path);
    }
    checkWhole(*openFile(target.path(), OpenMode::ReadOnly));
    target.takePermissions(source.path);
}

void checkWhole(Connection& database)
{
    const std::string result = onFile(database.path, [&] {
        SQLite::Statement check(database.handle, "PRAGMA integrity_check(1)");
        return check.executeStep() ? check.getColumn(0).getString() : std::string();
    });
    if (result != "ok")
        throw damagedFile(database.path, QString::fromStdString(result));
}

} // namespace zelto::store

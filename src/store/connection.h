// SPDX-License-Identifier: GPL-3.0-or-later
// Opening a file from a stranger: everything the engine could be talked into is switched off and
// the file's structure is checked before the first record is read.
#pragma once

#include "store/files/file_witness.h"
#include "store/files/private_copy.h"

#include <QString>

#include <SQLiteCpp/Database.h>
#include <memory>
#include <utility>

namespace zelto::store {

/// Marks our files among all files of the engine: the ASCII characters "ZLT9".
inline constexpr int ApplicationId = 0x5A4C5439;

/// How long an operation waits for another program to let go of the file.
inline constexpr int BusyTimeoutMilliseconds = 5000;

enum class OpenMode { ReadWrite, ReadOnly };

/// How many steps of the engine a statement may take before it is ended, and has taken.
struct StepCount
{
    qint64 most = 0;
    qint64 taken = 0;
};

/// The engine's handle of one file, shared by the database, its queries and its writers.
struct Connection
{
    Connection(QString name, SQLite::Database engine)
        : path(std::move(name)), handle(std::move(engine))
    {}

    QString path;
    std::unique_ptr<PrivateCopy> copy; ///< what is read in place of the file, if anything
    std::unique_ptr<StepCount> steps = std::make_unique<StepCount>();
    SQLite::Database handle;
    FileWitness witness;
};

using ConnectionPtr = std::shared_ptr<Connection>;

/// As the operations of Database with these names.
[[nodiscard]] ConnectionPtr createFile(const QString& path);
[[nodiscard]] ConnectionPtr openFile(const QString& path, OpenMode mode);
[[nodiscard]] ConnectionPtr copyToMemory(const QString& path);

/// A private copy of a file whose tables need not be ours, for a repair that makes them so. Without
/// what would run when it is read; Damaged when the rest is not sound.
[[nodiscard]] ConnectionPtr openForRebuilding(const QString& path);

} // namespace zelto::store

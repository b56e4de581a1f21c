// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/engine_file.h"
#include "store/files/passing_folder.h"

#include <QByteArray>
#include <QString>

#include <SQLiteCpp/Database.h>
#include <cstdint>
#include <memory>

namespace zelto::store {

/// How many steps of the engine a statement may take before it is ended, and has taken.
struct StepCount
{
    qint64 most = 0;
    qint64 taken = 0;
};

/// A file as it is at one moment; without a number when there is none any more.
struct FileState
{
    std::uint64_t device = 0;
    std::uint64_t file = 0;
    std::int64_t size = 0;
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;
    std::uint32_t counter = 0; ///< the engine's, one further with every change

    bool operator==(const FileState&) const = default;
};

/// The engine's handle of one file, shared by the database, its queries and its writers.
struct Connection
{
    /// Opens the file, or ":memory:", which errors name as shown, with everything switched off that
    /// a file from a stranger could talk the engine into. A file that another program holds is
    /// waited for as many milliseconds. Throws SQLite::Exception.
    Connection(QString shown, const QString& file, int flags,
               int patience = BusyTimeoutMilliseconds);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// The file's first bytes as the engine has them, after what a journal took back; none of a
    /// database in memory. Through the engine's own descriptor: closing another one would drop the
    /// locks that this process holds on the file.
    [[nodiscard]] QByteArray header();

    /// The file as it is now is the one that the engine knows. One in memory is not looked at.
    void remember();

    /// Within a transaction: throws RecordChanged when another file has taken the name, or this one
    /// was overwritten by a program that is no engine, so that no stale pages are written into it.
    /// The engine itself goes by the file's counter alone, and a copy of the job has the same one.
    void requireUnchanged();

    QString path;
    std::unique_ptr<PassingFolder> copy; ///< of what is read in place of the file, if anything
    StepCount steps;
    SQLite::Database handle;

private:
    [[nodiscard]] FileState state();

    bool m_inMemory;
    FileState m_known;
};

using ConnectionPtr = std::shared_ptr<Connection>;

} // namespace zelto::store

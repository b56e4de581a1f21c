// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <SQLiteCpp/Database.h>
#include <cstdint>

namespace zelto::store {

/// Knows an open file as the engine left it, so that one overwritten by a program that is no engine
/// gets no stale pages written into it. The engine itself sees changes by the file's counter alone,
/// and a copy of the same job has the same one.
class FileWitness
{
public:
    /// The file as it is now is the one that the engine knows. Files in memory have no witness.
    void remember(SQLite::Database& handle, const QString& path);

    /// Within a transaction: throws RecordChanged when another file has taken the name, or when
    /// this one was changed though its counter was not.
    void check(SQLite::Database& handle, const QString& path);

private:
    struct State
    {
        std::uint64_t device = 0;
        std::uint64_t file = 0;
        std::int64_t size = 0;
        std::int64_t seconds = 0;
        std::int64_t nanoseconds = 0;
        std::uint32_t counter = 0;
    };

    [[nodiscard]] static State stateOf(SQLite::Database& handle, const QString& path);

    State m_state;
};

} // namespace zelto::store

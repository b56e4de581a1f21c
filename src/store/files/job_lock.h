// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/files/own_file.h"

#include <QString>

#include <optional>

namespace zelto::store {

/// Tells the windows that have the same job open from each other. Each holds a shared lock on a
/// file in the user's runtime folder that is named after the job's device and inode; the job itself
/// is not opened, because closing it again would drop the engine's locks. Where there is no such
/// folder, everybody seems alone.
class JobLock
{
public:
    /// Holds nothing when there is no job of that path.
    explicit JobLock(const QString& job);

    /// Whether anybody holds a lock on the job of that path, this process included. Leaves nothing
    /// behind where nobody ever did.
    [[nodiscard]] static bool isHeld(const QString& job);

    /// Whether nobody else holds a lock on the same job at this moment.
    [[nodiscard]] bool isAlone() const;

private:
    std::optional<OwnFile> m_file;
};

} // namespace zelto::store

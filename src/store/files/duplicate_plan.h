// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <vector>

namespace zelto::store {

/// A file and the path of its copy.
struct FileCopy
{
    QString source;
    QString target;

    bool operator==(const FileCopy&) const = default;
};

/// What duplicating a job copies: every file of the job's folder whose name is the job's but for
/// the extension, unless it belongs to another job, the job last. The copies are named after the
/// target, which ends in ".ZLT", and keep their extensions as they are. Throws FileExists when two
/// of them would bear the same name.
[[nodiscard]] std::vector<FileCopy> duplicatePlan(const QString& job, const QString& target);

} // namespace zelto::store

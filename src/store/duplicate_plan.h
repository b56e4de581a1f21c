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
/// the extension, the job last. The copies are named after the target and keep an extension of
/// three letters; those whose names would fall together keep all that distinguishes them.
[[nodiscard]] std::vector<FileCopy> duplicatePlan(const QString& job, const QString& target);

} // namespace zelto::store

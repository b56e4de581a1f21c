// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/duplicate_plan.h"

#include "store/database_error.h"
#include "store/files/file_names.h"

#include <QDir>
#include <QStringList>

#include <algorithm>

namespace zelto::store {

namespace {

QString stemOf(const QString& jobName)
{
    return jobName.chopped(JobExtension.size());
}

/// How much of the name a job's stem accounts for, 0 when the file is not the job's. A stem in the
/// name's own letter case counts for more than the same in another.
qsizetype claim(const QString& stem, const QString& name)
{
    const QString beginning = stem + u'.';
    if (!name.startsWith(beginning, Qt::CaseInsensitive))
        return 0;
    return 2 * beginning.size() + (name.startsWith(beginning) ? 1 : 0);
}

bool belongsToAnother(const QString& name, const QString& stem, const QStringList& names)
{
    return std::ranges::any_of(names, [&](const QString& other) {
        return hasJobExtension(other) && claim(stemOf(other), name) > claim(stem, name);
    });
}

QStringList companions(const QString& folder, const QString& job)
{
    const QStringList all = QDir(folder + u'/').entryList(QDir::Files | QDir::Hidden, QDir::Name);
    const QString stem = nameOf(withoutExtension(job));
    QStringList names = all;
    names.removeIf([&](const QString& name) {
        return claim(stem, name) == 0 || name == job || isEngineFile(name) ||
               belongsToAnother(name, stem, all);
    });
    return names;
}

void requireDifferentTargets(const std::vector<FileCopy>& plan)
{
    for (auto one = plan.begin(); one != plan.end(); ++one)
        for (auto other = plan.begin(); other != one; ++other)
            if (one->target.compare(other->target, Qt::CaseInsensitive) == 0)
                throw DatabaseError(
                    ErrorNumber::FileExists,
                    u"I file «%1» e «%2» avrebbero la stessa copia «%3»: rinominarne uno."_s.arg(
                        other->source, one->source, one->target));
}

} // namespace

std::vector<FileCopy> duplicatePlan(const QString& job, const QString& target)
{
    const QString folder = folderOf(job);
    const QString name = nameOf(job);
    const qsizetype stemLength = nameOf(withoutExtension(job)).size();
    const QString targetStem = target.chopped(JobExtension.size());
    std::vector<FileCopy> plan;
    for (const QString& companion : companions(folder, name))
        plan.push_back({.source = folder + u'/' + companion,
                        .target = targetStem + companion.sliced(stemLength)});
    plan.push_back({.source = job, .target = target});
    requireDifferentTargets(plan);
    return plan;
}

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/duplicate_plan.h"

#include "store/file_names.h"

#include <QDir>
#include <QSet>
#include <QStringList>

#include <algorithm>

namespace zelto::store {

namespace {

constexpr qsizetype ExtensionLength = 4;

QStringList companions(const QString& folder, const QString& stem)
{
    QStringList names = QDir(folder + u'/').entryList(QDir::Files | QDir::Hidden, QDir::Name);
    names.removeIf([&](const QString& name) {
        return !name.startsWith(stem + u'.', Qt::CaseInsensitive) || isEngineFile(name);
    });
    return names;
}

QString copyName(const QString& name, const QString& targetStem)
{
    const QString extension = name.right(ExtensionLength);
    return targetStem + (extension.startsWith(u'.') ? extension.toUpper() : QString());
}

} // namespace

std::vector<FileCopy> duplicatePlan(const QString& job, const QString& target)
{
    const QString folder = folderOf(job);
    const QString stem = nameOf(withoutExtension(job));
    const QString targetStem = withoutExtension(target);
    QSet<QString> taken;
    std::vector<FileCopy> plan;
    for (const QString& name : companions(folder, stem)) {
        QString copy = copyName(name, targetStem);
        if (taken.contains(copy))
            copy = targetStem + name.sliced(stem.size()).toUpper();
        taken.insert(copy);
        plan.push_back({.source = folder + u'/' + name, .target = copy});
    }
    std::stable_partition(plan.begin(), plan.end(),
                          [&](const FileCopy& file) { return file.source != job; });
    return plan;
}

} // namespace zelto::store

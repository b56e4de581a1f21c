// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/file_names.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <fcntl.h>
#include <filesystem>
#include <unistd.h>

namespace zelto::store {

namespace {

QString byRule(const QString& chosen, NameRule rule, const QString& typed)
{
    if (rule == NameRule::AsTyped)
        return typed;
    if (rule == NameRule::UpToFirstDot)
        return chosen.section(u'.', 0, 0) + JobExtension;
    const QString path = withUpperCaseName(chosen);
    const bool hasExtension = path.right(JobExtension.size()).contains(u'.');
    return (hasExtension ? withoutExtension(path) : path) + JobExtension;
}

bool mayWrite(const QString& path)
{
    return ::faccessat(AT_FDCWD, QFile::encodeName(path).constData(), W_OK, AT_EACCESS) == 0;
}

} // namespace

QString folderOf(const QString& path)
{
    return path.left(std::max<qsizetype>(path.lastIndexOf(u'/'), 0));
}

QString nameOf(const QString& path)
{
    return path.sliced(path.lastIndexOf(u'/') + 1);
}

QString findFile(const QString& path)
{
    if (QFileInfo::exists(path))
        return path;
    const QString wanted = nameOf(path);
    const QDir folder(QFileInfo(path).absolutePath());
    const auto everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
    for (const QString& name : folder.entryList(everything, QDir::Name))
        if (name.compare(wanted, Qt::CaseInsensitive) == 0)
            return path.chopped(wanted.size()) + name;
    return {};
}

QString asOnDisk(const QString& path)
{
    const QString found = findFile(path);
    return found.isEmpty() ? path : found;
}

QString realPath(const QString& path)
{
    const QString real = QFileInfo(path).canonicalFilePath();
    return real.isEmpty() ? path : real;
}

QString withUpperCaseName(const QString& path)
{
    const QString name = nameOf(path);
    return path.chopped(name.size()) + name.toUpper();
}

QString withoutExtension(const QString& path)
{
    constexpr qsizetype Extension = 4;
    return path.chopped(std::clamp<qsizetype>(nameOf(path).size() - 1, 0, Extension));
}

TargetName targetName(const QString& chosen, NameRule rule)
{
    const QString stem = hasJobExtension(chosen) ? chosen.chopped(JobExtension.size()) : chosen;
    const QString typed = stem + JobExtension;
    return {.byRule = byRule(chosen, rule, typed), .typed = typed};
}

bool hasJobExtension(const QString& path)
{
    return path.endsWith(JobExtension, Qt::CaseInsensitive);
}

bool isWritable(const QString& path)
{
    return mayWrite(path) && mayWrite(QFileInfo(realPath(path)).absolutePath());
}

bool isSameFile(const QString& one, const QString& other)
{
    if (one.compare(other, Qt::CaseInsensitive) == 0)
        return true;
    std::error_code failed;
    return std::filesystem::equivalent(one.toStdU16String(), other.toStdU16String(), failed);
}

QStringList engineFilesOf(const QString& path)
{
    return {path + u"-journal"_s, path + u"-wal"_s, path + u"-shm"_s};
}

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
// Names of files on a system that heeds letter case, for a program that does not.
#pragma once

#include "text/literals.h"

#include <QString>
#include <QStringList>

namespace zelto::store {

inline const QString JobExtension = u".ZLT"_s;

/// The path without the file's name and the separator before it.
[[nodiscard]] QString folderOf(const QString& path);

/// What follows the last separator.
[[nodiscard]] QString nameOf(const QString& path);

/// The existing file that the path means: of exactly this name, or else the first whose name
/// differs in letter case only. Empty when there is none. The folder is taken as it is.
[[nodiscard]] QString findFile(const QString& path);

/// The existing file that the path means, or the path itself.
[[nodiscard]] QString asOnDisk(const QString& path);

/// Where the existing file really lies, links followed; the path itself when there is none.
[[nodiscard]] QString realPath(const QString& path);

/// The path with the file's name in upper case, as new files are named.
[[nodiscard]] QString withUpperCaseName(const QString& path);

/// The path without the extension of three letters. Of other names, too, the last four characters
/// are taken off, but never more than the name has beyond its first.
[[nodiscard]] QString withoutExtension(const QString& path);

/// How the name of a new job follows from what the user typed.
enum class NameRule {
    UpToFirstDot, ///< of a new job: cut before the first dot, even one in the name of a folder
    UpperCase,    ///< of a duplicate: in upper case, without an extension of three letters
    AsTyped       ///< of a restored or converted job
};

/// The path of a new job by a rule, and what the user would expect: the typed one with ".ZLT".
struct TargetName
{
    QString byRule;
    QString typed;
};

/// Both paths end in ".ZLT", whatever was typed.
[[nodiscard]] TargetName targetName(const QString& chosen, NameRule rule);

/// Whether the path is a job's by its extension, in any letter case.
[[nodiscard]] bool hasJobExtension(const QString& path);

/// Whether the file can be changed: itself, and the folder in which the engine needs to write
/// beside it.
[[nodiscard]] bool isWritable(const QString& path);

/// Whether both paths lead to the same file, by name without regard to letter case or by a link.
[[nodiscard]] bool isSameFile(const QString& one, const QString& other);

/// Companions that the engine keeps beside a file while it is written.
[[nodiscard]] QStringList engineFilesOf(const QString& path);

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
// Operations on whole files. Whenever they are broken off, every file is whole under its name:
// as it was or as it is to be. They throw DatabaseError and then leave everything as it was.
#pragma once

#include <QString>

#include <functional>
#include <vector>

namespace zelto::store {

class Database;
class NewFile;

enum class Existing { Refuse, Replace };

/// A new job with a new job's records; FileExists when there is a file of that name.
void createJobFile(const QString& path);

/// A new job with the model's coefficient groups, staircase codes, names of special tables and
/// report text. The model is only read, and may be of an earlier edition. FileExists as above, and
/// what a model throws that cannot be read as a job.
void createJobFromModel(const QString& path, const QString& model);

/// A consistent copy of a database that other programs may be using. FileExists when there is a
/// target already, and what opening the source throws.
void copyDatabase(const QString& source, const QString& target);

/// A copy of any file that is not an open database.
void copyFile(const QString& source, const QString& target, Existing existing = Existing::Refuse);

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

/// Moves a file to where the user can get it back from; false when it cannot.
using Trash = std::function<bool(const QString& path)>;

/// Deletes a file, and what the engine left beside it: into the trash if that takes it, which is
/// told by the result. FileNotFound when there is none, InUse when another program is writing it.
bool deleteFile(const QString& path, const Trash& trash);

/// Opens the file as Database::open does and keeps every other program from reading and writing it
/// until the database is closed. InUse when one does not let go of it in time, ReadOnly when the
/// file is write-protected.
[[nodiscard]] Database openExclusively(const QString& path);

/// Writes the database anew, table by table, with the permissions of its file, and checks what was
/// written. Not within a transaction.
void writeCompacted(const Database& source, NewFile& target);

/// Reads every page and every index of the file; Damaged when one is not sound.
void checkWhole(const Database& database);

/// Writes the database anew without the space that deleted records left. What it was stays beside
/// it as the backup, in place of a former one. No program can write the file meanwhile.
void compact(const QString& path, const QString& backup);

} // namespace zelto::store

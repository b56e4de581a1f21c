// SPDX-License-Identifier: GPL-3.0-or-later
// A job's file and what lies beside it, looked at as bytes before the engine sees either: a journal
// that waits beside a file makes the engine write, and one can even make it delete other files.
#pragma once

#include <QByteArray>
#include <QString>

namespace zelto::store {

class PassingFolder;

/// How many bytes checkHeader wants to see.
inline constexpr qint64 HeaderSize = 100;

/// Refuses what no program of ours leaves there. The path has no links; errors name the file as
/// shown. Throws DatabaseError: FileNotFound; CannotOpen for what is not a plain file; Damaged for
/// a file or journal that is too large; NotADatabase for a file of another kind or in WAL mode, one
/// with a WAL file beside it, and one whose journal names another file.
void checkFile(const QString& file, const QString& shown);

/// Throws NotADatabase unless the file's first bytes are those of a database in rollback mode.
void checkHeader(const QByteArray& header, const QString& shown);

/// Whether the file is a database, of whatever kind, of this edition or of the one for Windows: it
/// may be a job. Not one that cannot be read.
[[nodiscard]] bool isDatabaseFile(const QString& path);

/// Whether a journal lies beside the file.
[[nodiscard]] bool hasJournal(const QString& path);

/// Copies a file and the journal beside it into the folder while no program can write the file, and
/// returns the path of the copy. What the journal takes back is taken back there. Paths and errors
/// as with checkFile, and DiskFull or CannotOpen when there is no place.
[[nodiscard]] QString copyForReading(const QString& path, const QString& shown,
                                     const PassingFolder& folder);

} // namespace zelto::store

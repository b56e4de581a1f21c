// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <cstddef>
#include <memory>
#include <vector>

struct sqlite3_file;

namespace zelto::store {

/// How long an operation waits for another program to let go of the file.
inline constexpr int BusyTimeoutMilliseconds = 5000;

/// The bytes of a plain file, read through the engine's own layer. A descriptor of another kind
/// must never be opened on a job: closing it would drop the locks by which a connection of this
/// process holds the file. Every operation throws DatabaseError.
class EngineFile
{
public:
    /// FileNotFound, or CannotOpen for what is not a plain file or may not be read. A pipe or a
    /// device is not even opened. Errors name the file as shown.
    explicit EngineFile(const QString& path, const QString& shown);
    explicit EngineFile(const QString& path) : EngineFile(path, path) {}
    ~EngineFile();
    EngineFile(const EngineFile&) = delete;
    EngineFile& operator=(const EngineFile&) = delete;

    /// In bytes.
    [[nodiscard]] qint64 size() const;

    /// Fewer bytes where the file ends.
    [[nodiscard]] QByteArray read(qint64 offset, qint64 length) const;

    /// All bytes; Damaged when the file is larger than a job may be.
    [[nodiscard]] QByteArray readAll() const;

    /// Waits until no program is writing the file, and keeps all from it as long as this lives;
    /// InUse when that takes too long.
    void lockForReading();

    /// Writes the bytes to a new file.
    void copyTo(const QString& target) const;

private:
    [[nodiscard]] sqlite3_file* file() const;

    QString m_shown;
    std::shared_ptr<const char> m_name; ///< the engine's file refers to it
    std::vector<std::byte> m_memory;    ///< of the engine's file
};

/// Throws as the constructor of EngineFile does; nothing is opened. Links are not followed.
void requirePlainFile(const QString& path, const QString& shown);

/// Throws Damaged for a file of more bytes than a job may have.
void requireFileSize(qint64 size, const QString& path);

} // namespace zelto::store

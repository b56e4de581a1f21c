// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zelto::store {

/// A private folder ".zelto-XXXXXX" for files that are being written. It goes with the object, and
/// all of them go when a signal ends the program. A file in it that bears its name and is locked as
/// long as it is in use proves it ours: of a killed program it is removed when the next one is made
/// beside it, and nothing else is.
class PassingFolder
{
public:
    /// Makes one in the parent folder; isValid() tells whether that was possible.
    explicit PassingFolder(const QString& parent);
    ~PassingFolder();
    PassingFolder(const PassingFolder&) = delete;
    PassingFolder& operator=(const PassingFolder&) = delete;

    [[nodiscard]] bool isValid() const { return m_lock >= 0; }

    /// The system's error number when it is not.
    [[nodiscard]] int error() const { return m_error; }

    [[nodiscard]] const QString& path() const { return m_path; }
    [[nodiscard]] QString filePath(const QString& name) const { return m_path + u'/' + name; }

    /// Removes every one that the program has, for good: whoever wants to make or to remove another
    /// waits for the program's end.
    static void removeAll();

private:
    bool make(const QString& parent);

    QString m_path;
    int m_lock = -1;
    int m_error = 0;
};

/// The path without the passing folders in it: where the file is going to be.
[[nodiscard]] QString targetPath(const QString& path);

} // namespace zelto::store

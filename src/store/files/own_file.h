// SPDX-License-Identifier: GPL-3.0-or-later
// Files of the program where others may have put something else under the name.
#pragma once

#include <QByteArray>
#include <QString>

#include <utility>

namespace zelto::store {

/// An open plain file of the user's own. Neither follows a link nor waits for the other end of a
/// FIFO: anything else under the name is not opened.
class OwnFile
{
public:
    /// Flags of open(); a file that is created is for the user alone.
    OwnFile(const QByteArray& path, int flags);
    ~OwnFile();
    OwnFile(OwnFile&& other) noexcept : m_descriptor(other.release()), m_error(other.m_error) {}
    OwnFile& operator=(OwnFile&& other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        std::swap(m_error, other.m_error);
        return *this;
    }
    OwnFile(const OwnFile&) = delete;
    OwnFile& operator=(const OwnFile&) = delete;

    [[nodiscard]] bool isOpen() const { return m_descriptor >= 0; }
    /// The system's error number when it is not.
    [[nodiscard]] int error() const { return m_error; }

    [[nodiscard]] int descriptor() const { return m_descriptor; }

    /// Leaves closing to somebody else.
    [[nodiscard]] int release() { return std::exchange(m_descriptor, -1); }

private:
    int m_descriptor = -1;
    int m_error = 0;
};

/// A plain file of the user's, itself and not by a link.
[[nodiscard]] bool isOwnFile(const QString& path);

/// A folder of the user's that nobody else can write to, itself and not by a link.
[[nodiscard]] bool isPrivateFolder(const QString& path);

} // namespace zelto::store

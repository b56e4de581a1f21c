// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace zelto::store {
class Database;
} // namespace zelto::store

namespace zelto::store::jet {

/// What a conversion came to.
struct ConversionReport
{
    int units = 0;
    int rooms = 0;
    int skipped = 0;     ///< records that could not be read
    QStringList remarks; ///< Italian sentences on what is not as it was

    /// All of it, for the user.
    [[nodiscard]] QString text() const;
};

/// Makes a new job of one of the Windows edition. The original is only read; the new file takes its
/// name when it is whole, check has not thrown on it, and the name is still free. Throws
/// DatabaseError: what opening throws; Damaged when catalogue or definitions cannot be read;
/// BadValue with IncompatibleFormat for another version; TableNotFound; TextTooLong, DuplicateKey
/// and their like with table, record and field; FileExists.
ConversionReport convertJob(const QString& original, const QString& target,
                            const std::function<void(Database&)>& check);

/// Where the converted job is proposed to go: beside the original, " convertito" behind its name.
[[nodiscard]] QString convertedPath(const QString& original);

/// Whether a lock file beside it says that the Windows edition may have it open.
[[nodiscard]] bool mayBeInUse(const QString& original);

} // namespace zelto::store::jet

// SPDX-License-Identifier: GPL-3.0-or-later
// Files that take their place among others only when they are complete.
#pragma once

#include "store/files/database_error.h"

#include <QByteArray>
#include <QString>

#include <memory>
#include <vector>

namespace zelto::store {

class PassingFolder;

/// A file about to be written: it grows in a passing folder beside its target and takes the
/// target's name by one rename, after its content and before its name have reached the disk.
/// Without that, nothing of it remains. Every operation throws DatabaseError.
class NewFile
{
public:
    /// FileNotFound when the target's folder does not exist, CannotOpen when it cannot be written.
    explicit NewFile(QString target);

    /// As above; it shares the passing folder with another that goes to the same folder.
    NewFile(QString target, const NewFile& neighbour);

    /// Where the file is to be written, under its name; there is none at first.
    [[nodiscard]] QString path() const;
    [[nodiscard]] const QString& target() const { return m_target; }

    /// Writes a short file whole.
    void write(const QByteArray& bytes) const;

    /// Gives it the permissions of the file, and makes it writable for its owner.
    void takePermissions(const QString& model);

    /// Takes the name; FileExists when there is a file of that name, in any letter case.
    void publish();

    /// Takes the name from the file that bears it.
    void replace();

    /// Takes the name from the file that bears it, which takes the other name from whatever bore
    /// that. At every instant one of the two names leads to one of the two files.
    void replaceKeeping(const QString& backup);

    /// Has all of them take their names, or none.
    static void replaceAll(const std::vector<std::unique_ptr<NewFile>>& files);

private:
    void takeName();
    void giveNameBack() const;
    void exchangeKeeping(const QString& backup);
    void moveKeeping(const QString& backup);

    QString m_target;
    std::shared_ptr<PassingFolder> m_folder;
    QString m_replaced; ///< where the file is that bore the name; empty for none
};

/// A failed call of the operating system on the file, from its error number.
[[nodiscard]] DatabaseError systemError(int error, const QString& path);

/// Throws FileExists when there is a file of that name, in any letter case.
void requireFreeName(const QString& path);

/// Deletes the file, if it exists; throws DatabaseError when that fails.
void removeFile(const QString& path);

} // namespace zelto::store

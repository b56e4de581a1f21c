// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zelto::store {

/// The folder that holds the settings file, the master database and the text outputs: the one of
/// the program when it can be written (portable use, build tree), else one of the user's.
class ApplicationFolder
{
public:
    /// Chooses the folder and creates it if need be.
    ApplicationFolder(const QString& programFolder, const QString& userFolder);

    /// Where the user's data lies when the program's folder cannot be written.
    [[nodiscard]] static QString userFolder();

    [[nodiscard]] const QString& path() const { return m_path; }
    [[nodiscard]] QString masterPath() const;
    [[nodiscard]] QString settingsPath() const;
    [[nodiscard]] QString copiesFolder() const;

    /// Puts the delivered master database there, at the first start and when a newer one was
    /// installed. Throws DatabaseError: FileNotFound when there is neither a delivered one nor one
    /// from before, or what copying throws.
    void provideMaster() const;

private:
    QString m_programFolder;
    QString m_path;
};

} // namespace zelto::store

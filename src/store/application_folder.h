// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/literals.h"

#include <QString>
#include <QStringList>

namespace zelto::store {

/// The folder that holds the settings file, the master database and the text outputs: the one of
/// the program when it can be written (portable use, build tree), else one of the user's, else one
/// that goes when the user logs out.
class ApplicationFolder
{
public:
    /// Chooses the folder and creates it if need be.
    ApplicationFolder(const QString& programFolder, const QString& userFolder);

    /// Where the user's data lies when the program's folder cannot be written.
    [[nodiscard]] static QString userFolder();

    [[nodiscard]] const QString& path() const { return m_path; }
    [[nodiscard]] const QString& masterPath() const { return m_masterPath; }
    [[nodiscard]] QString settingsPath() const { return m_path + u"/Zelto.ini"_s; }
    [[nodiscard]] QString copiesFolder() const { return m_path + u"/copie"_s; }

    /// Puts the delivered master database there, at the first start, when a newer one was installed
    /// and in place of a damaged one, which stays as "Zelto.mdb.DAN". Where it cannot be put it is
    /// used where it lies. Throws DatabaseError FileNotFound when there is neither a delivered one
    /// nor one from before.
    void provideMaster();

    /// The example that is delivered with the program; empty when it is not there.
    [[nodiscard]] QString examplePath() const;

    /// What the user should know of all this: Italian, empty for nothing.
    [[nodiscard]] QString remarks() const { return m_remarks.join(u"\n\n"_s); }

private:
    void useRuntimeFolder();

    QString m_programFolder;
    QString m_path;
    QString m_masterPath;
    QStringList m_remarks;
};

} // namespace zelto::store

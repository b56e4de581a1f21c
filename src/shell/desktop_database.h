// SPDX-License-Identifier: GPL-3.0-or-later
// Which program opens what, by the freedesktop application database.
#pragma once

#include "shell/desktop_file.h"

#include <QString>
#include <QStringList>

#include <map>
#include <optional>
#include <vector>

namespace zelto::shell {

/// Where a desktop keeps its programs and associations, most important folder first.
struct DesktopFolders
{
    QStringList config;   ///< those of mimeapps.list
    QStringList data;     ///< those that hold "applications"
    QStringList desktops; ///< names of the running desktop, "KDE"

    /// As the XDG variables of the environment say.
    static DesktopFolders ofSession();
};

/// The programs installed at one moment and what the user prefers among them.
class DesktopDatabase
{
public:
    explicit DesktopDatabase(DesktopFolders folders);

    /// The default program for a MIME type, else the first one associated with it.
    [[nodiscard]] std::optional<DesktopEntry> programFor(const QString& mimeType) const;

    /// The calculator: the default handler of "x-scheme-handler/calculator", else one made for
    /// the running desktop, else the first by name.
    [[nodiscard]] std::optional<DesktopEntry> calculator() const;

private:
    void readFolder(const QString& applications);
    [[nodiscard]] std::optional<DesktopEntry> firstInstalled(const QStringList& ids) const;
    [[nodiscard]] std::optional<DesktopEntry> defaultFor(const QString& mimeType) const;

    DesktopFolders m_folders;
    std::map<QString, std::optional<DesktopEntry>> m_entries;
    std::vector<KeyFile> m_associations;
    std::vector<KeyFile> m_caches;
};

} // namespace zelto::shell

// SPDX-License-Identifier: GPL-3.0-or-later
// The files by which the desktop knows its programs (freedesktop Desktop Entry).
#pragma once

#include <QString>
#include <QStringList>

#include <memory>
#include <optional>

namespace zelto::shell {

/// A file of groups and keys: a desktop entry, a list of associations. Read once, never written.
class KeyFile
{
public:
    /// A file that is missing or cannot be read holds nothing.
    explicit KeyFile(const QString& path);
    ~KeyFile();
    KeyFile(KeyFile&& other) noexcept;
    KeyFile& operator=(KeyFile&& other) noexcept;
    KeyFile(const KeyFile&) = delete;
    KeyFile& operator=(const KeyFile&) = delete;

    /// The key's value with its escapes resolved; empty when it is missing.
    [[nodiscard]] QString value(const QString& group, const QString& key) const;
    /// A value of parts ended by semicolons, without empty ones.
    [[nodiscard]] QStringList list(const QString& group, const QString& key) const;
    [[nodiscard]] bool isTrue(const QString& group, const QString& key) const;

private:
    struct Contents;
    std::unique_ptr<Contents> m_contents;
};

/// One installed program.
struct DesktopEntry
{
    QString id; ///< the name under which associations refer to it, "org.kde.kcalc.desktop"
    QString name;
    QStringList categories;
    QString exec;
    bool shown = true; ///< offered to the user: neither hidden nor bound to another desktop
};

/// The program that the file describes; nothing when it is no program, needs a terminal or is not
/// installed. desktops are the names of the running desktop.
[[nodiscard]] std::optional<DesktopEntry> readDesktopEntry(const QString& path, const QString& id,
                                                           const QStringList& desktops);

/// The command that the entry's Exec line stands for, program first: quotes and field codes
/// resolved. A file that no field code asks for comes last; an empty file is left out. Empty for
/// a line with an unclosed quote.
[[nodiscard]] QStringList commandLine(const QString& exec, const QString& file);

} // namespace zelto::shell

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>

namespace zelto::store {
class Settings;
} // namespace zelto::store

namespace zelto::shell {

/// The last jobs opened, as the entries 13 (newest) to 16 of the File menu.
class RecentJobs
{
public:
    static constexpr int FirstEntry = 13;
    static constexpr int LastEntry = 16;

    /// Takes the entries from the section "Main", and writes them there from now on.
    void load(store::Settings& settings);

    /// Writes all entries, hidden ones as empty.
    void save() const;

    /// Puts the path at the head, and writes that. It is listed once, whatever its letter case was
    /// before.
    void AggiornaRecent(const QString& path);

    /// The path of entry 13 to 16, as it stands in the caption from the fourth character on.
    [[nodiscard]] const QString& path(int entry) const;

    /// "&1 " and the path. What "&" means to a menu holds for the first character only.
    [[nodiscard]] QString caption(int entry) const;

    /// One without a path is hidden.
    [[nodiscard]] bool isVisible(int entry) const { return !path(entry).trimmed().isEmpty(); }

    /// Whether the separator above the entries, entry 12, is shown.
    [[nodiscard]] bool separatorVisible() const;

private:
    [[nodiscard]] QString& at(int entry);
    [[nodiscard]] int find(const QString& path) const;

    std::array<QString, LastEntry - FirstEntry + 1> m_paths;
    store::Settings* m_settings = nullptr;
};

} // namespace zelto::shell

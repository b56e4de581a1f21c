// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>

namespace zelto::store {

class Settings;

/// The last jobs opened, as the entries 13 (newest) to 16 of the File menu.
class RecentJobs
{
public:
    static constexpr int FirstEntry = 13;
    static constexpr int LastEntry = 16;

    /// Takes the entries from the section "Main"; one without a path is hidden.
    void load(const Settings& settings);

    /// Writes all entries back, hidden ones as empty.
    void save(Settings& settings) const;

    /// Puts the path at the head. It is listed once, whatever its letter case was before.
    void AggiornaRecent(const QString& path);

    /// The path of entry 13 to 16, as it stands in the caption from the fourth character on.
    [[nodiscard]] const QString& path(int entry) const { return at(entry).path; }

    /// "&1 " and the path. What "&" means to a menu holds for the first character only.
    [[nodiscard]] QString caption(int entry) const;

    [[nodiscard]] bool isVisible(int entry) const { return at(entry).visible; }

    /// Whether the separator above the entries, entry 12, is shown.
    [[nodiscard]] bool separatorVisible() const { return m_separatorVisible; }

private:
    struct Entry
    {
        QString path;
        bool visible = false;
    };

    [[nodiscard]] const Entry& at(int entry) const;
    [[nodiscard]] Entry& at(int entry);
    [[nodiscard]] int find(const QString& path) const;

    std::array<Entry, LastEntry - FirstEntry + 1> m_entries;
    bool m_separatorVisible = false;
};

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

#include <array>

namespace zelto::store {
class Settings;
} // namespace zelto::store

namespace zelto::shell {

/// The last jobs opened.
class RecentJobs
{
public:
    /// Newest first; a place without a job is empty.
    using Paths = std::array<QString, 4>;

    [[nodiscard]] const Paths& paths() const { return m_paths; }

    /// Takes the paths from the section "Main", and writes them there from now on.
    void load(store::Settings& settings);

    /// Writes all paths, empty ones, too.
    void save() const;

    /// Puts the path at the head, and writes that. It is listed once, whatever its letter case was
    /// before.
    void AggiornaRecent(const QString& path);

private:
    Paths m_paths;
    store::Settings* m_settings = nullptr;
};

} // namespace zelto::shell

// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/recent_jobs.h"

#include "store/settings.h"
#include "text/literals.h"

#include <algorithm>

namespace zelto::shell {

namespace {

constexpr QStringView Sezione = u"Main";

QString keyOf(int entry)
{
    return u"File%1"_s.arg(entry - RecentJobs::FirstEntry + 1);
}

} // namespace

void RecentJobs::load(store::Settings& settings)
{
    m_settings = &settings;
    for (int entry = FirstEntry; entry <= LastEntry; ++entry)
        at(entry) = settings.LeggiIni(Sezione.toString(), keyOf(entry));
}

void RecentJobs::save() const
{
    if (m_settings == nullptr)
        return;
    store::Settings::KeyValues values;
    for (int entry = FirstEntry; entry <= LastEntry; ++entry)
        values.emplace_back(keyOf(entry), path(entry));
    m_settings->ScriviIni(Sezione.toString(), values);
}

void RecentJobs::AggiornaRecent(const QString& path)
{
    for (int entry = std::min(find(path), LastEntry); entry > FirstEntry; --entry)
        at(entry) = at(entry - 1);
    at(FirstEntry) = path;
    save();
}

const QString& RecentJobs::path(int entry) const
{
    return m_paths.at(static_cast<std::size_t>(entry - FirstEntry));
}

QString& RecentJobs::at(int entry)
{
    return m_paths.at(static_cast<std::size_t>(entry - FirstEntry));
}

QString RecentJobs::caption(int entry) const
{
    return u"&%1 "_s.arg(entry - FirstEntry + 1) + path(entry);
}

bool RecentJobs::separatorVisible() const
{
    return std::ranges::any_of(m_paths, [](const QString& path) { return !path.isEmpty(); });
}

/// Behind the last entry when the path is not listed.
int RecentJobs::find(const QString& path) const
{
    const auto* const place = std::ranges::find_if(m_paths, [&](const QString& listed) {
        return listed.compare(path, Qt::CaseInsensitive) == 0;
    });
    return FirstEntry + static_cast<int>(place - m_paths.begin());
}

} // namespace zelto::shell

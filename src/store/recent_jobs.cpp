// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/recent_jobs.h"

#include "store/settings.h"

#include <algorithm>

namespace zelto::store {

using namespace Qt::StringLiterals;

namespace {

constexpr QStringView Sezione = u"Main";

QString keyOf(int entry)
{
    return u"File%1"_s.arg(entry - RecentJobs::FirstEntry + 1);
}

} // namespace

void RecentJobs::load(const Settings& settings)
{
    for (int entry = FirstEntry; entry <= LastEntry; ++entry) {
        const QString path = settings.LeggiIni(Sezione.toString(), keyOf(entry));
        at(entry) = {.path = path, .visible = !path.isEmpty()};
    }
    m_separatorVisible = std::ranges::any_of(m_entries, &Entry::visible);
}

void RecentJobs::save(Settings& settings) const
{
    Settings::KeyValues values;
    for (int entry = FirstEntry; entry <= LastEntry; ++entry)
        values.emplace_back(keyOf(entry), isVisible(entry) ? path(entry) : QString());
    settings.ScriviIni(Sezione.toString(), values);
}

void RecentJobs::AggiornaRecent(const QString& path)
{
    const int found = find(path);
    const bool listed = found <= LastEntry;
    for (int entry = std::min(found, LastEntry); entry > FirstEntry; --entry) {
        at(entry).path = at(entry - 1).path;
        if (!listed)
            at(entry).visible = !at(entry).path.trimmed().isEmpty();
    }
    at(FirstEntry) = {.path = path, .visible = true};
    m_separatorVisible = true;
}

QString RecentJobs::caption(int entry) const
{
    return u"&%1 "_s.arg(entry - FirstEntry + 1) + path(entry);
}

const RecentJobs::Entry& RecentJobs::at(int entry) const
{
    return m_entries.at(static_cast<std::size_t>(entry - FirstEntry));
}

RecentJobs::Entry& RecentJobs::at(int entry)
{
    return m_entries.at(static_cast<std::size_t>(entry - FirstEntry));
}

/// Behind the last entry when the path is not listed.
int RecentJobs::find(const QString& path) const
{
    const auto* const place = std::ranges::find_if(m_entries, [&](const Entry& entry) {
        return entry.path.compare(path, Qt::CaseInsensitive) == 0;
    });
    return FirstEntry + static_cast<int>(place - m_entries.begin());
}

} // namespace zelto::store

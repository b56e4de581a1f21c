// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/recent_jobs.h"

#include "store/settings.h"
#include "text/literals.h"

#include <algorithm>

namespace zelto::shell {

namespace {

const QString Sezione = u"Main"_s;

QString keyOf(std::size_t place)
{
    return u"File%1"_s.arg(place + 1);
}

} // namespace

void RecentJobs::load(store::Settings& settings)
{
    m_settings = &settings;
    for (std::size_t place = 0; place < m_paths.size(); ++place)
        m_paths.at(place) = settings.LeggiIni(Sezione, keyOf(place));
}

void RecentJobs::save() const
{
    if (m_settings == nullptr)
        return;
    store::Settings::KeyValues values;
    for (const QString& path : m_paths)
        values.emplace_back(keyOf(values.size()), path);
    m_settings->ScriviIni(Sezione, values);
}

void RecentJobs::AggiornaRecent(const QString& path)
{
    auto* place = std::ranges::find_if(m_paths, [&](const QString& listed) {
        return listed.compare(path, Qt::CaseInsensitive) == 0;
    });
    if (place == m_paths.end())
        --place; // the oldest one goes
    std::rotate(m_paths.begin(), place, place + 1);
    m_paths.front() = path;
    save();
}

} // namespace zelto::shell

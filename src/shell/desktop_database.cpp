// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/desktop_database.h"

#include "text/literals.h"

#include <QDir>
#include <QDirIterator>
#include <QStandardPaths>

#include <algorithm>
#include <tuple>
#include <utility>

namespace zelto::shell {

DesktopFolders DesktopFolders::ofSession()
{
    return {.config = QStandardPaths::standardLocations(QStandardPaths::GenericConfigLocation),
            .data = QStandardPaths::standardLocations(QStandardPaths::GenericDataLocation),
            .desktops =
                qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts)};
}

DesktopDatabase::DesktopDatabase(DesktopFolders folders) : m_folders(std::move(folders))
{
    QStringList lists = m_folders.config;
    for (const QString& folder : std::as_const(m_folders.data)) {
        const QString applications = folder + u"/applications"_s;
        readFolder(applications);
        lists << applications;
        m_caches.emplace_back(applications + u"/mimeinfo.cache"_s);
    }
    for (const QString& folder : std::as_const(lists)) {
        for (const QString& desktop : std::as_const(m_folders.desktops))
            m_associations.emplace_back(folder + u'/' + desktop.toLower() + u"-mimeapps.list"_s);
        m_associations.emplace_back(folder + u"/mimeapps.list"_s);
    }
}

void DesktopDatabase::readFolder(const QString& applications)
{
    QDirIterator files(applications, {u"*.desktop"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        const QString id = QDir(applications).relativeFilePath(path).replace(u'/', u'-');
        // The entry of a more important folder counts even where it hides the program.
        if (!m_entries.contains(id))
            m_entries.emplace(id, readDesktopEntry(path, id, m_folders.desktops));
    }
}

std::optional<DesktopEntry> DesktopDatabase::firstInstalled(const QStringList& ids) const
{
    for (const QString& id : ids) {
        const auto entry = m_entries.find(id);
        if (entry != m_entries.end() && entry->second)
            return entry->second;
    }
    return std::nullopt;
}

std::optional<DesktopEntry> DesktopDatabase::defaultFor(const QString& mimeType) const
{
    for (const KeyFile& list : m_associations)
        if (auto entry = firstInstalled(list.list(u"Default Applications"_s, mimeType)))
            return entry;
    return std::nullopt;
}

std::optional<DesktopEntry> DesktopDatabase::programFor(const QString& mimeType) const
{
    if (auto entry = defaultFor(mimeType))
        return entry;
    QStringList removed;
    QStringList added;
    for (const KeyFile& list : m_associations) {
        added << list.list(u"Added Associations"_s, mimeType);
        removed << list.list(u"Removed Associations"_s, mimeType);
    }
    for (const KeyFile& cache : m_caches)
        added << cache.list(u"MIME Cache"_s, mimeType);
    added.removeIf([&](const QString& id) { return removed.contains(id); });
    return firstInstalled(added);
}

std::optional<DesktopEntry> DesktopDatabase::calculator() const
{
    if (auto preferred = defaultFor(u"x-scheme-handler/calculator"_s))
        return preferred;
    const auto rank = [this](const DesktopEntry& entry) {
        const bool native = std::any_of(
            entry.categories.begin(), entry.categories.end(),
            [this](const QString& category) { return m_folders.desktops.contains(category); });
        return std::tuple(!native, entry.name.toLower(), entry.id);
    };
    std::optional<DesktopEntry> best;
    for (const auto& [id, entry] : m_entries)
        if (entry && entry->shown && entry->categories.contains(u"Calculator"_s) &&
            (!best || rank(*entry) < rank(*best)))
            best = entry;
    return best;
}

} // namespace zelto::shell

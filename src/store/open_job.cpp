// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/open_job.h"

#include "store/files/file_names.h"
#include "store/main_window_services.h"
#include "store/recent_jobs.h"
#include "store/schema_check.h"

#include <utility>

namespace zelto::store {

namespace {

Database openJobDatabase(const QString& path)
{
    Database database = Database::open(path);
    ControllaTabelle(database);
    return database;
}

} // namespace

bool OpenJob::isAt(const QString& path) const
{
    return !m_path.isEmpty() && isSameFile(m_path, path);
}

bool OpenJob::isOpenElsewhere(const QString& path) const
{
    return m_lock && isAt(path) ? !m_lock->isAlone() : !JobLock(path).isAlone();
}

void OpenJob::open(const QString& path)
{
    m_database = openJobDatabase(path);
    m_lock.emplace(path);
    m_path = path;
    m_folder = folderOf(path);
    m_window.showJob(path);
    m_recent.AggiornaRecent(path);
    m_window.showRecentJobs();
}

void OpenJob::close()
{
    if (m_path.isEmpty())
        return;
    suspend();
    m_path.clear();
    m_window.showJob({});
}

void OpenJob::suspend()
{
    m_database.reset();
    m_lock.reset();
}

void OpenJob::resume()
{
    if (m_path.isEmpty())
        return;
    try {
        m_database = openJobDatabase(m_path);
        m_lock.emplace(m_path); // the file may be another one by now
    } catch (...) {
        close();
        throw;
    }
}

} // namespace zelto::store

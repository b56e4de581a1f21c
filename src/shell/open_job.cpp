// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/open_job.h"

#include "shell/recent_jobs.h"
#include "store/files/file_names.h"
#include "store/format_check.h"
#include "widgets/main_window_services.h"

namespace zelto::shell {

namespace {

store::Database openJobDatabase(const QString& path)
{
    store::Database database = store::Database::open(path);
    store::ControllaTabelle(database);
    return database;
}

} // namespace

bool OpenJob::isAt(const QString& path) const
{
    return !m_path.isEmpty() && store::isSameFile(m_path, path);
}

bool OpenJob::isOpenElsewhere(const QString& path) const
{
    return m_lock && isAt(path) ? !m_lock->isAlone() : store::JobLock::isHeld(path);
}

void OpenJob::open(const QString& path)
{
    m_database = openJobDatabase(path);
    m_lock.emplace(path);
    m_path = path;
    m_folder = store::folderOf(path);
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

} // namespace zelto::shell

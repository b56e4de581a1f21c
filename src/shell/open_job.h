// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/database.h"
#include "store/files/job_lock.h"

#include <QString>

#include <optional>

namespace zelto::widgets {
class MainWindowServices;
} // namespace zelto::widgets

namespace zelto::shell {

class RecentJobs;

/// The open-job state: at most one job is open, and title, status bar and recent entries follow it.
class OpenJob
{
public:
    OpenJob(widgets::MainWindowServices& window, RecentJobs& recent)
        : m_window(window), m_recent(recent)
    {}

    /// Whether JobDatabase() may be used.
    [[nodiscard]] bool isOpen() const { return m_database.has_value(); }

    [[nodiscard]] store::Database& JobDatabase() { return m_database.value(); }

    /// Empty when no job is open.
    [[nodiscard]] const QString& JobPath() const { return m_path; }

    /// Of the last job opened; it outlasts the job.
    [[nodiscard]] const QString& JobFolder() const { return m_folder; }

    /// Whether the path leads to the open job's file.
    [[nodiscard]] bool isAt(const QString& path) const;

    /// Whether another window has the job of that path open.
    [[nodiscard]] bool isOpenElsewhere(const QString& path) const;

    /// Opens the job in place of the one that is open. Throws DatabaseError when the file is not
    /// a job's, and leaves everything as it was.
    void open(const QString& path);

    void close();

    /// Lets go of the file, but the job counts as open: resume() goes on with it.
    void suspend();

    /// No job is open any more when that fails.
    void resume();

private:
    widgets::MainWindowServices& m_window;
    RecentJobs& m_recent;
    std::optional<store::Database> m_database;
    std::optional<store::JobLock> m_lock;
    QString m_path;
    QString m_folder;
};

} // namespace zelto::shell

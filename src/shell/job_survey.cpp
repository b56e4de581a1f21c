// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/job_survey.h"

#include "store/files/file_names.h"

#include <QElapsedTimer>
#include <QFileInfo>

#include <utility>

namespace zelto::shell {

JobSurvey::JobSurvey(Look look, QObject* parent) : QObject(parent), m_look(std::move(look))
{
    connect(&m_timer, &QTimer::timeout, this, &JobSurvey::slice);
}

void JobSurvey::start(const QStringList& listed, const QString& folder)
{
    stop();
    m_listed = listed;
    if (!folder.isEmpty())
        m_folder.emplace(folder, QDir::Files);
    m_timer.start(0);
}

void JobSurvey::stop()
{
    m_timer.stop();
    m_listed.clear();
    m_folder.reset();
    m_seen.clear();
}

void JobSurvey::slice()
{
    constexpr qint64 Milliseconds = 4; // of the 16 of a frame
    QElapsedTimer clock;
    clock.start();
    QList<JobSummary> jobs;
    bool goesOn = true;
    while (goesOn && clock.elapsed() < Milliseconds)
        goesOn = step(jobs);
    if (!goesOn)
        stop();
    if (!jobs.isEmpty())
        emit found(jobs);
    if (!goesOn)
        emit finished();
}

/// One entry; false behind the last.
bool JobSurvey::step(QList<JobSummary>& jobs)
{
    QString path;
    if (!m_listed.isEmpty())
        path = m_listed.takeFirst();
    else if (m_folder && m_folder->hasNext())
        path = m_folder->next();
    else
        return false;
    // What is no file by its link is none: neither a folder nor a pipe is looked at.
    if (!store::hasJobExtension(path) || m_seen.contains(path) || !QFileInfo(path).isFile())
        return true;
    m_seen.insert(path);
    jobs << m_look(path);
    return true;
}

} // namespace zelto::shell

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/job_summary.h"

#include <QDirIterator>
#include <QObject>
#include <QSet>
#include <QStringList>
#include <QTimer>

#include <functional>
#include <optional>

namespace zelto::shell {

/// Looks at the jobs of a folder and at some others, a few files whenever the program has nothing
/// else to do. No slice takes much longer than one file does.
class JobSurvey : public QObject
{
    Q_OBJECT

public:
    using Look = std::function<JobSummary(const QString& path)>;

    explicit JobSurvey(Look look, QObject* parent = nullptr);

    /// Begins anew: the listed files that exist, in their order, then the jobs of the folder as
    /// they lie. An empty folder is none.
    void start(const QStringList& listed, const QString& folder);

    /// Ends it; nothing is found any more.
    void stop();

    [[nodiscard]] bool isRunning() const { return m_timer.isActive(); }

signals:
    /// Each file once.
    void found(const QList<JobSummary>& jobs);
    /// There are no more.
    void finished();

private:
    void slice();
    [[nodiscard]] bool step(QList<JobSummary>& jobs);

    Look m_look;
    QTimer m_timer;
    QStringList m_listed;
    std::optional<QDirIterator> m_folder;
    QSet<QString> m_seen;
};

} // namespace zelto::shell

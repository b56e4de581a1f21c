// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/job_list.h"
#include "shell/job_survey.h"

#include <QWidget>

class QAction;
class QBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeView;

namespace zelto::shell {

/// What the window shows while it has no document window: the first commands, and the jobs at hand
/// with what can be done with each.
class StartPage : public QWidget
{
    Q_OBJECT

public:
    explicit StartPage(JobSurvey::Look look, QWidget* parent = nullptr);

    /// Adds a large button that triggers the action.
    void addCommand(QAction& action);

    /// Looks at the jobs anew, as JobSurvey::start does; nothing while the page is not shown.
    void refresh(const QStringList& listed, const QString& folder);

    /// No file is looked at any more until the next refresh.
    void pause();

    [[nodiscard]] bool isReading() const { return m_survey.isRunning(); }

signals:
    void shown();
    void openRequested(const QString& path);
    void repairRequested(const QString& path);
    void restoreRequested(const QString& path);

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    using Request = void (StartPage::*)(const QString& path);
    void buildList();
    [[nodiscard]] QBoxLayout* searchRow();
    [[nodiscard]] QBoxLayout* actionRow();
    [[nodiscard]] const JobSummary* currentJob() const;
    void ask(Request request);
    void takeList();
    void showCurrent();
    void showCount();

    JobSurvey m_survey;
    JobList* m_jobs;
    FoundJobs* m_found;
    QBoxLayout* m_commands;
    QLineEdit* m_search;
    QTreeView* m_list;
    QLabel* m_count;
    QLabel* m_fault;
    QPushButton* m_open;
    QPushButton* m_repair;
    QPushButton* m_restore;
};

} // namespace zelto::shell

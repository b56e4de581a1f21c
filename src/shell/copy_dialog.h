// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/job_copies.h"

#include <QDialog>

#include <optional>
#include <vector>

class QComboBox;
class QPushButton;
class QTreeWidget;
class QVBoxLayout;

namespace zelto::shell {

/// The copies of jobs, job by job, one of which is to be restored.
class CopyDialog : public QDialog
{
    Q_OBJECT

public:
    /// Shows the copies of the job first, or else of the first that has any. The copies outlive it.
    CopyDialog(const store::JobCopies& copies, const QString& job, QWidget* parent);

    /// The current copy; nothing when it cannot be read.
    [[nodiscard]] std::optional<store::JobCopy> chosen() const;

private:
    void addJobs(QVBoxLayout& layout, const QString& job);
    void addTable(QVBoxLayout& layout);
    void addButtons(QVBoxLayout& layout);
    void showCopies();

    const store::JobCopies& m_copies;
    std::vector<store::JobCopy> m_shown;
    QComboBox* m_jobs;
    QTreeWidget* m_table;
    QPushButton* m_restore;
};

} // namespace zelto::shell

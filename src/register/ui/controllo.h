// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/job_check.h"

#include <QWidget>

class QLabel;
class QLineEdit;
class QPushButton;
class QTreeView;

namespace zelto::registro {

class JobRemarks;
class RemarkModel;

/// The panel "Controllo del lavoro": the remarks on the open job by their kind, as they are now.
class Controllo : public QWidget
{
    Q_OBJECT

public:
    /// The remarks outlive it.
    explicit Controllo(const JobRemarks& remarks, QWidget* parent = nullptr);

    /// Puts the keyboard on the remark that was current last, or on the first one.
    void takeFocus();

signals:
    /// The user wants to see what a remark is about.
    void chosen(const zelto::calc::Posto& posto);
    /// Esc.
    void left();

protected:
    void showEvent(QShowEvent* event) override;

private:
    void build();
    void refresh();
    void showCount();
    void widenPlaces();
    void keepCurrent(const std::optional<calc::Osservazione>& former, int formerRow);
    void go();

    const JobRemarks& m_remarks;
    RemarkModel* m_model;
    QLineEdit* m_filter;
    QLabel* m_count;
    QPushButton* m_go;
    QTreeView* m_list;
};

} // namespace zelto::registro

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/job_figures.h"
#include "register/job_remarks.h"

#include <QStatusBar>

class QLabel;
class QToolButton;

namespace zelto::registro {

/// The bar below the register: what the calculation makes of the current unit, how many remarks
/// the check has, and for a while what has just happened.
class RegisterStatus : public QStatusBar
{
    Q_OBJECT

public:
    /// Job and model outlive it.
    RegisterStatus(store::Database& lavoro, RegisterModel& model, calc::SullaCarta sullaCarta);

    /// Shows figures and remarks from now on; reading a big job for them takes a moment.
    void start();

    /// For a while, or until the next change.
    void say(const QString& text);

    [[nodiscard]] const JobRemarks& remarks() const { return m_remarks; }

signals:
    void controlloRequested();

private:
    void showFigures();
    void showRemarks();

    RegisterModel& m_model;
    JobFigures m_calculation;
    JobRemarks m_remarks;
    bool m_started = false;
    QLabel* m_figures;
    QToolButton* m_counts; ///< of the remarks
};

} // namespace zelto::registro

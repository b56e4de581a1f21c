// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/job_check.h"

#include <QList>
#include <QObject>

#include <optional>
#include <vector>

namespace zelto::registro {

class RegisterModel;

/// What the check has to say of the open job while it is edited. It follows each change by the
/// units that the change concerned.
class JobRemarks : public QObject
{
    Q_OBJECT

public:
    /// Reads nothing until start(). Job and model outlive it.
    JobRemarks(store::Database& lavoro, RegisterModel& model, calc::SullaCarta sullaCarta);

    /// Checks the whole job, and from now on what changes.
    void start();

    /// In the order of their places; none before start().
    [[nodiscard]] const std::vector<calc::Osservazione>& remarks() const { return m_remarks; }
    /// Why the job cannot be checked; empty when it can.
    [[nodiscard]] const QString& failure() const { return m_failure; }

signals:
    void changed();

private:
    void follow(const QList<int>& units);

    store::Database& m_lavoro;
    calc::SullaCarta m_sullaCarta;
    bool m_started = false;
    std::optional<calc::ControlloLavoro> m_check; ///< none until the job is read again
    std::vector<calc::Osservazione> m_remarks;
    QString m_failure;
};

} // namespace zelto::registro

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/job_loader.h"
#include "calc/millesimi.h"
#include "calc/modello_lavoro.h"
#include "calc/shares.h"

#include <QList>
#include <QString>

#include <optional>
#include <vector>

namespace zelto::registro {

/// What the calculation makes of the open job while it is edited, one changed unit at a time.
class JobFigures
{
public:
    /// The job outlives it.
    explicit JobFigures(store::Database& lavoro) : m_lavoro(lavoro) {}

    /// Total size and general share of the unit as they would be printed now, or why there are
    /// none; empty for a unit that does not exist. Throws DatabaseError.
    [[nodiscard]] QString describe(int unit);

    /// These units were changed, added or deleted in the job. Throws DatabaseError.
    void unitsChanged(const QList<int>& units);

    /// Anything may have changed.
    void reload();

private:
    void calculate();

    store::Database& m_lavoro;
    std::optional<calc::ModelloLavoro> m_modello; ///< none until it is needed
    calc::Consistenze m_consistenze;
    std::vector<calc::Millesimi> m_millesimi;
    bool m_calculated = false;
    QString m_refusal; ///< why the job cannot be calculated
};

} // namespace zelto::registro

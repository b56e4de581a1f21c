// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/job_loader.h"
#include "calc/millesimi.h"
#include "calc/modello_lavoro.h"
#include "calc/shares.h"
#include "register/unit_figures.h"

#include <optional>
#include <vector>

namespace zelto::shell {

/// The open job loaded and calculated, one changed unit at a time.
class JobFigures : public registro::UnitFigures
{
public:
    /// The job outlives it.
    explicit JobFigures(store::Database& lavoro) : m_lavoro(lavoro) {}

    [[nodiscard]] QString describe(int unit) override;
    void unitsChanged(const QList<int>& units) override;
    void reload() override;

private:
    void calculate();

    store::Database& m_lavoro;
    std::optional<calc::ModelloLavoro> m_modello; ///< none until it is needed
    calc::Consistenze m_consistenze;
    std::vector<calc::Millesimi> m_millesimi;
    bool m_calculated = false;
    QString m_refusal; ///< why the job cannot be calculated
};

} // namespace zelto::shell

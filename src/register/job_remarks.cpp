// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/job_remarks.h"

#include "register/register_model.h"
#include "store/files/database_error.h"

namespace zelto::registro {

JobRemarks::JobRemarks(store::Database& lavoro, RegisterModel& model, calc::SullaCarta sullaCarta)
    : m_lavoro(lavoro), m_sullaCarta(std::move(sullaCarta))
{
    connect(&model, &RegisterModel::unitsChanged, this, &JobRemarks::follow);
    connect(&model, &RegisterModel::reloaded, this, [this] {
        m_check.reset();
        follow({});
    });
}

void JobRemarks::start()
{
    m_started = true;
    follow({});
}

void JobRemarks::follow(const QList<int>& units)
{
    if (!m_started)
        return;
    m_failure.clear();
    try {
        if (!m_check || units.size() > MostSingleUnits)
            m_check.emplace(calc::LeggiLavoroScritto(m_lavoro), m_sullaCarta);
        else
            for (const int unit : units)
                m_check->rileggiUnita(m_lavoro, unit);
        m_remarks = m_check->osservazioni();
    } catch (const store::DatabaseError& error) {
        m_check.reset();
        m_remarks.clear();
        m_failure = error.description();
    }
    emit changed();
}

} // namespace zelto::registro

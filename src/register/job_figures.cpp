// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/job_figures.h"

#include "calc/figures.h"
#include "register/register_model.h"

#include <algorithm>

namespace zelto::registro {

void JobFigures::reload()
{
    m_modello.reset();
    m_calculated = false;
}

void JobFigures::unitsChanged(const QList<int>& units)
{
    m_calculated = false;
    if (!m_modello)
        return;
    if (units.size() > MostSingleUnits) {
        m_modello.reset();
        return;
    }
    try {
        for (const int unit : units)
            calc::RicaricaUnita(m_lavoro, *m_modello, unit);
    } catch (const calc::CalcError&) {
        // Loading the whole job will say what is wrong, or find that it has been put right.
        m_modello.reset();
    }
}

void JobFigures::calculate()
{
    m_calculated = true;
    m_refusal.clear();
    try {
        if (!m_modello)
            m_modello = calc::CaricaLavoro(m_lavoro);
        m_consistenze = calc::calcolaConsistenze(*m_modello);
        m_millesimi = calc::calcolaMillGen(m_consistenze);
    } catch (const calc::CalcError& error) {
        m_modello.reset();
        m_refusal = error.description();
    }
}

QString JobFigures::describe(int unit)
{
    if (!m_calculated)
        calculate();
    if (!m_modello)
        return m_refusal;
    const auto& unita = m_modello->unita;
    const auto found = std::ranges::find(unita, unit, &calc::UnitaImmobiliare::RifUI);
    if (found == unita.end())
        return {};
    const auto place = static_cast<std::size_t>(found - unita.begin());
    const double CTUI = m_consistenze.CTUI[place];
    try {
        return u"Consistenza %1 - Millesimi %2"_s.arg(
            calc::cifra(calc::MascheraTotaleUnita, CTUI, u"CONS.TOT.", {*found}).trimmed(),
            calc::cifra(m_millesimi[place], u"MILLESIMI", {*found}).trimmed());
    } catch (const calc::CalcError& error) {
        return error.description();
    }
}

} // namespace zelto::registro

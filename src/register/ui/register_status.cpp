// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/register_status.h"

#include "register/register_model.h"
#include "store/files/database_error.h"

#include <QLabel>
#include <QToolButton>

namespace zelto::registro {

RegisterStatus::RegisterStatus(store::Database& lavoro, RegisterModel& model,
                               calc::SullaCarta sullaCarta)
    : m_model(model), m_calculation(lavoro), m_remarks(lavoro, model, std::move(sullaCarta)),
      m_figures(new QLabel), m_counts(new QToolButton)
{
    setObjectName(u"StatusBar"_s);
    setSizeGripEnabled(false);
    m_figures->setObjectName(u"Stato"_s);
    addWidget(m_figures, 1);
    m_counts->setObjectName(u"Conteggio"_s);
    m_counts->setAutoRaise(true);
    m_counts->setFocusPolicy(Qt::NoFocus); // F7 is its key
    m_counts->setToolTip(u"Controllo del lavoro (F7)"_s);
    addPermanentWidget(m_counts);
    connect(m_counts, &QToolButton::clicked, this, &RegisterStatus::controlloRequested);
    connect(&model, &RegisterModel::unitShown, this, &RegisterStatus::showFigures);
    connect(&model, &RegisterModel::unitsChanged, this, [this](const QList<int>& units) {
        m_calculation.unitsChanged(units);
        showFigures();
    });
    connect(&model, &RegisterModel::reloaded, this, [this] { m_calculation.reload(); });
    connect(&model, &RegisterModel::performed, this, &QStatusBar::clearMessage);
    connect(&m_remarks, &JobRemarks::changed, this, &RegisterStatus::showRemarks);
}

void RegisterStatus::start()
{
    m_started = true;
    showFigures();
    m_remarks.start();
}

void RegisterStatus::say(const QString& text)
{
    constexpr int Shown = 8000; // milliseconds
    showMessage(text, Shown);
}

/// The figures are a service: the screen works without them.
void RegisterStatus::showFigures()
{
    if (!m_started)
        return;
    try {
        m_figures->setText(m_calculation.describe(m_model.current()));
    } catch (const store::DatabaseError& error) {
        m_figures->setText(error.description());
    }
}

void RegisterStatus::showRemarks()
{
    const QString counts = calc::conteggio(m_remarks.remarks());
    m_counts->setText(counts.isEmpty() ? u"Nessuna osservazione"_s : counts);
    m_counts->setVisible(m_remarks.failure().isEmpty());
}

} // namespace zelto::registro

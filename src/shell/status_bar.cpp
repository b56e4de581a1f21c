// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/status_bar.h"

namespace zelto::shell {

StatusBar::StatusBar(QWidget* parent)
    : QStatusBar(parent), m_status(addPanel(QStringLiteral("Stato1"), Qt::ElideRight, 2)),
      m_hint(addPanel(QStringLiteral("Stato2"), Qt::ElideRight, 2)),
      m_job(addPanel(QStringLiteral("Stato3"), Qt::ElideMiddle, 4))
{
    setObjectName(QStringLiteral("Stato"));
    m_status->setAccessibleName(QStringLiteral("Stato del programma"));
    m_hint->setAccessibleName(QStringLiteral("Suggerimento"));
    m_job->setAccessibleName(QStringLiteral("Lavoro aperto"));
    SetStatus({}, false);
}

ElidedLabel* StatusBar::addPanel(const QString& name, Qt::TextElideMode mode, int stretch)
{
    auto* panel = new ElidedLabel(mode, this);
    panel->setObjectName(name);
    // Widths that follow the stretch alone do not jump with every text.
    panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    panel->setContentsMargins(4, 0, 4, 0);
    addWidget(panel, stretch);
    return panel;
}

void StatusBar::SetStatus(const QString& text, bool busy)
{
    if (text.isEmpty())
        m_status->setText(QStringLiteral("Pronto"));
    else
        m_status->setText(busy ? text + QStringLiteral(", Prego attendere...") : text);
    repaint();
}

void StatusBar::showJob(const QString& path)
{
    m_job->setText(path.isEmpty() ? QString() : QStringLiteral("Codice lavoro: ") + path);
}

} // namespace zelto::shell

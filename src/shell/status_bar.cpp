// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/status_bar.h"

#include "text/literals.h"

namespace zelto::shell {

StatusBar::StatusBar(QWidget* parent)
    : QStatusBar(parent), m_status(addPanel(u"Stato1"_s, Qt::ElideRight, 2)),
      m_hint(addPanel(u"Stato2"_s, Qt::ElideRight, 2)),
      m_job(addPanel(u"Stato3"_s, Qt::ElideMiddle, 4))
{
    setObjectName(u"Stato"_s);
    m_status->setAccessibleName(u"Stato del programma"_s);
    m_hint->setAccessibleName(u"Suggerimento"_s);
    m_job->setAccessibleName(u"Lavoro aperto"_s);
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
        m_status->setText(u"Pronto"_s);
    else
        m_status->setText(busy ? text + u", Prego attendere..."_s : text);
    repaint();
}

void StatusBar::showJob(const QString& path)
{
    m_job->setText(path.isEmpty() ? QString() : u"Codice lavoro: "_s + path);
}

} // namespace zelto::shell

// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/status_bar.h"

#include "text/literals.h"
#include "widgets/announcement.h"

#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace zelto::shell {

ElidedLabel::ElidedLabel(Qt::TextElideMode mode, QWidget* parent) : QLabel(parent), m_mode(mode)
{
    setTextFormat(Qt::PlainText);
}

QString ElidedLabel::shownText() const
{
    return fontMetrics().elidedText(text(), m_mode, contentsRect().width());
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, QLabel::minimumSizeHint().height()};
}

bool ElidedLabel::event(QEvent* event)
{
    const auto* help = dynamic_cast<QHelpEvent*>(event);
    if (help == nullptr || help->type() != QEvent::ToolTip)
        return QLabel::event(event);
    // Escaped, or a path could pass for rich text.
    const QString tip = shownText() == text() ? QString() : text().toHtmlEscaped();
    QToolTip::showText(help->globalPos(), tip.isEmpty() ? tip : u"<span>%1</span>"_s.arg(tip),
                       this);
    return true;
}

void ElidedLabel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    style()->drawItemText(&painter, contentsRect(), static_cast<int>(alignment()), palette(),
                          isEnabled(), shownText(), foregroundRole());
}

StatusBar::StatusBar(QWidget* parent)
    : QStatusBar(parent),
      m_status(addPanel(u"Stato1"_s, u"Stato del programma"_s, Qt::ElideRight, 2)),
      m_hint(addPanel(u"Stato2"_s, u"Suggerimento"_s, Qt::ElideRight, 2)),
      m_job(addPanel(u"Stato3"_s, u"Lavoro aperto"_s, Qt::ElideMiddle, 4))
{
    setObjectName(u"Stato"_s);
    SetStatus({}, false);
}

ElidedLabel* StatusBar::addPanel(const QString& name, const QString& description,
                                 Qt::TextElideMode mode, int stretch)
{
    auto* panel = new ElidedLabel(mode, this);
    panel->setObjectName(name);
    panel->setAccessibleDescription(description);
    // Widths that follow the stretch alone do not jump with every text.
    panel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Preferred);
    panel->setContentsMargins(4, 0, 4, 0);
    addWidget(panel, stretch);
    return panel;
}

void StatusBar::SetStatus(const QString& text, bool busy)
{
    if (text.isEmpty())
        widgets::announce(*m_status, u"Pronto"_s);
    else
        widgets::announce(*m_status, busy ? text + u", Prego attendere..."_s : text);
    repaint();
}

void StatusBar::showJob(const QString& path)
{
    widgets::announce(*m_job, path.isEmpty() ? QString() : u"Codice lavoro: "_s + path);
}

} // namespace zelto::shell

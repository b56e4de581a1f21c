// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/ui/zoom_bar.h"

#include "text/literals.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QToolButton>

namespace zelto::print {

namespace {

QString percent(int scale)
{
    return u"%1 %"_s.arg(scale);
}

} // namespace

ZoomBar::ZoomBar(QWidget* parent) : QWidget(parent), m_scale(new QLabel(this))
{
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    m_fit = addButton(u"Adatta"_s, u"Adatta"_s, u"La pagina intera nella finestra (Ctrl+0)"_s);
    connect(m_fit, &QToolButton::clicked, this, &ZoomBar::fitRequested);
    for (const int scale : {100, 150, 200}) {
        const QString hint = scale == 100 ? u"Grande come in stampa"_s
                                          : u"%1 della grandezza in stampa"_s.arg(percent(scale));
        QToolButton* button = addButton(u"Zoom%1"_s.arg(scale), percent(scale), hint);
        connect(button, &QToolButton::clicked, this,
                [this, scale] { emit scaleRequested(scale / 100.0); });
        m_buttons.emplace(scale, button);
    }
    m_scale->setObjectName(u"Zoom"_s);
    m_scale->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    m_scale->setMinimumWidth(fontMetrics().horizontalAdvance(u" 0000 %"_s));
    row->addWidget(m_scale);
}

QToolButton* ZoomBar::addButton(const QString& name, const QString& caption, const QString& hint)
{
    auto* button = new QToolButton(this);
    button->setObjectName(name);
    button->setText(caption);
    button->setToolTip(hint);
    button->setCheckable(true);
    button->setAutoRaise(true);
    button->setFocusPolicy(Qt::TabFocus);
    layout()->addWidget(button);
    return button;
}

void ZoomBar::showScale(double scale, bool fitted)
{
    const int shown = qRound(scale * 100);
    m_scale->setText(percent(shown));
    m_fit->setChecked(fitted);
    for (const auto& [own, button] : m_buttons)
        button->setChecked(!fitted && own == shown);
}

} // namespace zelto::print

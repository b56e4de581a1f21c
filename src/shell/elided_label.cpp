// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/elided_label.h"

#include "text/literals.h"

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

} // namespace zelto::shell

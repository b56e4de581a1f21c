// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/wheel_scroller.h"

#include <QAbstractItemView>
#include <QScrollBar>
#include <QWheelEvent>

namespace zelto::widgets {

WheelScroller::WheelScroller(QAbstractItemView* view) : QObject(view), m_view(view)
{
    view->setVerticalScrollMode(QAbstractItemView::ScrollPerItem);
    view->viewport()->installEventFilter(this);
}

bool WheelScroller::eventFilter(QObject* watched, QEvent* event)
{
    const auto* wheel = dynamic_cast<QWheelEvent*>(event);
    if (wheel == nullptr || wheel->angleDelta().y() == 0)
        return QObject::eventFilter(watched, event);
    constexpr int TurnPerRow = QWheelEvent::DefaultDeltasPerStep / RowsPerNotch;
    // Fine-grained wheels and touchpads turn by parts of a row.
    m_pending += wheel->angleDelta().y();
    const int rows = m_pending / TurnPerRow;
    m_pending %= TurnPerRow;
    QScrollBar* bar = m_view->verticalScrollBar();
    bar->setValue(bar->value() - rows);
    event->accept();
    return true;
}

} // namespace zelto::widgets

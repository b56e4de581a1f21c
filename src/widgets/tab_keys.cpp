// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/tab_keys.h"

#include <QShortcut>
#include <QTabBar>

namespace zelto::widgets {

namespace {

void turn(QTabBar& tabs, int step)
{
    tabs.setCurrentIndex((tabs.currentIndex() + step + tabs.count()) % tabs.count());
}

} // namespace

void addTabKeys(QWidget& screen, QTabBar& tabs)
{
    const auto add = [&](const QKeySequence& key, int step) {
        auto* shortcut = new QShortcut(key, &screen);
        shortcut->setContext(Qt::WidgetWithChildrenShortcut);
        QObject::connect(shortcut, &QShortcut::activated, &tabs,
                         [&tabs, step] { turn(tabs, step); });
    };
    add(Qt::CTRL | Qt::Key_Tab, 1);
    add(Qt::CTRL | Qt::Key_PageDown, 1);
    add(Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab, -1);
    add(Qt::CTRL | Qt::Key_PageUp, -1);
}

} // namespace zelto::widgets

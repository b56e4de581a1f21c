// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/keys.h"

#include <QShortcut>
#include <QTabBar>

namespace zelto::widgets {

void addKey(QWidget& where, const QKeySequence& key, const std::function<void()>& command,
            Qt::ShortcutContext context)
{
    auto* shortcut = new QShortcut(key, &where);
    shortcut->setContext(context);
    QObject::connect(shortcut, &QShortcut::activated, &where, command);
}

void addTabKeys(QWidget& screen, QTabBar& tabs)
{
    const auto turn = [&tabs](int step) {
        return [&tabs, step] {
            tabs.setCurrentIndex((tabs.currentIndex() + step + tabs.count()) % tabs.count());
        };
    };
    addKey(screen, Qt::CTRL | Qt::Key_Tab, turn(1));
    addKey(screen, Qt::CTRL | Qt::Key_PageDown, turn(1));
    addKey(screen, Qt::CTRL | Qt::SHIFT | Qt::Key_Backtab, turn(-1));
    addKey(screen, Qt::CTRL | Qt::Key_PageUp, turn(-1));
}

} // namespace zelto::widgets

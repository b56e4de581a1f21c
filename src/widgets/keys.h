// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QKeySequence>

#include <functional>

class QTabBar;
class QWidget;

namespace zelto::widgets {

/// The key carries out the command wherever in the widget the focus is.
void addKey(QWidget& where, const QKeySequence& key, const std::function<void()>& command,
            Qt::ShortcutContext context = Qt::WidgetWithChildrenShortcut);

/// Ctrl+Tab and Ctrl+Page Down anywhere in the screen go to the next tab, from the last one to the
/// first; with Shift, or Page Up, the other way.
void addTabKeys(QWidget& screen, QTabBar& tabs);

} // namespace zelto::widgets

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QTabBar;
class QWidget;

namespace zelto::widgets {

/// Ctrl+Tab and Ctrl+Page Down anywhere in the screen go to the next tab, from the last one to the
/// first; with Shift, or Page Up, the other way.
void addTabKeys(QWidget& screen, QTabBar& tabs);

} // namespace zelto::widgets

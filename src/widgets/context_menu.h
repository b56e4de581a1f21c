// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/literals.h"

#include <QMenu>

namespace zelto::widgets {

/// The context menu "MnuDxMouse" that the grids borrow: reset it, give captions to the entries that
/// are needed, show it and carry out the choice.
class ContextMenu : public QMenu
{
    Q_OBJECT

public:
    static constexpr int EntryCount = 6;

    explicit ContextMenu(QWidget* parent = nullptr) : QMenu(parent)
    {
        setObjectName(u"MnuDxMouse"_s);
        for (int entry = 0; entry < EntryCount; ++entry)
            addAction(QString());
        ResetContextMenu();
    }

    /// Entry 0 visible, entries 1 to 5 hidden; all enabled and without caption.
    void ResetContextMenu() const
    {
        for (int entry = 0; entry < EntryCount; ++entry) {
            DxMouse(entry).setText({});
            DxMouse(entry).setVisible(entry == 0);
            DxMouse(entry).setEnabled(true);
        }
    }

    /// Entry 0 to 5.
    [[nodiscard]] QAction& DxMouse(int entry) const { return *actions().at(entry); }

    /// Shows the menu at the place on the screen until it closes. The entry chosen, -1 for none.
    int choose(const QPoint& place) { return static_cast<int>(actions().indexOf(exec(place))); }
};

} // namespace zelto::widgets

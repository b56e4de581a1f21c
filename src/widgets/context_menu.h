// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/literals.h"

#include <QMenu>

#include <array>

namespace zelto::widgets {

/// The context menu "MnuDxMouse" that the grids borrow: reset it, give captions to the entries that
/// are needed, show it and read the choice.
class ContextMenu : public QMenu
{
    Q_OBJECT

public:
    static constexpr int EntryCount = 6;

    explicit ContextMenu(QWidget* parent = nullptr);

    /// Entry 0 visible, entries 1 to 5 hidden; all enabled and without caption.
    void ResetContextMenu();

    /// Entry 0 to 5.
    [[nodiscard]] QAction& DxMouse(int entry)
    {
        return *m_entries.at(static_cast<std::size_t>(entry));
    }

    /// The number of the last entry clicked, "0" to "5"; "-1" when none was since it was shown.
    [[nodiscard]] const QString& menuChoice() const { return m_menuChoice; }

    /// Shows the menu at the place on the screen until it closes and gives the choice.
    QString choose(const QPoint& place);

private:
    std::array<QAction*, EntryCount> m_entries{};
    QString m_menuChoice = u"-1"_s;
};

} // namespace zelto::widgets

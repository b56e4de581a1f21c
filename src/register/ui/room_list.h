// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/ui/register_grid.h"

class QLabel;

namespace zelto::registro {

/// The panel "Vani": whose rooms they are, and the grid with them.
class RoomList : public RegisterGrid
{
    Q_OBJECT

public:
    RoomList(RegisterModel& model, widgets::ContextMenu& menu);

private:
    [[nodiscard]] static Rows roomsOf(RegisterModel& model);
    [[nodiscard]] QString title() const;
    void showRooms();

    QLabel* m_title;
    int m_shown = 0; ///< the unit whose rooms are shown
};

} // namespace zelto::registro

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zelto::widgets {
class ContextMenu;
class Grid;
} // namespace zelto::widgets

namespace zelto::registro {

/// How the menu names what the grid lists.
struct RangeWords
{
    QString add;     ///< the whole entry
    QString one;     ///< "vano"
    QString several; ///< "vani"
};

enum class RangeCommand { None, Add, Delete, Duplicate, MoveUp, MoveDown };

/// Shows the right-button menu of a grid at its current cell, for its selected rows, and gives what
/// the user chose; nothing where the grid has no current cell.
RangeCommand chooseRangeCommand(widgets::ContextMenu& menu, const widgets::Grid& grid,
                                const RangeWords& words);

} // namespace zelto::registro

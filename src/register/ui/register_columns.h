// SPDX-License-Identifier: GPL-3.0-or-later
// The columns of the two grids, counted without the number column.
#pragma once

#include "register/register_lists.h"
#include "widgets/grid_model.h"

#include <vector>

namespace zelto::registro {

/// Columns of the unit grid; the ten table flags follow one another.
enum UnitColumn : int {
    ColumnRiferimento,
    ColumnLivello,
    ColumnScala,
    ColumnHPiano,
    ColumnFirstTable
};

/// Columns of the room grid; the six coefficients follow one another.
enum RoomColumn : int { ColumnAmbiente, ColumnConsistenza, ColumnFirstCoefficient };

[[nodiscard]] std::vector<widgets::GridColumn> unitColumns();
[[nodiscard]] std::vector<widgets::GridColumn> roomColumns();

} // namespace zelto::registro

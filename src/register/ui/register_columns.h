// SPDX-License-Identifier: GPL-3.0-or-later
// The columns of the two grids, counted without the number column.
#pragma once

#include "calc/job_loader.h"
#include "register/register_lists.h"
#include "widgets/cell_picker.h"
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

/// Cells are remarked on by the lists, which outlive the columns.
[[nodiscard]] std::vector<widgets::GridColumn> unitColumns(const RegisterLists& lists);

[[nodiscard]] std::vector<widgets::GridColumn> roomColumns(calc::Liste& liste);

/// Staircase codes as a picker offers them, the blank one first.
[[nodiscard]] std::vector<widgets::PickerEntry> scalaEntries(const QStringList& scale);

/// The entry of that code, letter case included; -1 for none.
[[nodiscard]] int scalaEntry(const QStringList& scale, const QString& code);

} // namespace zelto::registro

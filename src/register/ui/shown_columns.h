// SPDX-License-Identifier: GPL-3.0-or-later
// How the screen shows the columns of the register, and what their cells are chosen from.
#pragma once

#include "register/register_model.h"
#include "widgets/cell_picker.h"
#include "widgets/grid_model.h"

namespace zelto::registro {

/// The columns of a table's grid. Cells are remarked on by what the model, which outlives them, has
/// read.
[[nodiscard]] std::vector<widgets::GridColumn> gridColumns(Table table, RegisterModel& model);

/// The texts of a record as these columns show them.
[[nodiscard]] QStringList cellsOf(const std::vector<Column>& columns, const Record& record);

/// What a picker offers for a cell, and which entry its text is; -1 for none.
struct Offer
{
    std::vector<widgets::PickerEntry> entries;
    int current = -1;
};

/// Staircase codes, the blank entry first.
[[nodiscard]] Offer offeredStaircases(const RegisterLists& lists, const QString& text);

/// A list of coefficients in its order, the blank entry behind; nothing of an empty one.
[[nodiscard]] Offer offeredCoefficients(const RegisterLists& lists, int list, const QString& text);

} // namespace zelto::registro

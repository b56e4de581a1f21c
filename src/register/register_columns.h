// SPDX-License-Identifier: GPL-3.0-or-later
// The two tables of the register, and the columns in which the screen shows them.
#pragma once

#include <QString>

#include <vector>

namespace zelto::registro {

enum class Table { Units, Rooms };

/// The table's name in the job.
[[nodiscard]] QStringView nameOf(Table table);

/// Places of fields in a record. Behind the number, which tells the units of a job or the rooms of
/// a unit apart, all fields are the user's.
enum UnitField : int {
    UnitKey,
    UnitNumber,
    UnitRiferimento,
    UnitLivello,
    UnitScala,
    UnitHPiano,
    UnitFlags
};
enum RoomField : int { RoomKey, RoomUnit, RoomPosition, RoomAmbiente };

[[nodiscard]] int numberField(Table table);

/// What a column's cells hold: by it they are typed or chosen, aligned and remarked on.
enum class Holds { Words, Height, Size, Staircase, Flag, Coefficient };

/// A column of a table's grid.
struct Column
{
    int field = 0; ///< its place in the record
    Holds holds = Holds::Words;
    int index = 0;   ///< among the columns that hold the same: of a special table, of a list
    int longest = 0; ///< in characters
    int width = 0;   ///< in twips, until the user changes it
    QString title;
    QString name; ///< in what is said of changes
};

[[nodiscard]] const std::vector<Column>& columnsOf(Table table);

} // namespace zelto::registro

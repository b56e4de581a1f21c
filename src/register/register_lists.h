// SPDX-License-Identifier: GPL-3.0-or-later
// What the screen of the register shows of a job. Reading throws DatabaseError.
#pragma once

#include "store/job_limits.h"

#include <QString>
#include <QStringList>

#include <array>
#include <vector>

namespace zelto::store {
class Database;
} // namespace zelto::store

namespace zelto::registro {

inline constexpr int NumUnitTexts = 4;
inline constexpr int NumRoomTexts = 8;

/// Places in UnitRow::texts.
enum UnitText : int { UnitTextRiferimento, UnitTextLivello, UnitTextScala, UnitTextHPiano };

/// A unit as it is listed; a Null field is empty.
struct UnitRow
{
    int number = 0;
    std::array<QString, NumUnitTexts> texts;
    /// One character for each special table, or nothing.
    QString flags;
};

/// A room as it is listed: Ambiente, Consistenza reale and the six coefficients.
struct RoomRow
{
    int position = 0;
    std::array<QString, NumRoomTexts> texts;
};

/// Which units are listed; empty for all. Codes and levels are compared without regard to letter
/// case.
struct UnitFilter
{
    QString scala;
    QString livello;
};

/// The units in the order of their numbers.
[[nodiscard]] std::vector<UnitRow> readUnits(store::Database& lavoro,
                                             const UnitFilter& filter = {});

/// The unit of the number; number 0 when there is none.
[[nodiscard]] UnitRow readUnit(store::Database& lavoro, int number);

/// The rooms of a unit in the order of their positions.
[[nodiscard]] std::vector<RoomRow> readRooms(store::Database& lavoro, int unit);

/// A node of the tree: a unit with its rooms. Texts are those of a tree built anew.
struct TreeRoom
{
    int position = 0;
    QString text;
};
struct TreeUnit
{
    int number = 0;
    QString text;
    std::vector<TreeRoom> rooms;
};
struct TreeScala
{
    QString code; ///< empty for the units without staircase
    std::vector<TreeUnit> units;
};

/// The units without staircase, then those of each of the codes; units in the order of their keys.
/// A unit of any other staircase is in none of them.
[[nodiscard]] std::vector<TreeScala> readTree(store::Database& lavoro, const QStringList& scale);

/// A line of a coefficient's list.
struct CoefficientEntry
{
    QString code; ///< without brackets; empty for a value that rooms do not refer to
    QString value;
    QString description;

    /// "[code] value", or the value alone.
    [[nodiscard]] QString text() const;
};

/// What choosing the entry leaves in the cell: "[A]" of "[A] 1.05", the value when it has no code,
/// nothing new (the cell's text) when its bracket does not close.
[[nodiscard]] QString chosenCoefficient(const QString& entry, const QString& cellText);

/// What pickers, filters and check boxes offer, without blank entries.
struct RegisterLists
{
    QStringList scale;
    QStringList livelli;
    /// Names, empty for tables that are not in use.
    std::array<QString, store::SpecialTables> tabelle;
    std::array<std::vector<CoefficientEntry>, store::Coefficients> coefficienti;
};

/// A job without a record of general data gets one first.
[[nodiscard]] RegisterLists LeggiDatiGenerali(store::Database& lavoro);

} // namespace zelto::registro

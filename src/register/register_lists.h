// SPDX-License-Identifier: GPL-3.0-or-later
// What the screen of the register shows of a job. Reading throws DatabaseError.
#pragma once

#include "register/register_change.h"
#include "store/job_limits.h"

#include <QStringList>

#include <array>

namespace zelto::store {
class Database;
} // namespace zelto::store

namespace zelto::registro {

/// Which units are listed; empty for all. Codes and levels are compared without regard to letter
/// case.
struct UnitFilter
{
    QString scala;
    QString livello;

    bool operator==(const UnitFilter&) const = default;
};

/// The units in the order of their numbers.
[[nodiscard]] std::vector<Record> readUnits(store::Database& lavoro, const UnitFilter& filter = {});

/// The unit of the number; without fields when there is none.
[[nodiscard]] Record readUnit(store::Database& lavoro, int number);

/// The rooms of a unit in the order of their positions.
[[nodiscard]] std::vector<Record> readRooms(store::Database& lavoro, int unit);

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
[[nodiscard]] QString chosenCoefficient(const CoefficientEntry& entry, const QString& cellText);

/// What pickers, filters and check boxes offer, without blank entries.
struct RegisterLists
{
    QStringList scale;
    QStringList livelli;
    std::array<QString, store::SpecialTables> tabelle; ///< names, empty where none is in use
    std::array<std::vector<CoefficientEntry>, store::Coefficients> coefficienti;
};

/// A job without a record of general data gets one first.
[[nodiscard]] RegisterLists LeggiDatiGenerali(store::Database& lavoro);

} // namespace zelto::registro

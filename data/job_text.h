// SPDX-License-Identifier: GPL-3.0-or-later
// A whole job as readable text, checked.
#pragma once

#include "data/data_text.h"
#include "store/job_limits.h"

#include <array>

namespace zelto::data {

/// A unit's row and those of its rooms, each with all its cells.
struct UnitText
{
    Row row;
    /// One character per special table, "X" or blank.
    QString flags;
    std::vector<Row> rooms;
};

/// What the folder of a job's text says, in the form in which a job file stores it.
struct JobText
{
    std::array<QString, 2> description;
    /// ISO form, "2024-05-18".
    QString date;
    QString notes;
    QString report;
    std::array<QString, store::SpecialTables> tables;
    /// Table text of code, title and percentage.
    QString staircases;
    /// Table texts of value, variable and description.
    std::array<QString, store::Groups> groups;
    QString unitsPath;
    std::vector<UnitText> units;
};

/// Reads dati_generali.txt, coefficienti.txt, unita.txt and relazione.txt of the folder. Throws
/// DataFault when one is missing or malformed, or when a room refers to an entry, or a unit to a
/// staircase or table, that is not declared.
JobText readJobText(const QString& folder);

} // namespace zelto::data

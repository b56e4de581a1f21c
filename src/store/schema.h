// SPDX-License-Identifier: GPL-3.0-or-later
// The five tables of a job.
#pragma once

#include "store/job_limits.h"
#include "store/table_def.h"

#include <QString>
#include <QStringView>

#include <array>
#include <span>

namespace zelto::store {

class Database;

inline constexpr QStringView TabellaZelto = u"ZELTO";
inline constexpr QStringView TabellaDatiGenerali = u"Dati Generali";
inline constexpr QStringView TabellaUnita = u"Unità immobiliari";
inline constexpr QStringView TabellaVani = u"Vani";
inline constexpr QStringView TabellaVariabili = u"Variabili";

/// The fields that records of several tables are found by.
inline constexpr QStringView CampoChiave = u"Chiave";
inline constexpr QStringView CampoUnita = u"Riferimento unità";

/// The fields of general data with the staircase codes and with the name of special table 1 to 10.
inline const QString CampoCodici = u"Tabella Codici"_s;
[[nodiscard]] inline QString campoTabella(int t)
{
    return u"Tabella %1"_s.arg(t);
}

/// The field that keeps a group of values, 0 to 6, as a table text with the cells Valore, Variabile
/// and Descrizione in every row.
[[nodiscard]] inline QString campoGruppo(int group)
{
    return u"Var%1"_s.arg(group);
}

/// The groups of values, each with the name of the field that is chosen from it.
inline constexpr std::array<QStringView, Groups> GroupNames{
    u"Ambiente",   u"Destinazione", u"Orientamento",   u"Prospetto",
    u"Luminosità", u"Funzionalità", u"Piano riduttore"};

/// What the marker table's first field reads as in a job of this format.
inline constexpr float VersioneFormato = 2009;

/// The tables in the order in which a new job gets them. The order of their fields is part of the
/// format: many readers address them by position.
[[nodiscard]] std::span<const TableDef> jobTables();

/// The definition of one of the job's tables, named exactly.
[[nodiscard]] const TableDef& jobTable(QStringView name);

/// The most characters that a text field of one of them takes.
[[nodiscard]] int longestText(QStringView table, QStringView field);

/// The heading of a field of units or rooms where the user sees it.
[[nodiscard]] QString headingOf(QStringView field);

/// Gives an empty database the five tables and a new job's records, all or nothing.
void CreaTabelleBase(Database& database);

/// Gives a table that is to have one record its record when it has none: the marker with the
/// version of the format, general data of which nothing is known, coefficient groups of a single
/// blank each.
void addOnlyRecord(Database& database, QStringView table);

/// The key of a unit: its number right-aligned in five characters, so that the order of keys is
/// the order of numbers.
[[nodiscard]] QString unitKey(int unit);

/// The key of a room: its unit's key and its position, right-aligned in five characters.
[[nodiscard]] QString roomKey(int unit, int position);

} // namespace zelto::store

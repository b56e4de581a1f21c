// SPDX-License-Identifier: GPL-3.0-or-later
// A whole job in memory, as calculation and reports work on it.
#pragma once

#include "store/job_limits.h"

#include <QMap>
#include <QString>

#include <array>
#include <vector>

namespace zelto::calc {

/// One room: its real size, its coefficients and the sizes that follow from them.
struct Vano
{
    QString Ambiente = {};
    float CR = 0;  ///< real size
    float CD = 0;  ///< destination coefficient
    float CO = 0;  ///< orientation
    float CP = 0;  ///< outlook
    float CL = 0;  ///< brightness
    float CFU = 0; ///< functionality
    float PR = 0;  ///< floor reduction
    float CF = 0;  ///< fictitious size
    float CVT = 0; ///< total virtual size
    float CT = 0;  ///< total size

    bool operator==(const Vano&) const = default;
};

/// What a room is written with: its size, then its coefficients in the order of their lists.
inline constexpr std::array<float Vano::*, 1 + store::Coefficients> CifreVano{
    &Vano::CR, &Vano::CD, &Vano::CO, &Vano::CP, &Vano::CL, &Vano::CFU, &Vano::PR};

/// One unit of the building with its rooms, in the order of their positions.
struct UnitaImmobiliare
{
    int RifUI = 0; ///< unit number
    QString Riferimento;
    QString Livello;
    QString CodScala; ///< staircase code in upper case; blank for none
    float HPiano = 0; ///< height factor of the floor
    std::array<QChar, store::SpecialTables> FlagTab{};
    std::vector<Vano> vani;

    /// Whether the unit takes part in special table t, 1 to 10.
    [[nodiscard]] bool isInTable(int t) const
    {
        return FlagTab[static_cast<std::size_t>(t - 1)] == u'X';
    }

    bool operator==(const UnitaImmobiliare&) const = default;
};

/// A staircase as the job's table of codes describes it.
struct CodiceScala
{
    QString codice;
    QString titolo = {};
    double percentuale = 0; ///< weight of the floor share; 0 when none is given

    bool operator==(const CodiceScala&) const = default;
};

/// The job: general data and units in the order of their keys.
struct ModelloLavoro
{
    /// What general data holds that is not Null, by the names of the fields; a date as dd.mm.yyyy.
    QMap<QString, QString> datiGenerali;
    std::vector<QString> NomeTabella; ///< names of the special tables, packed
    std::vector<CodiceScala> tabellaCodici;
    std::vector<UnitaImmobiliare> unita;

    [[nodiscard]] int NumUI() const { return static_cast<int>(unita.size()); }
    [[nodiscard]] int NumTabelle() const { return static_cast<int>(NomeTabella.size()); }

    /// The first line of the table of codes for the staircase, nullptr for none.
    [[nodiscard]] const CodiceScala* codiceScala(const QString& codice) const
    {
        for (const CodiceScala& riga : tabellaCodici)
            if (riga.codice.toUpper() == codice)
                return &riga;
        return nullptr;
    }

    bool operator==(const ModelloLavoro&) const = default;
};

} // namespace zelto::calc

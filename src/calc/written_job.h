// SPDX-License-Identifier: GPL-3.0-or-later
// A job as its tables write it, before its texts become numbers. Reading throws DatabaseError.
#pragma once

#include "calc/modello_lavoro.h"
#include "store/database.h"

#include <QMap>
#include <QString>

#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelto::calc {

/// The figures of a room as UTF-8: its size, then its coefficients.
using TestiVano = std::array<std::string_view, CifreVano.size()>;

struct VanoScritto
{
    int posizione = 0;
    QString ambiente;
    std::array<std::string, CifreVano.size()> cifre; ///< ten characters need no memory of their own

    [[nodiscard]] TestiVano testi() const
    {
        TestiVano testi;
        std::copy(cifre.begin(), cifre.end(), testi.begin());
        return testi;
    }
};

struct UnitaScritta
{
    int RifUI = 0;
    QString Riferimento = {};
    QString Livello = {};
    QString CodScala = {};
    std::string HPiano = {};
    QString FlagTab = {};
    std::vector<VanoScritto> vani = {};
};

struct DatiScritti
{
    QMap<QString, QString> testi; ///< by the names of their fields, a date as YYYY-MM-DD
    std::array<std::optional<QString>, store::SpecialTables> NomeTabella;
    QString tabellaCodici;
};

/// The table texts of the coefficients' lists.
using ElenchiScritti = std::array<QString, store::Coefficients>;

/// A room whose unit is gone.
struct VanoOrfano
{
    int RifUI = 0;
    int posizione = 0;
    QString ambiente;
};

struct LavoroScritto
{
    DatiScritti dati;
    ElenchiScritti elenchi;
    std::vector<UnitaScritta> unita; ///< in the order of their keys
    std::vector<VanoOrfano> orfani;
};

/// The parts of a job, as the loader and the check both read them. A room's texts hold until the
/// query moves; a unit comes without its rooms.
[[nodiscard]] DatiScritti leggiDatiScritti(store::Database& lavoro);
[[nodiscard]] ElenchiScritti leggiElenchiScritti(store::Database& lavoro);
[[nodiscard]] UnitaScritta leggiUnitaScritta(const store::Query& record);
[[nodiscard]] TestiVano leggiTestiVano(const store::Query& record);

/// Reads a whole job, also one beyond the limits of the calculation.
[[nodiscard]] LavoroScritto LeggiLavoroScritto(store::Database& lavoro);

/// Brings one unit up to date after it was changed, added or deleted, by its number. The rest of
/// the job must not have changed.
void RileggiUnitaScritta(store::Database& lavoro, LavoroScritto& scritto, int rifUI);

/// A row of a table text, with its number.
struct Riga
{
    int numero = 0;
    std::array<QString, 3> celle;
};

/// The rows of a list of coefficients (value, code, description) or of the table of staircases
/// (code, title, percentage), down to the last one that is not empty; 1000 at most.
[[nodiscard]] std::vector<Riga> righeScritte(const QString& tableText);

} // namespace zelto::calc

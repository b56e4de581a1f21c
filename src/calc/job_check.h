// SPDX-License-Identifier: GPL-3.0-or-later
// The check of a job before it is printed: what is odd in it, and where. The figures stay as they
// are computed.
#pragma once

#include "calc/check_rules.h"
#include "calc/written_job.h"

#include <QString>

#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace zelto::calc {

/// The tab that shows what a remark is about.
enum class Scheda {
    Generale,
    Tabelle,
    Scale,  ///< these three of "Dati generali"
    Elenco, ///< of "Variabili"
    Unita,
    Vani ///< these two of "Parametri"
};

/// Where a remark leads. Numbers count from 1; 0 stands for none.
struct Posto
{
    Scheda scheda = Scheda::Generale;
    int elenco = 0; ///< the list of coefficients
    int unita = 0;  ///< the unit's number
    int vano = 0;   ///< the room's position
    int campo = 0;  ///< its place in the record of a unit, a room or general data; a list's column
    int riga = 0;   ///< of a list, of the special tables or of the staircases

    bool operator==(const Posto&) const = default;
};

struct Osservazione
{
    Regola regola = {};
    Posto posto = {};
    QString dove = {}; ///< the place in words
    QString che = {};  ///< what is odd, and what it counts as: a sentence
    /// The most thousandths that a share moves by it, where it can be told what was meant.
    std::optional<double> spostamento = {};

    [[nodiscard]] Gravita gravita() const { return descrizione(regola).gravita; }
};

/// "2 errori, 1 avviso, 3 note": how many there are of each kind down to the last; kinds without
/// any are left out.
[[nodiscard]] QString conteggio(std::span<const Osservazione> osservazioni,
                                Gravita ultima = Gravita::Nota);

/// The thousandths that a share moves by it, as they are printed; empty where they do not show.
[[nodiscard]] QString millesimiSpostati(const Osservazione& osservazione);

/// "place: what", with the thousandths.
[[nodiscard]] QString testo(const Osservazione& osservazione);

/// Names that are printed.
enum class Stampato { Riferimento, Livello, Ambiente };

/// A name as paper shows it left of the unit's or the room's size: of one that is too long the
/// beginning with "…". It comes from who knows the fonts; without it names stand as they are.
using SullaCarta = std::function<QString(Stampato che, const QString& nome, double cifra)>;

struct StatoControllo;

/// The check of a job that is being edited: it follows each change.
class ControlloLavoro
{
public:
    explicit ControlloLavoro(LavoroScritto lavoro, SullaCarta sullaCarta = {});
    ControlloLavoro(ControlloLavoro&&) noexcept;
    ControlloLavoro& operator=(ControlloLavoro&&) noexcept;
    ~ControlloLavoro();

    /// Reads one unit anew after it was changed, added or deleted, by its number. The rest of the
    /// job must not have changed. Throws DatabaseError.
    void rileggiUnita(store::Database& lavoro, int rifUI);

    /// All remarks in the order of their places: general data, lists, units with their rooms.
    [[nodiscard]] std::vector<Osservazione> osservazioni() const;

private:
    std::unique_ptr<StatoControllo> m_stato;
};

/// The remarks on a job.
[[nodiscard]] std::vector<Osservazione> controlla(LavoroScritto lavoro, SullaCarta sullaCarta = {});

} // namespace zelto::calc

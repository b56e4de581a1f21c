// SPDX-License-Identifier: GPL-3.0-or-later
// The parts of the check, each of which adds its remarks to those of the others.
#pragma once

#include "calc/job_check.h"
#include "calc/job_loader.h"
#include "calc/shares.h"

#include <QHash>

#include <bitset>
#include <span>
#include <unordered_map>

namespace zelto::calc {

/// A list of coefficients as it is written.
struct ElencoLetto
{
    std::vector<Riga> righe;
    int usate = 0; ///< rows that count: those above the first one without a value
    std::vector<std::optional<double>> intesi; ///< of those, values that were meant otherwise
    /// The rows that are left out by the references to them, with their values where they have one.
    std::unordered_map<std::string, std::optional<double>> escluse;
};

/// A remark on one unit, and what its size or height was meant to be: what that moves depends on
/// all others.
struct Rilievo
{
    Osservazione osservazione;
    std::optional<double> variazione; ///< that the unit's size would undergo
    std::optional<double> altezza;
};

/// What a room of a unit owes to a row of a list that does not count as it is written.
struct EffettoElenco
{
    int elenco = 0;
    int riga = 0; ///< 0 for rows that are left out
    double variazione = 0;
};

/// The size of a room among those of the same name.
struct Misura
{
    int nome = 0;
    std::size_t vano = 0;
    float CR = 0;
};

/// What is known of one unit without looking at another.
struct UnitaControllata
{
    UnitaImmobiliare formata; ///< without its rooms
    double CTUI = 0;
    bool altezzaScritta = true; ///< whether the height counts as it is written
    std::vector<Rilievo> rilievi;
    std::vector<EffettoElenco> effetti;
    std::vector<Misura> misure;
    std::array<std::bitset<store::MostGroupRows + 1>, store::Coefficients> righeUsate;
};

struct StatoControllo
{
    SullaCarta sullaCarta;
    LavoroScritto scritto;
    Liste liste;
    std::array<ElencoLetto, store::Coefficients> elenchi;
    QHash<QString, int> nomiVani;
    std::vector<UnitaControllata> unita; ///< as those of the written job
};

/// The building as all of its units make it, for the rules that need more than one.
struct Fabbricato
{
    const StatoControllo& stato;
    ModelloLavoro modello; ///< whose units have no rooms
    Consistenze consistenze;
};

using Osservazioni = std::vector<Osservazione>;

/// How far shares move when one of their bases changes.
class Bilancia
{
public:
    explicit Bilancia(std::span<const double> basi);
    [[nodiscard]] double spostamento(std::size_t u, double variazione) const;

private:
    std::span<const double> m_basi;
    double m_totale = 0;
    std::size_t m_maggiore = 0; ///< the place of the largest base, whatever its sign
    double m_seconda = 0;       ///< the largest one of the others
};

/// How far shares move when each base changes by as much.
[[nodiscard]] double spostamento(std::span<const double> basi, std::span<const double> variazioni);

/// The number that a text was meant to be which is none: with a comma for the point, or blanks.
[[nodiscard]] std::optional<double> numeroInteso(const QString& testo);

/// Whether a coefficient is of a usual size, and what is said of one that is not.
[[nodiscard]] bool isFattoreUsuale(double valore);
[[nodiscard]] QString fattoreInsolito(const std::string& testo);

/// What is said of a figure that its mask would cut.
[[nodiscard]] QString cifraTroppoLarga(double cifra);

/// "unità 12 (A/3 - Dalmasi)".
[[nodiscard]] QString doveUnita(const UnitaScritta& unita);

/// A remark on a unit, or on one of its fields.
[[nodiscard]] Osservazione osservaUnita(Regola regola, const UnitaScritta& unita, int campo,
                                        const QString& che);
/// A remark on a field of a room; figures are in the order of CifreVano.
enum CampoVano : int { CampoAmbiente = 3, PrimaCifra };
[[nodiscard]] Osservazione osservaVano(Regola regola, const UnitaScritta& unita,
                                       const VanoScritto& vano, int campo, const QString& che);

/// The name as paper shows it, blanks and what leaves no ink apart.
[[nodiscard]] QString nomeSullaCarta(const StatoControllo& stato, Stampato che, const QString& nome,
                                     double cifra);
/// What is said of a name that paper shows with an ellipsis; nothing of any other.
[[nodiscard]] QString nomeTagliato(const QString& nome, const QString& carta);

[[nodiscard]] ElencoLetto leggiElenco(const QString& tableText);
[[nodiscard]] UnitaControllata controllaUnita(const UnitaScritta& scritta, StatoControllo& stato);

void controllaDati(const Fabbricato& fabbricato, Osservazioni& osservazioni);
void controllaTabelle(const Fabbricato& fabbricato, Osservazioni& osservazioni);
void controllaScale(const Fabbricato& fabbricato, Osservazioni& osservazioni);
void controllaElenchi(const Fabbricato& fabbricato, Osservazioni& osservazioni);
void controllaRegistro(const Fabbricato& fabbricato, Osservazioni& osservazioni);
void controllaVaniSimili(const Fabbricato& fabbricato, Osservazioni& osservazioni);
void controllaCifre(const Fabbricato& fabbricato, Osservazioni& osservazioni);

} // namespace zelto::calc

// SPDX-License-Identifier: GPL-3.0-or-later
// What the check of a job looks for.
#pragma once

#include <QStringView>

#include <span>

namespace zelto::calc {

enum class Gravita {
    Errore, ///< makes a figure wrong without doubt
    Avviso, ///< is probably not meant
    Nota    ///< one may want to know
};

/// In the order of their table.
enum class Regola {
    RiferimentoIgnoto,
    TestoNonNumero,
    CampoVuoto,
    ConsistenzaNonPositiva,
    ConsistenzaFuoriMisura,
    FattoreFuoriMisura,
    VanoOrfano,
    TroppiVani,
    NessunaUnita,
    TroppeUnita,
    UnitaSenzaVani,
    TotaleNonPositivo,
    RiferimentoMancante,
    RiferimentoDoppio,
    ScalaIgnota,
    SegnoSenzaTabella,
    AltezzaVuota,
    AltezzaNegativa,
    AltezzeDiverse,
    RigheEscluse,
    CodiceDoppio,
    ValoreNonNumero,
    CodiceInutilizzato,
    NomeMancante,
    TabellaVuota,
    ScalaDoppia,
    ScalaSenzaUnita,
    PercentualeFuoriMisura,
    PercentualeZero,
    CodiceLungo,
    DescrizioneMancante,
    DataMancante,
    RelazioneMancante,
    CifraTagliata,
    NomiUguali,
    NomeTagliato,
};

struct DescrizioneRegola
{
    Regola regola;
    Gravita gravita;
    QStringView argomento; ///< what it looks at, by which remarks are grouped
    QStringView che;       ///< what is odd
    QStringView perche;
};

/// All rules; each stands at its place in Regola.
[[nodiscard]] std::span<const DescrizioneRegola> regole();
[[nodiscard]] const DescrizioneRegola& descrizione(Regola regola);

/// "errore", "avviso" or "nota".
[[nodiscard]] QStringView nome(Gravita gravita);

} // namespace zelto::calc

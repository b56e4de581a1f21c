// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/calc_error.h"
#include "calc/coefficient_list.h"
#include "calc/modello_lavoro.h"
#include "calc/written_job.h"
#include "store/database.h"

#include <array>

namespace zelto::calc {

/// Reads a whole job into memory: resolves every coefficient written as a reference and forms the
/// sizes of every room. Throws CalcError for a job beyond the limits of the model (300 units, 50
/// rooms in a unit) or with sizes beyond any number, and DatabaseError for what cannot be read.
ModelloLavoro CaricaLavoro(store::Database& lavoro);

/// The lists of the coefficients; the first group, the room names, takes no part in the
/// calculation.
using Liste = std::array<CoefficientList, store::Coefficients>;

/// The lists that the references in a job's rooms are resolved by.
Liste CaricaListe(store::Database& lavoro);
Liste formaListe(const ElenchiScritti& elenchi);

/// What the parts of a job count as: the job without units, a unit without rooms, a room with its
/// sizes. Heights and sizes may be infinite.
ModelloLavoro formaDati(const DatiScritti& dati);
UnitaImmobiliare formaUnita(const UnitaScritta& scritta);
Vano formaVano(const QString& ambiente, const TestiVano& testi, Liste& liste);

/// Brings one unit of a loaded job up to date after it was changed, added or deleted, by its
/// number. The rest of the job must not have changed since it was loaded. Throws as CaricaLavoro
/// does and leaves the model as it was then.
void RicaricaUnita(store::Database& lavoro, ModelloLavoro& modello, int rifUI);

} // namespace zelto::calc

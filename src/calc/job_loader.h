// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/calc_error.h"
#include "calc/modello_lavoro.h"
#include "store/database.h"

namespace zelto::calc {

/// Reads a whole job into memory: resolves every coefficient written as a reference and forms the
/// sizes of every room. Throws CalcError for a job beyond the limits of the model (300 units, 50
/// rooms in a unit) or with sizes beyond any number, and DatabaseError for what cannot be read.
ModelloLavoro CaricaLavoro(store::Database& lavoro);

} // namespace zelto::calc

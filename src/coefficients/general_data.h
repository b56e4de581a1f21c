// SPDX-License-Identifier: GPL-3.0-or-later
// The record of a job's general data.
#pragma once

#include "store/job_limits.h"

#include <QString>

#include <array>

namespace zelto::store {
class Database;
} // namespace zelto::store

namespace zelto::coefficients {

inline constexpr int NumGeneralTexts = 16;

/// The texts of the record in the order of its fields behind the key.
using GeneralTexts = std::array<QString, NumGeneralTexts>;

/// Places in GeneralTexts; the names of the special tables follow one another.
enum GeneralText : int {
    TextDescrizione,
    TextDescrizionee,
    TextNote,
    TextData, ///< dd/mm/yyyy
    TextRelazione,
    TextFirstTable,
    TextTabellaCodici = TextFirstTable + store::SpecialTables
};

/// The texts of the first record; a Null one is empty. A job without a record gets one first.
/// Throws DatabaseError.
[[nodiscard]] GeneralTexts loadGeneralData(store::Database& lavoro);

/// Stores all texts at once in place of those that were loaded: an empty one as Null, a date as
/// such and whole numbers without blanks. Throws DatabaseError, naming the field, and leaves the
/// job as it was then: RecordChanged when it holds other texts by now.
void saveGeneralData(store::Database& lavoro, const GeneralTexts& texts,
                     const GeneralTexts& loaded);

} // namespace zelto::coefficients

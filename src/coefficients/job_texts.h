// SPDX-License-Identifier: GPL-3.0-or-later
// The records of general data and of coefficient groups, of which a job has one each.
#pragma once

#include "text/literals.h"

#include <QMap>
#include <QString>

#include <functional>

namespace zelto::store {
class Database;
} // namespace zelto::store

namespace zelto::coefficients {

/// The texts of such a record by the names of their fields, a date as dd/mm/yyyy. Empty ones, which
/// are Null in the job, are left out.
using JobTexts = QMap<QString, QString>;

/// The texts of the record in one of the two tables; a job without it gets one first. Throws
/// DatabaseError.
[[nodiscard]] JobTexts loadTexts(store::Database& lavoro, QStringView table);

/// Stores all texts at once in place of those that were loaded, and what else belongs to them: it
/// is done first, while the job still holds the old ones. Throws DatabaseError, naming the field,
/// and leaves the job as it was then: RecordChanged when it holds other texts by now.
void saveTexts(
    store::Database& lavoro, QStringView table, const JobTexts& texts, const JobTexts& loaded,
    const std::function<void()>& along = [] {});

} // namespace zelto::coefficients

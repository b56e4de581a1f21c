// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/recovery/found_record.h"

#include <QStringView>

namespace zelto::store {

/// A record that a table of the job can take.
struct TableRecord
{
    QStringView table;
    Record values;
};

/// Whether it has the form of a unit or a room, be it readable or not.
[[nodiscard]] bool isListed(const FoundRecord& found);

/// Tells by kind, number of fields and key to which table of a job a record belongs. None when it
/// is no record of a job, or its key is lost.
[[nodiscard]] std::optional<TableRecord> recordOfJob(const FoundRecord& found);

/// The record as that table takes it, with key and numbers that agree; none when both are lost.
[[nodiscard]] std::optional<TableRecord> recordOfTable(QStringView table, const FoundRecord& found);

} // namespace zelto::store

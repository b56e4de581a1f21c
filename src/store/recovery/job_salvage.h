// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/recovery/tree_page.h"
#include "store/value.h"

#include <QByteArray>
#include <QStringView>

#include <map>
#include <vector>

namespace zelto::store {

/// The records of a job that can still be read in the bytes of its damaged file.
struct SalvagedJob
{
    /// By the table's name, in the order in which they are to be stored: of two with the same key
    /// the first counts.
    std::map<QStringView, std::vector<Record>> records;

    /// Records, or fields of records, that cannot be read.
    int broken = 0;
};

/// Reads every page, whatever the tables' own pages look like.
[[nodiscard]] SalvagedJob salvage(const QByteArray& bytes);

} // namespace zelto::store

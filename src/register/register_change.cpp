// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_change.h"

#include <algorithm>
#include <iterator>

namespace zelto::registro {

int RecordChange::unit() const
{
    const int field = table == Table::Units ? static_cast<int>(UnitNumber) : RoomUnit;
    return static_cast<int>(record()[static_cast<std::size_t>(field)].integer());
}

QList<int> RegisterChange::units() const
{
    QList<int> numbers;
    for (const RecordChange& change : records)
        if (const int unit = change.unit(); !numbers.contains(unit))
            numbers.append(unit);
    return numbers;
}

RegisterChange RegisterChange::reversed() const
{
    RegisterChange back{.caption = caption, .records = {}};
    back.records.reserve(records.size());
    std::transform(records.rbegin(), records.rend(), std::back_inserter(back.records),
                   [](const RecordChange& change) {
                       return RecordChange{
                           .table = change.table, .before = change.after, .after = change.before};
                   });
    return back;
}

} // namespace zelto::registro

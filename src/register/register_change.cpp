// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_change.h"

#include <algorithm>
#include <iterator>

namespace zelto::registro {

QString textOf(const Record& record, int field)
{
    return record[static_cast<std::size_t>(field)].text();
}

int numberOf(const Record& record, int field)
{
    return static_cast<int>(record[static_cast<std::size_t>(field)].integer());
}

int RecordChange::unit() const
{
    return numberOf(record(), table == Table::Units ? static_cast<int>(UnitNumber) : RoomUnit);
}

QList<int> RecordChange::fields() const
{
    const Record none(record().size());
    const Record& old = before.empty() ? none : before;
    const Record& now = after.empty() ? none : after;
    QList<int> changed;
    const int first = table == Table::Units ? static_cast<int>(UnitRiferimento) : RoomAmbiente;
    for (auto field = static_cast<std::size_t>(first); field < now.size(); ++field)
        if (old[field] != now[field])
            changed.append(static_cast<int>(field));
    return changed;
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

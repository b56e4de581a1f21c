// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/table_export.h"

#include "reports/distinct_names.h"

namespace zelto::reports {

QStringList sheetNames(const Tables& tables)
{
    QStringList names;
    for (const TableReport& table : tables)
        names << table.name;
    return distinctNames(names,
                         {.reserved = u"[]:*?/\\'", .longest = 31, .fallback = u"Tabella"_s});
}

} // namespace zelto::reports

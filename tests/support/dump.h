// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/database.h"

#include <QStringList>

namespace zelto::test {

/// Every record of every table as a line of its own, Null as "-" and texts in brackets.
inline QString dumpOf(store::Database& database)
{
    QStringList lines;
    for (const QString& table : database.tableNames())
        for (auto record = database.openTable(table); !record.EndOfFile(); record.MoveNext()) {
            QStringList fields;
            for (int field = 0; field < record.fieldCount(); ++field)
                fields << (record.isNull(field) ? u"-"_s : u'[' + record.text(field) + u']');
            lines << table + u": "_s + fields.join(u' ');
        }
    lines.sort();
    return lines.join(u'\n');
}

} // namespace zelto::test

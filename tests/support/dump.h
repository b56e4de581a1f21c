// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/database.h"

#include <QStringList>

namespace zelto::test {

/// The records as lines, Null as "-" and texts in brackets.
inline QStringList dumpOf(store::Query& records)
{
    QStringList lines;
    for (; !records.atEnd(); records.next()) {
        QStringList fields;
        for (int field = 0; field < records.fieldCount(); ++field)
            fields << (records.isNull(field) ? u"-"_s : u'[' + records.text(field) + u']');
        lines << fields.join(u' ');
    }
    return lines;
}

/// Every record of every table as a line of its own.
inline QString dumpOf(store::Database& database)
{
    QStringList lines;
    for (const QString& table : database.tableNames()) {
        store::Query records = database.records(table);
        for (const QString& line : dumpOf(records))
            lines << table + u": "_s + line;
    }
    lines.sort();
    return lines.join(u'\n');
}

} // namespace zelto::test

// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/table_layout.h"

#include "store/database_error.h"
#include "store/engine_errors.h"
#include "store/table_def.h"

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>
#include <algorithm>

namespace zelto::store {

namespace {

/// A name that could not be written back as it was read is not one of ours.
QString nameOf(const Connection& connection, const SQLite::Column& column)
{
    const QByteArray bytes = column.getText();
    if (!bytes.isValidUtf8())
        throw damagedFile(connection.path, u"nome non valido"_s);
    return QString::fromUtf8(bytes);
}

QString findName(Connection& connection, QStringView name)
{
    for (const QString& table : tableNames(connection))
        if (table.compare(name, Qt::CaseInsensitive) == 0)
            return table;
    throw DatabaseError(
        ErrorNumber::TableNotFound,
        u"La tabella «%1» non è presente nel file «%2»."_s.arg(name, connection.path));
}

/// Fills in fields and key; a key of several fields is not one that a recordset can seek.
void readFields(Connection& connection, TableLayout& layout)
{
    SQLite::Statement columns(connection.handle,
                              "SELECT name, pk FROM pragma_table_info(?) ORDER BY cid");
    columns.bind(1, layout.name.toStdString());
    bool severalKeys = false;
    while (columns.executeStep()) {
        const int keyPosition = columns.getColumn(1).getInt();
        if (keyPosition == 1)
            layout.keyField = static_cast<int>(layout.fields.size());
        severalKeys = severalKeys || keyPosition > 1;
        layout.fields += nameOf(connection, columns.getColumn(0));
    }
    if (severalKeys)
        layout.keyField.reset();
}

bool hasRowNumbers(Connection& connection, const QString& table)
{
    SQLite::Statement kind(connection.handle,
                           "SELECT wr FROM pragma_table_list WHERE schema = 'main' AND name = ?");
    kind.bind(1, table.toStdString());
    return kind.executeStep() && kind.getColumn(0).getInt() == 0;
}

/// A name of the row number that no field of the table hides, or else the key.
QString identityOf(Connection& connection, const TableLayout& layout)
{
    if (hasRowNumbers(connection, layout.name))
        for (const QString& name : {u"rowid"_s, u"_rowid_"_s, u"oid"_s})
            if (!layout.fields.contains(name, Qt::CaseInsensitive))
                return name;
    if (layout.keyField)
        return quoted(layout.fields[*layout.keyField]);
    throw DatabaseError(ErrorNumber::Damaged,
                        u"I record della tabella «%1» del file «%2» non sono distinguibili."_s.arg(
                            layout.name, connection.path));
}

} // namespace

QStringList tableNames(Connection& connection)
{
    return onFile(connection.path, [&] {
        SQLite::Statement tables(connection.handle,
                                 "SELECT name FROM sqlite_schema WHERE type = 'table' AND name "
                                 "NOT LIKE 'sqlite\\_%' ESCAPE '\\' ORDER BY rowid");
        QStringList names;
        while (tables.executeStep())
            names += nameOf(connection, tables.getColumn(0));
        return names;
    });
}

TableLayout readLayout(Connection& connection, QStringView name)
{
    return onFile(connection.path, [&] {
        TableLayout layout{.name = findName(connection, name)};
        readFields(connection, layout);
        layout.identity = identityOf(connection, layout);
        return layout;
    });
}

} // namespace zelto::store

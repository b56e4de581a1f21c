// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/table_writer.h"

#include "store/engine_errors.h"
#include "store/recordset.h"
#include "store/table_def.h"

#include <QStringList>

#include <SQLiteCpp/Statement.h>

namespace zelto::store {

using namespace Qt::StringLiterals;

TableWriter::TableWriter(ConnectionPtr connection, const TableDef& table)
    : m_connection(std::move(connection))
{
    const QStringList places(static_cast<qsizetype>(table.fields.size()), u"?"_s);
    const QString sql =
        u"INSERT INTO %1 VALUES (%2)"_s.arg(quoted(table.name), places.join(u", "_s));
    m_insert = onFile(m_connection->path, [&] {
        return std::make_unique<SQLite::Statement>(m_connection->handle, sql.toStdString());
    });
}

TableWriter::~TableWriter() = default;

void TableWriter::add(std::span<const Value> record)
{
    onFile(m_connection->path, [&] {
        m_insert->tryReset();
        int place = 0;
        for (const Value& value : record)
            bindValue(*m_insert, ++place, value);
        m_insert->exec();
    });
}

} // namespace zelto::store

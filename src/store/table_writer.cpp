// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/table_writer.h"

#include "store/engine_errors.h"
#include "store/recordset.h"
#include "store/table_def.h"

#include <QStringEncoder>
#include <QStringList>

#include <SQLiteCpp/Statement.h>

namespace zelto::store {

TableWriter::TableWriter(ConnectionPtr connection, const TableDef& table)
    : m_connection(std::move(connection))
{
    m_texts.resize(table.fields.size());
    const QStringList places(static_cast<qsizetype>(table.fields.size()), u"?"_s);
    const QString sql =
        u"INSERT INTO %1 VALUES (%2)"_s.arg(quoted(table.name), places.join(u", "_s));
    m_insert = onFile(m_connection->path, [&] {
        return std::make_unique<SQLite::Statement>(m_connection->handle, sql.toStdString());
    });
}

TableWriter::~TableWriter() = default;

/// Texts stay where they are until the statement has run, in memory that is used again.
void TableWriter::bind(int place, const Value& value)
{
    if (value.isNull() || value.isInteger()) {
        bindValue(*m_insert, place, value);
        return;
    }
    const QString text = storedText(value);
    std::string& utf8 = m_texts[static_cast<std::size_t>(place) - 1];
    QStringEncoder encoder(QStringEncoder::Utf8);
    utf8.resize(static_cast<std::size_t>(encoder.requiredSpace(text.size())));
    const char* end = encoder.appendToBuffer(utf8.data(), text);
    utf8.resize(static_cast<std::size_t>(end - utf8.data()));
    // A text that the engine knows to end with NUL is not copied by every rule that looks at it;
    // one that has a NUL inside has to reach the rule that refuses it.
    if (utf8.find('\0') == std::string::npos)
        m_insert->bindNoCopy(place, utf8.c_str());
    else
        m_insert->bindNoCopy(place, utf8);
}

void TableWriter::add(std::span<const Value> record)
{
    onFile(m_connection->path, [&] {
        m_insert->tryReset();
        int place = 0;
        for (const Value& value : record)
            bind(++place, value);
        m_insert->exec();
    });
}

} // namespace zelto::store

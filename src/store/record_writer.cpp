// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/record_writer.h"

#include "store/engine_errors.h"
#include "store/query.h"
#include "store/table_def.h"

#include <QStringEncoder>
#include <QStringList>

#include <SQLiteCpp/Statement.h>

namespace zelto::store {

RecordWriter::RecordWriter(ConnectionPtr connection, const TableDef& table)
    : m_connection(std::move(connection)), m_table(&table), m_texts(table.fields.size())
{}

RecordWriter::RecordWriter(RecordWriter&&) noexcept = default;
RecordWriter::~RecordWriter() = default;

/// Texts stay where they are until the statement has run, in memory that is used again.
void RecordWriter::bind(int place, const Value& value)
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

void RecordWriter::add(std::span<const Value> record)
{
    onFile(m_connection->path, [&] {
        if (!m_insert) {
            const QStringList places(static_cast<qsizetype>(m_texts.size()), u"?"_s);
            const QString sql =
                u"INSERT INTO %1 VALUES (%2)"_s.arg(quoted(m_table->name), places.join(u", "_s));
            m_insert = std::make_unique<SQLite::Statement>(m_connection->handle, sql.toStdString());
        }
        m_insert->tryReset();
        m_insert->clearBindings();
        int place = 0;
        for (const Value& value : record)
            bind(++place, value);
        m_insert->exec();
        noteWritten(*m_connection);
    });
}

void RecordWriter::change(const Record& before, const Record& after)
{
    const bool keyed = !m_table->primaryKey.isEmpty();
    QStringList settings;
    Record values;
    for (std::size_t field = 0; field < after.size(); ++field)
        if (after[field] != before[field]) {
            values.push_back(after[field]);
            settings += u"%1 = :%2"_s.arg(quoted(m_table->fields[field].name)).arg(values.size());
        }
    if (settings.isEmpty())
        return;
    const QString found =
        keyed ? u"%1 = :%2"_s.arg(quoted(m_table->primaryKey)).arg(values.size() + 1)
              : u"rowid = (SELECT min(rowid) FROM %1)"_s.arg(quoted(m_table->name));
    if (keyed)
        values.push_back(before.front());
    execute(
        *m_connection,
        u"UPDATE %1 SET %2 WHERE %3"_s.arg(quoted(m_table->name), settings.join(u", "_s), found),
        values);
}

void RecordWriter::remove(const Value& key)
{
    execute(
        *m_connection,
        u"DELETE FROM %1 WHERE %2 = :1"_s.arg(quoted(m_table->name), quoted(m_table->primaryKey)),
        {&key, 1});
}

} // namespace zelto::store

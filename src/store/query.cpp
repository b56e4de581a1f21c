// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/query.h"

#include "store/engine_errors.h"
#include "store/files/database_error.h"
#include "store/job_limits.h"

#include <QByteArrayView>

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>
#include <sqlite3.h>
#include <utility>

namespace zelto::store {

namespace {

std::string_view bytesOf(const SQLite::Column& column)
{
    // Text first: asking for it may convert the content, and the size is that of the conversion.
    const char* const text = column.getText();
    return {text, static_cast<std::size_t>(column.getBytes())};
}

/// The bytes stay in utf8.
void bindText(SQLite::Statement& statement, int place, const QString& text, QByteArray& utf8)
{
    constexpr qsizetype Beginning = 20;
    if (text.size() > LongestMemo)
        throw memoTooLong(text.size(), u"«%1…»"_s.arg(text.left(Beginning)));
    utf8 = text.toUtf8();
    // A text that the engine knows to end with NUL is not copied by every rule that looks at it;
    // one that has a NUL inside has to reach the rule that refuses it.
    if (utf8.contains('\0'))
        statement.bind(place, utf8.toStdString());
    else
        statement.bindNoCopy(place, utf8.constData());
}

/// Binds the n-th parameter to ":n"; every name must have a parameter and every parameter a name.
/// Texts stay in the result, which must be kept as long as the statement runs.
std::vector<QByteArray> bindParameters(SQLite::Statement& statement,
                                       std::span<const Value> parameters)
{
    if (static_cast<std::size_t>(statement.getBindParameterCount()) != parameters.size())
        throw DatabaseError(ErrorNumber::Internal,
                            u"Numero di parametri errato nell'istruzione «%1»."_s.arg(
                                QString::fromStdString(statement.getQuery())));
    std::vector<QByteArray> texts(parameters.size());
    for (std::size_t i = 0; i < parameters.size(); ++i)
        bindValue(statement, statement.getIndex((":" + std::to_string(i + 1)).c_str()),
                  parameters[i], texts[i]);
    return texts;
}

} // namespace

Query::Query(ConnectionPtr connection, const QString& sql, QString subject,
             std::span<const Value> parameters)
    : m_connection(std::move(connection)), m_subject(std::move(subject))
{
    m_statement = onFile(m_connection->path, [&] {
        return std::make_shared<SQLite::Statement>(m_connection->handle, sql.toStdString());
    });
    restart(parameters);
}

void Query::restart(std::span<const Value> parameters)
{
    onFile(m_connection->path, [&] {
        m_statement->reset();
        m_texts = bindParameters(*m_statement, parameters);
    });
    step();
}

void Query::step()
{
    m_onRecord = false;
    onFile(m_connection->path, [&] { m_onRecord = m_statement->executeStep(); });
}

void Query::next()
{
    (void)column(0);
    step();
}

int Query::fieldCount() const
{
    return m_statement->getColumnCount();
}

QString Query::fieldName(int ordinal) const
{
    return QString::fromUtf8(m_statement->getColumnName(ordinal));
}

SQLite::Column Query::column(int ordinal) const
{
    if (ordinal < 0 || ordinal >= fieldCount())
        throw DatabaseError(ErrorNumber::FieldNotFound,
                            u"Il campo numero %1 non è presente in «%2»."_s.arg(
                                QString::number(ordinal), m_subject));
    if (!m_onRecord)
        throw DatabaseError(ErrorNumber::NoCurrentRecord,
                            u"Nessun record corrente in «%1»."_s.arg(m_subject));
    return m_statement->getColumn(ordinal);
}

DatabaseError Query::badValue(int ordinal, QStringView reason) const
{
    return {ErrorNumber::BadValue,
            u"Il campo «%1» di «%2» %3."_s.arg(fieldName(ordinal), m_subject, reason)};
}

Value Query::field(int ordinal) const
{
    const SQLite::Column content = column(ordinal);
    switch (content.getType()) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return content.getInt64();
    case SQLITE_TEXT:
        break;
    default:
        throw badValue(ordinal, u"non contiene né un testo né un numero intero");
    }
    const QByteArrayView bytes = bytesOf(content);
    if (bytes.contains('\0') || !bytes.isValidUtf8())
        throw badValue(ordinal, u"contiene un testo non valido");
    return QString::fromUtf8(bytes);
}

bool Query::isNull(int ordinal) const
{
    return column(ordinal).isNull();
}

qint64 Query::integer(int ordinal) const
{
    const SQLite::Column content = column(ordinal);
    if (content.isInteger())
        return content.getInt64();
    try {
        return field(ordinal).integer();
    } catch (const DatabaseError&) {
        throw badValue(ordinal, u"non contiene un numero intero");
    }
}

std::string_view Query::utf8(int ordinal) const
{
    return bytesOf(column(ordinal));
}

Record Query::record() const
{
    Record record(static_cast<std::size_t>(fieldCount()));
    int ordinal = 0;
    for (Value& value : record)
        value = field(ordinal++);
    return record;
}

std::vector<Record> Query::records()
{
    std::vector<Record> records;
    for (; !atEnd(); next())
        records.push_back(record());
    return records;
}

int execute(Connection& connection, const QString& sql, std::span<const Value> parameters)
{
    return onFile(connection.path, [&] {
        SQLite::Statement statement(connection.handle, sql.toStdString());
        const std::vector<QByteArray> texts = bindParameters(statement, parameters);
        const int changed = statement.exec();
        noteWritten(connection);
        return changed;
    });
}

void noteWritten(Connection& connection)
{
    if (sqlite3_get_autocommit(connection.handle.getHandle()) != 0)
        connection.remember();
}

void bindValue(SQLite::Statement& statement, int place, const Value& value, QByteArray& utf8)
{
    if (value.isNull())
        statement.bind(place);
    else if (value.isInteger())
        statement.bind(place, static_cast<int64_t>(value.integer()));
    else
        bindText(statement, place, value.text(), utf8);
}

DatabaseError memoTooLong(qint64 length, const QString& subject)
{
    return {ErrorNumber::TextTooLong,
            u"Il testo di %1 è troppo lungo: %2 caratteri, al massimo %3."_s.arg(subject)
                .arg(length)
                .arg(LongestMemo)};
}

} // namespace zelto::store

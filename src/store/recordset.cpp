// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/recordset.h"

#include "store/database_error.h"
#include "store/engine_errors.h"
#include "store/job_limits.h"

#include <QByteArrayView>

#include <SQLiteCpp/Column.h>
#include <SQLiteCpp/Statement.h>
#include <utility>

namespace zelto::store {

namespace {

QByteArrayView viewOf(std::string_view bytes)
{
    return {bytes.data(), static_cast<qsizetype>(bytes.size())};
}

std::string_view bytesOf(const SQLite::Column& column)
{
    // Text first: asking for it may convert the content, and the size is that of the conversion.
    const char* const text = column.getText();
    return {text, static_cast<std::size_t>(column.getBytes())};
}

} // namespace

Recordset::Recordset(ConnectionPtr connection, QString subject)
    : m_connection(std::move(connection)), m_subject(std::move(subject))
{}

int Recordset::ordinal(QStringView name) const
{
    for (int i = 0; i < fieldCount(); ++i)
        if (m_fields[i].compare(name, Qt::CaseInsensitive) == 0)
            return i;
    throw DatabaseError(ErrorNumber::FieldNotFound,
                        u"Il campo «%1» non è presente in «%2»."_s.arg(name, m_subject));
}

void Recordset::requireField(int ordinal) const
{
    if (ordinal < 0 || ordinal >= fieldCount())
        throw DatabaseError(ErrorNumber::FieldNotFound,
                            u"Il campo numero %1 non è presente in «%2»."_s.arg(
                                QString::number(ordinal), m_subject));
}

void Recordset::requireRecord() const
{
    if (!m_onRecord)
        throw DatabaseError(ErrorNumber::NoCurrentRecord,
                            u"Nessun record corrente in «%1»."_s.arg(m_subject));
}

Recordset::StatementPtr Recordset::prepare(const QString& sql) const
{
    return onFile(m_connection->path, [&] {
        return std::make_shared<SQLite::Statement>(m_connection->handle, sql.toStdString());
    });
}

void Recordset::start(StatementPtr statement)
{
    m_statement = std::move(statement);
    m_onRecord = false;
    step();
}

void Recordset::step()
{
    onFile(m_connection->path, [&] { m_onRecord = m_statement->executeStep(); });
}

void Recordset::leaveRecord()
{
    // An idle statement holds no lock on the file.
    if (m_statement)
        m_statement->tryReset();
    m_onRecord = false;
}

SQLite::Column Recordset::column(int index) const
{
    return m_statement->getColumn(index);
}

SQLite::Column Recordset::fieldColumn(int ordinal) const
{
    requireField(ordinal);
    requireRecord();
    return column(ordinal);
}

Value Recordset::value(int index) const
{
    const SQLite::Column content = column(index);
    if (content.isNull())
        return {};
    if (content.isInteger())
        return content.getInt64();
    if (content.isText())
        return checkedText(bytesOf(content), index);
    throw DatabaseError(
        ErrorNumber::BadValue,
        u"Il campo «%1» di «%2» non contiene né un testo né un numero intero."_s.arg(
            m_fields.value(index), m_subject));
}

QString Recordset::checkedText(std::string_view bytes, int index) const
{
    const QByteArrayView view = viewOf(bytes);
    if (view.contains('\0') || !view.isValidUtf8())
        throw DatabaseError(ErrorNumber::BadValue,
                            u"Il campo «%1» di «%2» contiene un testo non valido."_s.arg(
                                m_fields.value(index), m_subject));
    return QString::fromUtf8(view);
}

Value Recordset::field(int ordinal) const
{
    requireField(ordinal);
    requireRecord();
    return value(ordinal);
}

bool Recordset::isNull(int ordinal) const
{
    return fieldColumn(ordinal).isNull();
}

QString Recordset::text(int ordinal) const
{
    return field(ordinal).text();
}

std::string_view Recordset::utf8(int ordinal) const
{
    return bytesOf(fieldColumn(ordinal));
}

qint64 Recordset::integer(int ordinal) const
{
    const SQLite::Column content = fieldColumn(ordinal);
    if (content.isInteger())
        return content.getInt64();
    try {
        return value(ordinal).integer();
    } catch (const DatabaseError&) {
        throw DatabaseError(ErrorNumber::BadValue,
                            u"Il campo «%1» di «%2» non contiene un numero intero."_s.arg(
                                m_fields[ordinal], m_subject));
    }
}

QueryRecordset::QueryRecordset(ConnectionPtr connection, const QString& sql,
                               std::span<const Value> parameters)
    : Recordset(std::move(connection), sql), m_query(prepare(sql))
{
    QStringList names;
    for (int i = 0; i < m_query->getColumnCount(); ++i)
        names += QString::fromUtf8(m_query->getColumnName(i));
    setFields(std::move(names));
    onFile(this->connection().path, [&] { bindParameters(*m_query, parameters); });
    start(m_query);
}

void QueryRecordset::MoveFirst()
{
    leaveRecord();
    start(m_query);
    requireRecord();
}

void QueryRecordset::MoveNext()
{
    requireRecord();
    step();
}

void bindParameters(SQLite::Statement& statement, std::span<const Value> parameters)
{
    if (static_cast<std::size_t>(statement.getBindParameterCount()) != parameters.size())
        throw DatabaseError(ErrorNumber::Internal,
                            u"Numero di parametri errato nell'istruzione «%1»."_s.arg(
                                QString::fromStdString(statement.getQuery())));
    int number = 0;
    for (const Value& parameter : parameters)
        bindValue(statement, statement.getIndex((":" + std::to_string(++number)).c_str()),
                  parameter);
}

void bindValue(SQLite::Statement& statement, int place, const Value& value)
{
    if (value.isNull())
        statement.bind(place);
    else if (value.isInteger())
        statement.bind(place, static_cast<int64_t>(value.integer()));
    else
        statement.bind(place, storedText(value).toStdString());
}

QString storedText(const Value& value)
{
    constexpr qsizetype Beginning = 20;
    QString text = value.text();
    requireMemoLength(text.size(), u"«%1…»"_s.arg(text.left(Beginning)));
    return text;
}

} // namespace zelto::store

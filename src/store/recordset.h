// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/connection.h"
#include "store/value.h"

#include <QString>
#include <QStringList>
#include <QStringView>

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace SQLite {
class Statement;
class Column;
} // namespace SQLite

namespace zelto::store {

/// Reading what table and query recordsets have in common: the fields of the current record.
/// Every operation throws DatabaseError: NoCurrentRecord without a current record, FieldNotFound
/// for an ordinal or name that is none, BadValue for a content that is neither text nor whole
/// number. Ordinals count from 0.
class Recordset
{
public:
    /// True behind the last record, of an empty recordset, and after a Seek without match.
    [[nodiscard]] bool EndOfFile() const { return !m_onRecord; }

    [[nodiscard]] int fieldCount() const { return static_cast<int>(m_fields.size()); }
    [[nodiscard]] const QStringList& fieldNames() const { return m_fields; }

    /// The ordinal of the field, found without regard to letter case.
    [[nodiscard]] int ordinal(QStringView name) const;

    [[nodiscard]] Value field(int ordinal) const;
    [[nodiscard]] Value field(QStringView name) const { return field(ordinal(name)); }
    [[nodiscard]] bool isNull(int ordinal) const;

    /// The field as text, a number in decimal; empty for Null.
    [[nodiscard]] QString text(int ordinal) const;

    /// The field's bytes as stored, unchecked and without a copy, until the recordset moves; empty
    /// for Null.
    [[nodiscard]] std::string_view utf8(int ordinal) const;

    /// The field as whole number; 0 for Null.
    [[nodiscard]] qint64 integer(int ordinal) const;

protected:
    /// subject is what messages call the records.
    Recordset(ConnectionPtr connection, QString subject);
    Recordset(Recordset&&) noexcept = default;
    Recordset& operator=(Recordset&&) noexcept = default;
    ~Recordset() = default;

    using StatementPtr = std::shared_ptr<SQLite::Statement>;

    [[nodiscard]] StatementPtr prepare(const QString& sql) const;
    [[nodiscard]] Connection& connection() const { return *m_connection; }
    [[nodiscard]] const QString& subject() const { return m_subject; }

    void setFields(QStringList fields) { m_fields = std::move(fields); }
    void requireField(int ordinal) const;
    void requireRecord() const;

    /// Makes the statement the source of records, from its first one on.
    void start(StatementPtr statement);
    void step();
    void leaveRecord();

    /// Any column of the running statement, those behind the fields included.
    [[nodiscard]] SQLite::Column column(int index) const;
    [[nodiscard]] Value value(int index) const;

private:
    [[nodiscard]] SQLite::Column fieldColumn(int ordinal) const;
    [[nodiscard]] QString checkedText(std::string_view bytes, int index) const;

    ConnectionPtr m_connection;
    QString m_subject;
    QStringList m_fields;
    StatementPtr m_statement;
    bool m_onRecord = false;
};

/// The records of a query, read from front to back.
class QueryRecordset : public Recordset
{
public:
    /// ":1", ":2" … in the statement stand for the parameters.
    QueryRecordset(ConnectionPtr connection, const QString& sql, std::span<const Value> parameters);

    /// Runs the query once more.
    void MoveFirst();
    void MoveNext();

private:
    StatementPtr m_query;
};

/// Binds the n-th parameter to ":n"; every name must have a parameter and every parameter a name.
void bindParameters(SQLite::Statement& statement, std::span<const Value> parameters);

/// Binds one value to the place, counted from 1.
void bindValue(SQLite::Statement& statement, int place, const Value& value);

/// The text of a value that goes to a file; throws TextTooLong when it is longer than a memo.
[[nodiscard]] QString storedText(const Value& value);

} // namespace zelto::store

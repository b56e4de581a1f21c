// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/connection.h"
#include "store/files/database_error.h"
#include "store/value.h"

#include <QString>
#include <QStringList>

#include <memory>
#include <span>
#include <string_view>

namespace SQLite {
class Statement;
class Column;
} // namespace SQLite

namespace zelto::store {

/// The records that a statement finds, read from front to back. While it stands on a record, other
/// programs cannot write the file. Every operation throws DatabaseError: NoCurrentRecord behind the
/// last record, FieldNotFound for an ordinal that is none (they count from 0), BadValue for a
/// content that is neither text nor whole number.
class Query
{
public:
    /// Stands on the first record, if there is one. ":1", ":2" … in the statement stand for the
    /// parameters; subject is what messages call the records.
    Query(ConnectionPtr connection, const QString& sql, QString subject,
          std::span<const Value> parameters = {});

    /// Finds the records for other parameters.
    void restart(std::span<const Value> parameters);

    [[nodiscard]] bool atEnd() const { return !m_onRecord; }
    void next();

    [[nodiscard]] int fieldCount() const;
    [[nodiscard]] QString fieldName(int ordinal) const;

    [[nodiscard]] Value field(int ordinal) const;
    [[nodiscard]] bool isNull(int ordinal) const;

    /// The field as text, a number in decimal; empty for Null.
    [[nodiscard]] QString text(int ordinal) const { return field(ordinal).text(); }

    /// The field as whole number; 0 for Null.
    [[nodiscard]] qint64 integer(int ordinal) const;

    /// The field's bytes as stored, unchecked and without a copy, until the query moves; empty for
    /// Null.
    [[nodiscard]] std::string_view utf8(int ordinal) const;

    /// All fields.
    [[nodiscard]] Record record() const;

    /// This record and all that follow; it stands behind the last one then.
    [[nodiscard]] std::vector<Record> records();

private:
    void step();
    [[nodiscard]] SQLite::Column column(int ordinal) const;
    [[nodiscard]] DatabaseError badValue(int ordinal, QStringView reason) const;

    ConnectionPtr m_connection;
    QString m_subject;
    std::shared_ptr<SQLite::Statement> m_statement;
    std::vector<QByteArray> m_texts; ///< of the parameters
    bool m_onRecord = false;
};

/// Runs one statement without result, with parameters as those of a query. Returns the number of
/// records changed.
int execute(Connection& connection, const QString& sql, std::span<const Value> parameters);

/// To be called behind a change: outside of a transaction the file is another one by now.
void noteWritten(Connection& connection);

/// Binds one value to the place, counted from 1. The engine does not copy a text: its bytes stay in
/// utf8, which must be kept as long as the statement runs. Throws TextTooLong for a text that is
/// longer than a memo.
void bindValue(SQLite::Statement& statement, int place, const Value& value, QByteArray& utf8);

/// The error of a text of more characters than LongestMemo; subject says whose it is: "«Note» della
/// tabella «Dati Generali»".
[[nodiscard]] DatabaseError memoTooLong(qint64 length, const QString& subject);

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
// Table definitions, and the rules by which the file itself refuses values that do not fit.
#pragma once

#include "store/files/database_error.h"

#include <QString>
#include <QStringView>

#include <vector>

namespace zelto::store {

/// AutoNumber is assigned by the database; Date is a text "YYYY-MM-DD".
enum class FieldType { Text, Memo, Integer, AutoNumber, Date };

/// One field; size (in characters) counts for Text only, allowEmpty for Text and Memo.
struct FieldDef
{
    QString name;
    FieldType type = FieldType::Text;
    int size = 0;
    bool allowEmpty = false;
};

/// A table; primaryKey names the field of its primary index and is empty when there is none.
struct TableDef
{
    QString name;
    std::vector<FieldDef> fields{};
    QString primaryKey{};
};

/// A rule of a field.
struct FieldRule
{
    QString field;
    QString name;      ///< of its constraint, which says which field of which table refused a value
    QString condition; ///< in SQL; true for Null
};

/// The rules of all fields in field order.
[[nodiscard]] std::vector<FieldRule> rulesOf(const TableDef& table);

/// What the user reads when a value breaks the rule of that name, which need not be one of ours.
[[nodiscard]] DatabaseError brokenRule(const QString& name);

/// The CREATE TABLE statement with every rule as a named CHECK constraint.
[[nodiscard]] QString createTableSql(const TableDef& table);

/// The name in double quotes.
[[nodiscard]] QString quoted(QStringView name);

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
// Table definitions, and the rules by which the file itself refuses values that do not fit.
#pragma once

#include "store/database_error.h"

#include <QString>
#include <QStringView>

#include <optional>
#include <vector>

namespace zelto::store {

/// AutoNumber is a Long that the database assigns; Date is a text "YYYY-MM-DD".
enum class FieldType { Text, Memo, Integer, Long, AutoNumber, Date };

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

/// One condition on a field. Its constraint name in the file says which field of which table
/// refused a value, and why.
struct FieldRule
{
    enum class Kind { Type, NotEmpty, Length, NoNulCharacter, Range, Date };

    QString table;
    QString field;
    Kind kind = Kind::Type;

    [[nodiscard]] QString constraintName() const;

    /// The rule of that constraint; none when the name is not one of ours.
    static std::optional<FieldRule> fromConstraintName(const QString& name);

    /// What the user reads when a value breaks the rule.
    [[nodiscard]] DatabaseError error() const;
};

/// A rule with its SQL condition, which is true for Null.
struct RuleCondition
{
    FieldRule rule;
    QString condition;
};

/// The rules of all fields in field order.
[[nodiscard]] std::vector<RuleCondition> rulesOf(const TableDef& table);

/// The CREATE TABLE statement with every rule as a named CHECK constraint.
[[nodiscard]] QString createTableSql(const TableDef& table);

/// The name in double quotes.
[[nodiscard]] QString quoted(QStringView name);

} // namespace zelto::store

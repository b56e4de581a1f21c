// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/table_def.h"

#include <QStringList>

#include <algorithm>
#include <limits>
#include <utility>

namespace zelto::store {

namespace {

/// A kind of rule, by which the name of its constraint ends.
struct RuleKind
{
    QStringView name;
    ErrorNumber number;
    QStringView description;
};

constexpr RuleKind OfType{u"tipo", ErrorNumber::BadValue,
                          u"Il valore non è del tipo del campo «%1» della tabella «%2»."};
constexpr RuleKind NotEmpty{u"vuoto", ErrorNumber::EmptyNotAllowed,
                            u"Il campo «%1» della tabella «%2» non può essere una stringa vuota."};
constexpr RuleKind OfLength{u"lunghezza", ErrorNumber::TextTooLong,
                            u"Il testo è troppo lungo per il campo «%1» della tabella «%2»."};
constexpr RuleKind WithoutNul{
    u"caratteri", ErrorNumber::BadValue,
    u"Il testo per il campo «%1» della tabella «%2» contiene caratteri non ammessi."};
constexpr RuleKind InRange{u"intervallo", ErrorNumber::BadValue,
                           u"Il numero è fuori dall'intervallo del campo «%1» della tabella «%2»."};
constexpr RuleKind ADate{u"data", ErrorNumber::BadValue,
                         u"Il valore non è una data valida per il campo «%1» della tabella «%2»."};

using Conditions = std::vector<std::pair<RuleKind, QString>>;

Conditions textConditions(const FieldDef& field, const QString& column)
{
    Conditions conditions{{OfType, u"typeof(%1) IN ('text', 'null')"_s.arg(column)},
                          // length() stops at the first NUL, so no text may hold one.
                          {WithoutNul, u"instr(%1, char(0)) = 0"_s.arg(column)}};
    if (!field.allowEmpty)
        conditions.emplace_back(NotEmpty, u"%1 <> ''"_s.arg(column));
    if (field.type == FieldType::Text)
        conditions.emplace_back(OfLength, u"length(%1) <= %2"_s.arg(column).arg(field.size));
    return conditions;
}

template <typename Integer>
Conditions integerConditions(const QString& column)
{
    using Limits = std::numeric_limits<Integer>;
    return {{OfType, u"typeof(%1) IN ('integer', 'null')"_s.arg(column)},
            {InRange, u"%1 BETWEEN %2 AND %3"_s.arg(column).arg(Limits::min()).arg(Limits::max())}};
}

/// date() alone lets the 30th of February pass and fails on "now".
QString dateCondition(const QString& column)
{
    return u"CASE WHEN %1 GLOB '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]' "
           "THEN date(%1, '+0 days') IS %1 ELSE %1 IS NULL END"_s.arg(column);
}

Conditions conditionsOf(const FieldDef& field)
{
    const QString column = quoted(field.name);
    switch (field.type) {
    case FieldType::Integer:
        return integerConditions<qint16>(column);
    case FieldType::AutoNumber:
        return integerConditions<qint32>(column);
    case FieldType::Date:
        return {{ADate, dateCondition(column)}};
    default:
        return textConditions(field, column);
    }
}

QString columnType(FieldType type)
{
    switch (type) {
    case FieldType::Integer:
        return u"INTEGER"_s;
    case FieldType::AutoNumber:
        return u"INTEGER PRIMARY KEY"_s;
    case FieldType::Date:
        return u"TEXT"_s;
    default:
        return u"TEXT COLLATE NOCASE"_s;
    }
}

bool isAutoNumber(const FieldDef& field)
{
    return field.type == FieldType::AutoNumber;
}

} // namespace

std::vector<FieldRule> rulesOf(const TableDef& table)
{
    std::vector<FieldRule> rules;
    for (const FieldDef& field : table.fields)
        for (const auto& [kind, condition] : conditionsOf(field))
            rules.push_back({.field = field.name,
                             .name = u"%1|%2|%3"_s.arg(table.name, field.name, kind.name),
                             .condition = condition});
    return rules;
}

DatabaseError brokenRule(const QString& name)
{
    const QStringList parts = name.split(u'|');
    for (const RuleKind& kind : {OfType, NotEmpty, OfLength, WithoutNul, InRange, ADate})
        if (parts.size() == 3 && parts[2] == kind.name)
            return {kind.number, kind.description.toString().arg(parts[1], parts[0])};
    return {ErrorNumber::BadValue, u"Il valore non rispetta la regola «%1»."_s.arg(name)};
}

QString createTableSql(const TableDef& table)
{
    QStringList lines;
    for (const FieldDef& field : table.fields) {
        const bool textKey = field.name == table.primaryKey && !isAutoNumber(field);
        lines += quoted(field.name) + u' ' + columnType(field.type) +
                 (textKey ? u" NOT NULL PRIMARY KEY"_s : QString());
    }
    for (const FieldRule& rule : rulesOf(table))
        lines += u"CONSTRAINT %1 CHECK (%2)"_s.arg(quoted(rule.name), rule.condition);
    // A key of its own makes the key the table's order on disk, so that reading in key order
    // reads the file front to back.
    const bool ordered =
        !table.primaryKey.isEmpty() && std::ranges::none_of(table.fields, isAutoNumber);
    return u"CREATE TABLE %1 (\n  %2\n)%3"_s.arg(quoted(table.name), lines.join(u",\n  "_s),
                                                 ordered ? u" WITHOUT ROWID"_s : QString());
}

QString quoted(QStringView name)
{
    QString text = name.toString();
    return u'"' + text.replace(u'"', u"\"\""_s) + u'"';
}

} // namespace zelto::store

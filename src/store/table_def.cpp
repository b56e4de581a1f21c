// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/table_def.h"

#include <QStringList>

#include <algorithm>
#include <array>

namespace zelto::store {

namespace {

using Kind = FieldRule::Kind;

struct KindText
{
    Kind kind;
    QStringView name;
    ErrorNumber number;
    QStringView description;
};

constexpr std::array KindTexts{
    KindText{Kind::Type, u"tipo", ErrorNumber::BadValue,
             u"Il valore non è del tipo del campo «%1» della tabella «%2»."},
    KindText{Kind::NotEmpty, u"vuoto", ErrorNumber::EmptyNotAllowed,
             u"Il campo «%1» della tabella «%2» non può essere una stringa vuota."},
    KindText{Kind::Length, u"lunghezza", ErrorNumber::TextTooLong,
             u"Il testo è troppo lungo per il campo «%1» della tabella «%2»."},
    KindText{Kind::NoNulCharacter, u"caratteri", ErrorNumber::BadValue,
             u"Il testo per il campo «%1» della tabella «%2» contiene caratteri non ammessi."},
    KindText{Kind::Range, u"intervallo", ErrorNumber::BadValue,
             u"Il numero è fuori dall'intervallo del campo «%1» della tabella «%2»."},
    KindText{Kind::Date, u"data", ErrorNumber::BadValue,
             u"Il valore non è una data valida per il campo «%1» della tabella «%2»."},
};

const KindText& textOf(Kind kind)
{
    return *std::ranges::find(KindTexts, kind, &KindText::kind);
}

struct KindCondition
{
    Kind kind;
    QString condition;
};

std::vector<KindCondition> textConditions(const FieldDef& field, const QString& column)
{
    std::vector<KindCondition> conditions{
        {Kind::Type, u"typeof(%1) IN ('text', 'null')"_s.arg(column)},
        // length() stops at the first NUL, so no text may hold one.
        {Kind::NoNulCharacter, u"instr(%1, char(0)) = 0"_s.arg(column)}};
    if (!field.allowEmpty)
        conditions.push_back({Kind::NotEmpty, u"%1 <> ''"_s.arg(column)});
    if (field.type == FieldType::Text)
        conditions.push_back(
            {Kind::Length, u"length(%1) <= %2"_s.arg(column, QString::number(field.size))});
    return conditions;
}

std::vector<KindCondition> integerConditions(const QString& column, QStringView low,
                                             QStringView high)
{
    return {{Kind::Type, u"typeof(%1) IN ('integer', 'null')"_s.arg(column)},
            {Kind::Range, u"%1 BETWEEN %2 AND %3"_s.arg(column, low, high)}};
}

/// date() alone lets the 30th of February pass and fails on "now".
QString dateCondition(const QString& column)
{
    return u"CASE WHEN %1 GLOB '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9]' "
           "THEN date(%1, '+0 days') IS %1 ELSE %1 IS NULL END"_s.arg(column);
}

std::vector<KindCondition> conditionsOf(const FieldDef& field)
{
    const QString column = quoted(field.name);
    switch (field.type) {
    case FieldType::Integer:
        return integerConditions(column, u"-32768", u"32767");
    case FieldType::Long:
    case FieldType::AutoNumber:
        return integerConditions(column, u"-2147483648", u"2147483647");
    case FieldType::Date:
        return {{Kind::Date, dateCondition(column)}};
    case FieldType::Text:
    case FieldType::Memo:
        break;
    }
    return textConditions(field, column);
}

QString columnType(FieldType type)
{
    switch (type) {
    case FieldType::Integer:
    case FieldType::Long:
        return u"INTEGER"_s;
    case FieldType::AutoNumber:
        return u"INTEGER PRIMARY KEY"_s;
    case FieldType::Date:
        return u"TEXT"_s;
    case FieldType::Text:
    case FieldType::Memo:
        break;
    }
    return u"TEXT COLLATE NOCASE"_s;
}

bool isAutoNumber(const FieldDef& field)
{
    return field.type == FieldType::AutoNumber;
}

} // namespace

QString FieldRule::constraintName() const
{
    return QStringList{table, field, textOf(kind).name.toString()}.join(u'|');
}

std::optional<FieldRule> FieldRule::fromConstraintName(const QString& name)
{
    const QStringList parts = name.split(u'|');
    if (parts.size() != 3)
        return std::nullopt;
    const auto* const text = std::ranges::find(KindTexts, QStringView(parts[2]), &KindText::name);
    if (text == KindTexts.end())
        return std::nullopt;
    return FieldRule{.table = parts[0], .field = parts[1], .kind = text->kind};
}

DatabaseError FieldRule::error() const
{
    const KindText& text = textOf(kind);
    return {text.number, text.description.toString().arg(field, table)};
}

std::vector<RuleCondition> rulesOf(const TableDef& table)
{
    std::vector<RuleCondition> rules;
    for (const FieldDef& field : table.fields)
        for (const KindCondition& check : conditionsOf(field))
            rules.push_back({.rule = {.table = table.name, .field = field.name, .kind = check.kind},
                             .condition = check.condition});
    return rules;
}

QString createTableSql(const TableDef& table)
{
    QStringList lines;
    for (const FieldDef& field : table.fields) {
        const bool textKey = field.name == table.primaryKey && !isAutoNumber(field);
        lines += quoted(field.name) + u' ' + columnType(field.type) +
                 (textKey ? u" NOT NULL PRIMARY KEY"_s : QString());
    }
    for (const RuleCondition& check : rulesOf(table))
        lines +=
            u"CONSTRAINT %1 CHECK (%2)"_s.arg(quoted(check.rule.constraintName()), check.condition);
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

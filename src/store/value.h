// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "store/files/database_error.h"
#include "text/literals.h"

#include <QString>

#include <concepts>
#include <utility>
#include <variant>
#include <vector>

namespace zelto::store {

/// The content of one field: Null, a whole number or a text. Dates are texts "YYYY-MM-DD".
class Value
{
public:
    /// Null.
    Value() = default;

    template <std::integral Integer>
    Value(Integer number)
        : m_content(static_cast<qint64>(number)) // NOLINT(google-explicit-constructor)
    {}

    /// A text, which is never Null: a null QString is the empty text.
    Value(QString text) : m_content(std::move(text)) {} // NOLINT(google-explicit-constructor)

    /// What an input field stores: Null when nothing was entered.
    static Value nullIfEmpty(const QString& text) { return text.isEmpty() ? Value() : Value(text); }

    [[nodiscard]] bool isNull() const { return std::holds_alternative<std::monostate>(m_content); }
    [[nodiscard]] bool isInteger() const { return std::holds_alternative<qint64>(m_content); }

    /// The text, a number in decimal; empty for Null.
    [[nodiscard]] QString text() const
    {
        if (isInteger())
            return QString::number(std::get<qint64>(m_content));
        return isNull() ? QString() : std::get<QString>(m_content);
    }

    /// The number, also of a text that is a whole number and nothing else; 0 for Null. Throws
    /// DatabaseError BadValue for any other text.
    [[nodiscard]] qint64 integer() const
    {
        if (isNull() || isInteger())
            return isNull() ? 0 : std::get<qint64>(m_content);
        bool whole = false;
        const qint64 number = text().toLongLong(&whole);
        if (!whole)
            throw DatabaseError(ErrorNumber::BadValue,
                                u"«%1» non è un numero intero."_s.arg(text()));
        return number;
    }

    bool operator==(const Value&) const = default;

private:
    std::variant<std::monostate, qint64, QString> m_content;
};

/// The fields of a record in the order of its table.
using Record = std::vector<Value>;

} // namespace zelto::store

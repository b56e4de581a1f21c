// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/value.h"

#include "store/database_error.h"

namespace zelto::store {

QString Value::text() const
{
    if (isInteger())
        return QString::number(std::get<qint64>(m_content));
    return isNull() ? QString() : std::get<QString>(m_content);
}

qint64 Value::integer() const
{
    if (isInteger())
        return std::get<qint64>(m_content);
    if (isNull())
        return 0;
    bool whole = false;
    const qint64 number = std::get<QString>(m_content).toLongLong(&whole);
    if (!whole)
        throw DatabaseError(ErrorNumber::BadValue, u"«%1» non è un numero intero."_s.arg(text()));
    return number;
}

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/grouped_number.h"

#include "text/decimal_text.h"

#include <algorithm>

namespace zelto::print {

QString groupedNumber(const QString& number)
{
    QString grouped = text::ToPointDecimal(number);
    if (text::leadingNumber(QStringView{grouped}) == 0)
        return {};
    const qsizetype point = grouped.indexOf(u'.');
    for (qsizetype i = (point < 0 ? grouped.size() : point) - 3; i > 0; i -= 3)
        grouped.insert(i, u' ');
    return grouped;
}

} // namespace zelto::print

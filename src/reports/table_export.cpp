// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/table_export.h"

namespace zelto::reports {

QStringList sheetNames(const Tables& tables)
{
    constexpr qsizetype LongestName = 31;
    QStringList names;
    for (const TableReport& table : tables) {
        QString base;
        for (const QChar c : table.name)
            base += u"[]:*?/\\'"_s.contains(c) || !c.isPrint() ? QChar{u' '} : c;
        base = base.simplified();
        if (base.isEmpty() || base.startsWith(u'.'))
            base.prepend(u"Tabella"_s);
        QString name = base.left(LongestName);
        for (int copy = 2; names.contains(name, Qt::CaseInsensitive); ++copy) {
            const QString number = u" (%1)"_s.arg(copy);
            name = base.left(LongestName - number.size()) + number;
        }
        names << name;
    }
    return names;
}

} // namespace zelto::reports

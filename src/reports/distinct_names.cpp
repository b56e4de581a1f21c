// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/distinct_names.h"

#include "text/literals.h"

namespace zelto::reports {

QStringList distinctNames(const QStringList& texts, const NameRules& rules)
{
    QStringList names;
    for (const QString& text : texts) {
        QString base;
        for (const QChar c : text)
            base += rules.reserved.contains(c) || !c.isPrint() ? QChar{u' '} : c;
        base = base.simplified();
        if (base.isEmpty() || base.startsWith(u'.'))
            base.prepend(rules.fallback);
        QString name = base.left(rules.longest);
        for (int copy = 2; names.contains(name, Qt::CaseInsensitive); ++copy) {
            const QString number = u" (%1)"_s.arg(copy);
            name = base.left(rules.longest - number.size()) + number;
        }
        names << name;
    }
    return names;
}

} // namespace zelto::reports

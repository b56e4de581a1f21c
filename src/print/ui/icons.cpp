// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/ui/icons.h"

#include "text/literals.h"

#include <QHash>

namespace zelto::print {

const QIcon& icon(const QString& name)
{
    // Never destroyed: pictures must not outlive the application that draws them.
    static auto* const icons = new QHash<QString, QIcon>;
    auto found = icons->find(name);
    if (found == icons->end())
        found = icons->insert(name, QIcon(u":/zelto/icons/%1.svg"_s.arg(name)));
    return *found;
}

} // namespace zelto::print

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/literals.h"

#include <QHash>
#include <QIcon>

namespace zelto::widgets {

/// One of the program's own icons, by the name of its file; the same object for every window, since
/// each one made anew leaves its pictures in a cache.
inline const QIcon& icon(const QString& name)
{
    // Never destroyed: pictures must not outlive the application that draws them.
    static auto* const icons = new QHash<QString, QIcon>;
    auto found = icons->find(name);
    if (found == icons->end())
        found = icons->insert(name, QIcon(u":/zelto/icons/%1.svg"_s.arg(name)));
    return *found;
}

} // namespace zelto::widgets

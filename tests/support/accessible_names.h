// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessible>
#include <QStringList>
#include <QWidget>

namespace zelto::test {

inline QStringList namelessBelow(QAccessibleInterface* object)
{
    QStringList found;
    const QAccessible::State state = object->state();
    if (state.focusable && !state.invisible && object->text(QAccessible::Name).isEmpty())
        found << QString::fromLatin1(object->object()->metaObject()->className()) + u' ' +
                     object->object()->objectName();
    const bool hasCells =
        object->role() == QAccessible::Table || object->role() == QAccessible::Tree;
    for (int child = 0; child < object->childCount() && !hasCells; ++child)
        found += namelessBelow(object->child(child));
    return found;
}

/// The visible controls of a window that assistive technology cannot name.
inline QStringList namelessControls(QWidget& window)
{
    QAccessible::setActive(true);
    return namelessBelow(QAccessible::queryAccessibleInterface(&window));
}

} // namespace zelto::test

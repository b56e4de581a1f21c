// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/literals.h"

#include <QAccessible>
#include <QLabel>
#include <QStringList>
#include <QWidget>

namespace zelto::test {

inline QStringList namelessBelow(QAccessibleInterface& object)
{
    QStringList found;
    const QAccessible::State state = object.state();
    if (state.focusable && !state.invisible && object.text(QAccessible::Name).isEmpty())
        found << QString::fromLatin1(object.object()->metaObject()->className()) + u' ' +
                     object.object()->objectName();
    if (const auto* label = qobject_cast<QLabel*>(object.object());
        label != nullptr && !label->accessibleName().isEmpty() &&
        !label->accessibleName().contains(label->text()))
        found << u"text of label "_s + label->objectName();
    QAccessibleTableInterface* table = object.tableInterface();
    if (table == nullptr)
        for (int child = 0; child < object.childCount(); ++child)
            found += namelessBelow(*object.child(child));
    // Cells of a table, list or tree that would be passed over in silence.
    for (int row = 0; table != nullptr && row < table->rowCount(); ++row)
        for (int column = 0; column < table->columnCount(); ++column)
            if (const auto* cell = table->cellAt(row, column);
                cell == nullptr || cell->text(QAccessible::Name).isEmpty())
                found << u"cell %1, %2"_s.arg(row).arg(column);
    return found;
}

/// The visible controls of a window, and cells of its tables, that assistive technology cannot
/// name, and labels whose text a name hides.
inline QStringList namelessControls(QWidget& window)
{
    QAccessible::setActive(true);
    return namelessBelow(*QAccessible::queryAccessibleInterface(&window));
}

} // namespace zelto::test

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QAccessible>
#include <QLabel>

namespace zelto::widgets {

/// Shows the text on a label that the user does not go to; assistive technology says another one at
/// once. The label has no accessible name, which would hide its text.
inline void announce(QLabel& label, const QString& text)
{
    if (label.text() == text)
        return;
    label.setText(text);
    if (text.isEmpty())
        return;
    QAccessibleEvent alert(&label, QAccessible::Alert);
    QAccessible::updateAccessibility(&alert);
}

} // namespace zelto::widgets

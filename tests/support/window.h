// SPDX-License-Identifier: GPL-3.0-or-later
// A window under test, what is in it, and keys for it.
#pragma once

#include "text/literals.h"

#include <QApplication>
#include <QKeySequence>
#include <QMenu>
#include <QTest>

namespace zelto::test {

/// Shows the window and waits until keys go to it.
inline void appear(QWidget& window)
{
    window.show();
    if (!QTest::qWaitForWindowActive(&window))
        qFatal("the window does not become active");
}

template <typename Widget>
[[nodiscard]] Widget& find(const QWidget& window, const QString& name)
{
    auto* found = window.findChild<Widget*>(name);
    if (found == nullptr)
        qFatal("%s is missing", qPrintable(name));
    return *found;
}

/// Presses characters as they are and keys by their names: "Sala<Down><Ctrl+D>". Each goes to the
/// widget, or where the focus is then. Returns how many were pressed.
inline int press(const QString& script, QWidget* widget = nullptr)
{
    int count = 0;
    for (qsizetype at = 0; at < script.size(); ++at, ++count) {
        QWidget* const where = widget != nullptr ? widget : QApplication::focusWidget();
        if (script[at] != u'<') {
            QTest::sendKeyEvent(QTest::Click, where,
                                static_cast<Qt::Key>(script[at].toUpper().unicode()), script[at],
                                Qt::NoModifier);
            continue;
        }
        const qsizetype end = script.indexOf(u'>', at);
        const auto key = QKeySequence::fromString(script.mid(at + 1, end - at - 1))[0];
        const bool back = key == QKeyCombination(Qt::SHIFT | Qt::Key_Tab);
        QTest::keyClick(where, back ? Qt::Key_Backtab : key.key(), key.keyboardModifiers());
        at = end;
    }
    return count;
}

/// Chooses an entry of an open menu by the keyboard.
inline void chooseEntry(QMenu& menu, QAction& entry)
{
    menu.setActiveAction(&entry);
    QTest::keyClick(&menu, Qt::Key_Return);
}

} // namespace zelto::test

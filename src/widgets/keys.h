// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QKeySequence>

#include <functional>

class QKeyEvent;
class QLineEdit;
class QTabBar;
class QWidget;

namespace zelto::widgets {

/// The key carries out the command wherever in the widget the focus is.
void addKey(QWidget& where, const QKeySequence& key, const std::function<void()>& command,
            Qt::ShortcutContext context = Qt::WidgetWithChildrenShortcut);

/// Ctrl+Y is the field's, as Ctrl+Z is, while it has something to make again.
void keepRedoKey(QLineEdit& field);

/// Ctrl+Tab and Ctrl+Page Down anywhere in the screen go to the next tab, from the last one to the
/// first; with Shift, or Page Up, the other way.
void addTabKeys(QWidget& screen, QTabBar& tabs);

/// The text as a caption shows it: its ampersands are no mnemonics.
[[nodiscard]] QString asCaption(QString text);

/// The text that a key types, empty when it is a command, as every key with Ctrl, Alt or Super is.
/// The decimal key of the keypad types a point whatever the keyboard's language.
[[nodiscard]] QString typedBy(const QKeyEvent& key);

[[nodiscard]] bool isEnter(const QKeyEvent& key);

/// Whether the key is held together with Ctrl, Alt or Super. With AltGr it is not, though some
/// desktops say so.
[[nodiscard]] bool isChord(const QKeyEvent& key);

/// Whether Alt or Super is held: Qt's own fields would type, or delete, all the same.
[[nodiscard]] bool isWithAlt(const QKeyEvent& key);

} // namespace zelto::widgets

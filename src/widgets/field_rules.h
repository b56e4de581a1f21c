// SPDX-License-Identifier: GPL-3.0-or-later
// What may be typed into a field and what may stay in it, without the field itself.
#pragma once

#include "widgets/field_tag.h"

#include <QDate>
#include <QString>
#include <QStringView>

#include <optional>

class QKeyEvent;

namespace zelto::widgets {

/// The text of a field and what is selected in it; the caret is where the selection begins.
struct FieldText
{
    QString text;
    int selectionStart = 0;
    int selectionLength = 0;
};

/// Whether a character typed at the caret is kept. Backspace is in every field; other control
/// characters and line separators are in none, because table texts cannot hold them.
[[nodiscard]] bool keepsKey(const FieldTag& tag, QChar key, const FieldText& field);

/// What of the text gets in when it is typed character by character in place of the selection.
/// maxLength is the longest text of the field in characters, 0 for any.
[[nodiscard]] QString typeable(const FieldTag& tag, QStringView typed, FieldText field,
                               int maxLength);

/// The text as it is typed behind what the field holds: where the tag has decimals, each comma is
/// the decimal point. A reference, which begins with "[", keeps its commas.
[[nodiscard]] QString withPoints(const FieldTag& tag, QString text, QStringView field);

/// The text as it is pasted or dropped: a figure without the blanks between its digits and with a
/// decimal point. Nothing for several cells or lines, which would run into one, and for a figure
/// with more than one separator: which of them is the decimal one cannot be told.
[[nodiscard]] std::optional<QString> pasteable(const FieldTag& tag, const QString& text);

/// The text in the form in which it may stay, nothing when it fails the tag's check.
/// maxLength as in typeable; without one the check of characters has nothing to look at.
[[nodiscard]] std::optional<QString> checkedText(const FieldTag& tag, const QString& text,
                                                 int maxLength);

/// The date that day/month/year stand for, all in figures; years of two figures lie between 1930
/// and 2029. Nothing when there is no such day.
[[nodiscard]] std::optional<QDate> readDate(QStringView text);

/// The text that a key types, empty when it is a command, as every key with Ctrl, Alt or Super is.
/// The decimal key of the keypad types a point whatever the keyboard's language.
[[nodiscard]] QString typedBy(const QKeyEvent& key);

/// Whether the key is held together with Ctrl, Alt or Super. With AltGr it is not, though some
/// desktops say so.
[[nodiscard]] bool isChord(const QKeyEvent& key);

/// Whether Alt or Super is held: Qt's own fields would type, or delete, all the same.
[[nodiscard]] bool isWithAlt(const QKeyEvent& key);

} // namespace zelto::widgets

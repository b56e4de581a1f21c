// SPDX-License-Identifier: GPL-3.0-or-later
// What may be typed into a field and what may stay in it, without the field itself.
#pragma once

#include <QString>
#include <QStringView>

#include <optional>

namespace zelto::widgets {

/// What a typed field takes.
enum class FieldKind {
    Words,
    RunningText, ///< words as well, but Enter stays in the field and entering it selects nothing
    FreeFigure,  ///< any text, but it counts in the calculation
    WholeNumber,
    DecimalNumber,
    Amount, ///< of two decimals
    Date    ///< dd/mm/yyyy
};

/// Whether only digits, sign and point get in.
[[nodiscard]] bool isNumeric(FieldKind kind);

/// Whether a comma that comes in, by whatever way, is the decimal point.
[[nodiscard]] bool hasDecimals(FieldKind kind);

/// The text of a field and what is selected in it; the caret is where the selection begins.
struct FieldText
{
    QString text;
    int selectionStart = 0;
    int selectionLength = 0;
};

/// What of the text gets in when it is typed character by character in place of the selection.
/// Control characters and line separators never do: table texts cannot hold them. maxLength is the
/// longest text of the field in characters, 0 for any.
[[nodiscard]] QString typeable(FieldKind kind, QStringView typed, FieldText field, int maxLength);

/// The text as it is typed behind what the field holds: where there are decimals, each comma is the
/// decimal point. A reference, which begins with "[", keeps its commas.
[[nodiscard]] QString withPoints(FieldKind kind, QString text, QStringView field);

/// The text as it is pasted or dropped: a figure without the blanks between its digits and with a
/// decimal point. Nothing for several cells or lines, which would run into one, and for a figure
/// with more than one separator: which of them is the decimal one cannot be told.
[[nodiscard]] std::optional<QString> pasteable(FieldKind kind, const QString& text);

/// The text in the form in which it may stay: a date with its separators and four figures of the
/// year, of which two lie between 1930 and 2029. Nothing for a date that is none.
[[nodiscard]] std::optional<QString> checkedText(FieldKind kind, const QString& text);

} // namespace zelto::widgets

// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/field_rules.h"

#include "text/literals.h"

#include <QDate>
#include <QRegularExpression>

#include <algorithm>

namespace zelto::widgets {

namespace {

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isTextCharacter(QChar key)
{
    switch (key.category()) {
    case QChar::Other_Control:
    case QChar::Separator_Line:
    case QChar::Separator_Paragraph:
        return false;
    default:
        return true;
    }
}

/// Amounts have two decimals. Directly behind the point a digit still gets in, so that decimals
/// can be typed anew from their first one.
bool isThirdDecimal(const FieldText& field)
{
    const qsizetype whole = field.text.indexOf(u'.') + 1;
    return whole > 0 && field.selectionStart > whole && field.text.size() - whole >= 2;
}

bool keepsFigure(FieldKind kind, QChar key, const FieldText& field)
{
    const bool sign = key == u'-' || key == u'.';
    if (!sign && !isDigit(key))
        return false;
    if (key == u'.' && kind == FieldKind::WholeNumber)
        return false;
    if (sign && field.text.contains(key))
        return false;
    return kind != FieldKind::Amount || !isThirdDecimal(field);
}

/// Whether a character typed at the caret is kept.
bool keepsKey(FieldKind kind, QChar key, const FieldText& field)
{
    if (kind == FieldKind::Date)
        return isDigit(key) || key == u'/';
    return isNumeric(kind) ? keepsFigure(kind, key, field) : isTextCharacter(key);
}

/// One character as a unit or a pair of units; a half pair alone is none.
qsizetype characterLength(QStringView text)
{
    if (!text.front().isSurrogate())
        return 1;
    const bool pair = text.size() > 1 && text[0].isHighSurrogate() && text[1].isLowSurrogate();
    return pair ? 2 : 0;
}

/// 01022014 becomes 01/02/2014; whatever stands at the places of the separators is pushed on.
QString withDateSeparators(QString text)
{
    for (const qsizetype place : {2, 5})
        if (place < text.size() && text[place] != u'/')
            text.insert(place, u'/');
    return text;
}

/// Day, month and year in figures; invalid when there is no such day.
QDate readDate(const QString& text)
{
    static const QRegularExpression pattern(u"^([0-9]{1,2})/([0-9]{1,2})/([0-9]{2}|[0-9]{4})$"_s);
    const QRegularExpressionMatch parts = pattern.match(text.trimmed());
    constexpr int FirstOfThisCentury = 30; // years before it follow 2000, the others 1900
    int year = parts.captured(3).toInt();
    if (parts.capturedLength(3) == 2)
        year += year < FirstOfThisCentury ? 2000 : 1900;
    return {year, parts.captured(2).toInt(), parts.captured(1).toInt()};
}

bool isReference(QStringView text)
{
    return text.startsWith(u'[');
}

/// Digits with signs, separators and blanks, however they are mixed.
bool looksLikeFigure(QStringView text)
{
    return std::ranges::all_of(
        text, [](QChar c) { return isDigit(c) || c.isSpace() || u"+-.,"_s.contains(c); });
}

} // namespace

bool isNumeric(FieldKind kind)
{
    return kind == FieldKind::WholeNumber || kind == FieldKind::DecimalNumber ||
           kind == FieldKind::Amount;
}

bool hasDecimals(FieldKind kind)
{
    return kind == FieldKind::DecimalNumber || kind == FieldKind::Amount ||
           kind == FieldKind::FreeFigure;
}

QString typeable(FieldKind kind, QStringView typed, FieldText field, int maxLength)
{
    QString taken;
    for (qsizetype i = 0; i < typed.size();) {
        const QStringView character = typed.mid(i, characterLength(typed.mid(i)));
        i += std::max<qsizetype>(character.size(), 1);
        const qsizetype length = field.text.size() - field.selectionLength + character.size();
        const bool fits = maxLength == 0 || length <= maxLength;
        if (character.isEmpty() || !fits || !keepsKey(kind, character.front(), field))
            continue;
        field.text.replace(field.selectionStart, field.selectionLength, character.toString());
        field.selectionStart += static_cast<int>(character.size());
        field.selectionLength = 0;
        taken += character;
    }
    return taken;
}

QString withPoints(FieldKind kind, QString text, QStringView field)
{
    const bool reference = !isNumeric(kind) && (isReference(field) || isReference(text));
    return hasDecimals(kind) && !reference ? text.replace(u',', u'.') : text;
}

std::optional<QString> pasteable(FieldKind kind, const QString& text)
{
    QString line = text;
    while (line.endsWith(u'\n') || line.endsWith(u'\r'))
        line.chop(1);
    if (!std::ranges::all_of(line, isTextCharacter))
        return std::nullopt;
    QString figure = withPoints(kind, line, {});
    if (!hasDecimals(kind) || (!isNumeric(kind) && !looksLikeFigure(line)))
        return figure;
    if (figure.count(u'.') > 1)
        return std::nullopt;
    figure.removeIf([](QChar c) { return c.isSpace(); });
    return figure;
}

std::optional<QString> checkedText(FieldKind kind, const QString& text)
{
    const auto isBlank = [](QChar c) { return c == u' '; };
    if (kind != FieldKind::Date || std::ranges::all_of(text, isBlank))
        return text;
    const QDate date = readDate(withDateSeparators(text));
    return date.isValid() ? std::optional(date.toString(u"dd/MM/yyyy"_s)) : std::nullopt;
}

} // namespace zelto::widgets

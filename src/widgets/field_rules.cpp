// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/field_rules.h"

#include "text/literals.h"

#include <QKeyEvent>

#include <algorithm>

namespace zelto::widgets {

namespace {

constexpr QChar Backspace = u'\b';

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

bool keepsFigure(const FieldTag& tag, QChar key, const FieldText& field)
{
    const bool sign = key == u'-' || key == u'.';
    if (!sign && !isDigit(key))
        return false;
    if (key == u'.' && tag.kind() == FieldTag::Kind::WholeNumber)
        return false;
    if (sign && field.text.contains(key))
        return false;
    return tag.kind() != FieldTag::Kind::Amount || !isThirdDecimal(field);
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

std::optional<QString> checkedDate(const QString& text)
{
    const auto isBlank = [](QChar c) { return c == u' '; };
    if (std::all_of(text.begin(), text.end(), isBlank))
        return text;
    const std::optional<QDate> date = readDate(withDateSeparators(text));
    if (!date)
        return std::nullopt;
    return date->toString(u"dd/MM/yyyy"_s);
}

bool hasOnly(QStringView text, const QString& allowed)
{
    return std::all_of(text.begin(), text.end(), [&](QChar c) { return allowed.contains(c); });
}

/// The figures as a number, nothing when there are too few, too many or other characters.
std::optional<int> readFigures(QStringView text, qsizetype fewest, qsizetype most)
{
    if (text.size() < fewest || text.size() > most ||
        !std::all_of(text.begin(), text.end(), isDigit))
        return std::nullopt;
    return text.toInt();
}

std::optional<int> readYear(QStringView text)
{
    constexpr int FirstOfThisCentury = 30; // years before it follow 2000, the others 1900
    const std::optional<int> year = readFigures(text, 2, 4);
    if (!year || text.size() == 3)
        return std::nullopt;
    if (text.size() == 4)
        return year;
    return *year + (*year < FirstOfThisCentury ? 2000 : 1900);
}

/// With AltGr a key has none of them, or one of its own beside them.
bool hasModifier(const QKeyEvent& key, Qt::KeyboardModifiers wanted)
{
    return key.modifiers().testAnyFlags(wanted) &&
           !key.modifiers().testFlag(Qt::GroupSwitchModifier);
}

bool bearsCharacter(const QKeyEvent& key)
{
    const QString text = key.text();
    return !text.isEmpty() && text.front().category() != QChar::Other_Control;
}

bool isReference(QStringView text)
{
    return text.startsWith(u'[');
}

/// Digits with signs, separators and blanks, however they are mixed.
bool looksLikeFigure(QStringView text)
{
    return std::all_of(text.begin(), text.end(),
                       [](QChar c) { return isDigit(c) || c.isSpace() || u"+-.,"_s.contains(c); });
}

} // namespace

bool keepsKey(const FieldTag& tag, QChar key, const FieldText& field)
{
    if (key == Backspace)
        return true;
    switch (tag.kind()) {
    case FieldTag::Kind::Date:
        return isDigit(key) || key == u'/';
    case FieldTag::Kind::Text:
    case FieldTag::Kind::MultilineText:
        return isTextCharacter(key);
    default:
        return keepsFigure(tag, key, field);
    }
}

QString typeable(const FieldTag& tag, QStringView typed, FieldText field, int maxLength)
{
    QString taken;
    for (qsizetype i = 0; i < typed.size();) {
        const QStringView character = typed.mid(i, characterLength(typed.mid(i)));
        i += std::max<qsizetype>(character.size(), 1);
        const qsizetype length = field.text.size() - field.selectionLength + character.size();
        const bool fits = maxLength == 0 || length <= maxLength;
        if (character.isEmpty() || character.front() == Backspace || !fits ||
            !keepsKey(tag, character.front(), field))
            continue;
        field.text.replace(field.selectionStart, field.selectionLength, character.toString());
        field.selectionStart += static_cast<int>(character.size());
        field.selectionLength = 0;
        taken += character;
    }
    return taken;
}

QString withPoints(const FieldTag& tag, QString text, QStringView field)
{
    const bool reference = !tag.isNumeric() && (isReference(field) || isReference(text));
    return tag.hasDecimals() && !reference ? text.replace(u',', u'.') : text;
}

std::optional<QString> pasteable(const FieldTag& tag, const QString& text)
{
    QString line = text;
    while (line.endsWith(u'\n') || line.endsWith(u'\r'))
        line.chop(1);
    if (std::any_of(line.begin(), line.end(), [](QChar c) { return !isTextCharacter(c); }))
        return std::nullopt;
    if (!tag.hasDecimals() || (!tag.isNumeric() && !looksLikeFigure(line)))
        return withPoints(tag, line, {});
    QString figure = withPoints(tag, line, {});
    if (figure.count(u'.') > 1)
        return std::nullopt;
    figure.removeIf([](QChar c) { return c.isSpace(); });
    return figure;
}

std::optional<QString> checkedText(const FieldTag& tag, const QString& text, int maxLength)
{
    bool passes = true;
    switch (tag.check()) {
    case FieldTag::Check::None:
        break;
    case FieldTag::Check::Characters:
        passes = hasOnly(QStringView(text).left(maxLength), tag.checkData());
        break;
    case FieldTag::Check::Values:
        passes = tag.checkData().contains(u';' + text.toUpper() + u';');
        break;
    case FieldTag::Check::Date:
        return checkedDate(text);
    }
    return passes ? std::optional(text) : std::nullopt;
}

std::optional<QDate> readDate(QStringView text)
{
    const QList<QStringView> parts = text.trimmed().split(u'/');
    if (parts.size() != 3)
        return std::nullopt;
    const std::optional<int> day = readFigures(parts[0], 1, 2);
    const std::optional<int> month = readFigures(parts[1], 1, 2);
    const std::optional<int> year = readYear(parts[2]);
    if (!day || !month || !year || !QDate::isValid(*year, *month, *day))
        return std::nullopt;
    return QDate(*year, *month, *day);
}

QString typedBy(const QKeyEvent& key)
{
    const QString text = key.text();
    if (!bearsCharacter(key) || isChord(key))
        return {};
    const bool keypad = key.modifiers().testFlag(Qt::KeypadModifier);
    return keypad && (text == u","_s || text == u"."_s) ? u"."_s : text;
}

bool isChord(const QKeyEvent& key)
{
    return hasModifier(key, Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier);
}

bool isWithAlt(const QKeyEvent& key)
{
    return hasModifier(key, Qt::AltModifier | Qt::MetaModifier);
}

} // namespace zelto::widgets

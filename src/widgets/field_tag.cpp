// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/field_tag.h"

#include "text/literals.h"

namespace zelto::widgets {

namespace {

FieldTag::Kind kindOf(QChar typeCode)
{
    switch (typeCode.unicode()) {
    case u'T':
        return FieldTag::Kind::Date;
    case u'A':
        return FieldTag::Kind::Text;
    case u'M':
        return FieldTag::Kind::MultilineText;
    case u'L':
    case u'I':
        return FieldTag::Kind::WholeNumber;
    case u'E':
        return FieldTag::Kind::Amount;
    default:
        return FieldTag::Kind::DecimalNumber;
    }
}

FieldTag::Check checkOf(QChar checkCode)
{
    switch (checkCode.unicode()) {
    case u'R':
        return FieldTag::Check::Characters;
    case u'V':
        return FieldTag::Check::Values;
    case u'D':
        return FieldTag::Check::Date;
    default:
        return FieldTag::Check::None;
    }
}

QChar at(const QString& tag, qsizetype position)
{
    return position < tag.size() ? tag.at(position) : QChar();
}

} // namespace

FieldTag::FieldTag(const QString& tag, Holds holds)
    : m_kind(kindOf(at(tag, 0).toUpper())), m_check(checkOf(at(tag, 3))), m_checkData(tag.mid(4)),
      m_turnsCommas(tag.isEmpty() || u"ESDLIC"_s.contains(tag.front().toUpper())), m_holds(holds)
{}

bool FieldTag::hasDecimals() const
{
    return m_kind == Kind::DecimalNumber || m_kind == Kind::Amount || m_holds == Holds::Figures;
}

bool FieldTag::isNumeric() const
{
    return m_kind == Kind::WholeNumber || m_kind == Kind::DecimalNumber || m_kind == Kind::Amount;
}

} // namespace zelto::widgets

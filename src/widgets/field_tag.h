// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>

namespace zelto::widgets {

/// What a typed field takes, written as a short text: a type code, two letters without meaning, a
/// check code and the data of the check. "TOLD+" is a date that is checked when the field is left.
class FieldTag
{
public:
    enum class Kind { Date, Text, MultilineText, WholeNumber, DecimalNumber, Amount };
    enum class Check { None, Characters, Values, Date };
    /// What a free text is about: figures count in the calculation, words do not.
    enum class Holds { Words, Figures };

    /// The type code counts without regard to letter case; an unknown one, or none, stands for a
    /// decimal number.
    explicit FieldTag(const QString& tag = {}, Holds holds = Holds::Words);

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] Check check() const { return m_check; }

    /// The allowed characters, or the allowed values in upper case between semicolons.
    [[nodiscard]] const QString& checkData() const { return m_checkData; }

    [[nodiscard]] bool isNumeric() const;

    /// Whether a comma in the field's text is turned into a point when the field is entered.
    [[nodiscard]] bool turnsCommas() const { return m_turnsCommas; }

    /// Whether a comma that comes in, by whatever way, is the decimal point.
    [[nodiscard]] bool hasDecimals() const;

private:
    Kind m_kind;
    Check m_check;
    QString m_checkData;
    bool m_turnsCommas;
    Holds m_holds;
};

} // namespace zelto::widgets

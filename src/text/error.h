// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "text/literals.h"

#include <QByteArray>
#include <QString>

#include <exception>

namespace zelto::text {

/// A failure as the error report shows it: an Italian description of what and where, and a number.
class Error : public std::exception
{
public:
    Error(int code, const QString& description) : m_code(code), m_description(description.toUtf8())
    {}

    [[nodiscard]] int code() const noexcept { return m_code; }
    [[nodiscard]] QString description() const { return QString::fromUtf8(m_description); }
    [[nodiscard]] const char* what() const noexcept override { return m_description.constData(); }

private:
    int m_code;
    QByteArray m_description;
};

} // namespace zelto::text

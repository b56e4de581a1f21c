// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

namespace zelto::calc {

/// A job or an amount that the calculation cannot take; the Italian text names what and where.
class CalcError : public std::exception
{
public:
    explicit CalcError(const QString& description) : m_description(description.toUtf8()) {}

    [[nodiscard]] const char* what() const noexcept override { return m_description.constData(); }

private:
    QByteArray m_description;
};

} // namespace zelto::calc

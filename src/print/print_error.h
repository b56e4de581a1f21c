// SPDX-License-Identifier: GPL-3.0-or-later
// Failures of the print engine as the user reads them.
#pragma once

#include <QByteArray>
#include <QFileDevice>
#include <QString>

#include <exception>

namespace zelto::print {

/// Numbers under which the user finds a failure in the error report.
enum class PrintErrorNumber : int {
    FileNotFound = 53,
    DeviceFailed = 57,
    PathAccess = 75,
    PathNotFound = 76,
    PrinterFailed = 482,
};

/// A failed page file, output file or printer; the description is Italian and names it.
class PrintError : public std::exception
{
public:
    PrintError(PrintErrorNumber number, const QString& description)
        : m_number(number), m_description(description.toUtf8())
    {}

    /// "<what> «<file>»: <what the system says about it>."
    PrintError(PrintErrorNumber number, const QString& what, const QFileDevice& file);

    [[nodiscard]] PrintErrorNumber number() const noexcept { return m_number; }
    [[nodiscard]] QString description() const { return QString::fromUtf8(m_description); }
    [[nodiscard]] const char* what() const noexcept override { return m_description.constData(); }

private:
    PrintErrorNumber m_number;
    QByteArray m_description;
};

} // namespace zelto::print

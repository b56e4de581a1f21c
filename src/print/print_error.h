// SPDX-License-Identifier: GPL-3.0-or-later
// Failures of the print engine as the user reads them.
#pragma once

#include "text/error.h"

#include <QFileDevice>
#include <QString>

namespace zelto::print {

/// Numbers under which the user finds a failure in the error report.
enum class PrintErrorNumber : int {
    FileNotFound = 53,
    DeviceFailed = 57,
    PathAccess = 75,
    PathNotFound = 76,
    PrinterFailed = 482,
};

/// What the user is told of a document without pages.
inline const QString NothingToPrint = QStringLiteral("Non c'è nessuna pagina da stampare.");

/// A failed page file, output file or printer; the description is Italian and names it.
class PrintError : public text::Error
{
public:
    PrintError(PrintErrorNumber number, const QString& description)
        : Error(static_cast<int>(number), description)
    {}

    /// "<what> «<file>»: <what the system says about it>."
    PrintError(PrintErrorNumber number, const QString& what, const QFileDevice& file);

    [[nodiscard]] PrintErrorNumber number() const noexcept
    {
        return static_cast<PrintErrorNumber>(code());
    }
};

} // namespace zelto::print

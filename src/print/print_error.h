// SPDX-License-Identifier: GPL-3.0-or-later
// Failures of the print engine as the user reads them.
#pragma once

#include "store/files/passing_folder.h"
#include "text/error.h"
#include "text/system_reason.h"

#include <QFileDevice>
#include <QString>

namespace zelto::print {

/// Numbers under which the user finds a failure in the error report.
enum class PrintErrorNumber : int {
    FileNotFound = 53,
    DeviceFailed = 57,
    PathAccess = 75,
    PrinterFailed = 482,
};

/// A failed page file, output file or printer; the description is Italian and names it.
class PrintError : public text::Error
{
public:
    PrintError(PrintErrorNumber number, const QString& description)
        : Error(static_cast<int>(number), description)
    {}

    /// "<what> «<file>»: <what the system says about it>."
    PrintError(PrintErrorNumber number, const QString& what, const QFileDevice& file)
        : PrintError(number, u"%1 «%2»: %3."_s.arg(what, store::targetPath(file.fileName()),
                                                   text::systemReason(file)))
    {}
};

/// A document without pages.
class EmptyDocument : public PrintError
{
public:
    EmptyDocument()
        : PrintError(PrintErrorNumber::PrinterFailed, u"Non c'è nessuna pagina da stampare."_s)
    {}
};

} // namespace zelto::print

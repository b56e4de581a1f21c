// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/print_error.h"

#include <QDir>

namespace zelto::print {

PrintError::PrintError(PrintErrorNumber number, const QString& what, const QFileDevice& file)
    : PrintError(number,
                 QStringLiteral("%1 «%2»: %3.")
                     .arg(what, QDir::toNativeSeparators(file.fileName()), file.errorString()))
{}

} // namespace zelto::print

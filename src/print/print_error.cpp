// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/print_error.h"

#include "store/files/passing_folder.h"
#include "text/system_reason.h"

namespace zelto::print {

PrintError::PrintError(PrintErrorNumber number, const QString& what, const QFileDevice& file)
    : PrintError(number, u"%1 «%2»: %3."_s.arg(what, store::targetPath(file.fileName()),
                                               text::systemReason(file)))
{}

} // namespace zelto::print

// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/complete_file.h"

#include "print/print_error.h"

#include <QSaveFile>

namespace zelto::print {

void openForWriting(QSaveFile& file)
{
    if (!file.open(QIODevice::WriteOnly))
        throw PrintError(PrintErrorNumber::PathAccess, QStringLiteral("Impossibile creare il file"),
                         file);
}

void commitComplete(QSaveFile& file)
{
    // The file takes what fits on a full disk for written; only flushing again tells the reason.
    const bool written = file.flush() || file.flush();
    if (!written || !file.commit())
        throw PrintError(PrintErrorNumber::DeviceFailed,
                         QStringLiteral("Impossibile scrivere il file"), file);
}

} // namespace zelto::print

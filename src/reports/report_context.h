// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/modello_lavoro.h"
#include "print/print_engine.h"
#include "store/user_interface.h"

#include <QString>

namespace zelto::reports {

/// What every report works on: the loaded job, the engine it draws through and the user who waits.
struct ReportContext
{
    const calc::ModelloLavoro& modello;
    QString jobPath;      ///< full path of the job file
    QString outputFolder; ///< where the text files go
    print::PrintEngine& engine;
    store::StatusLine& status;

    /// The job code as "Rif. - " lines show it: the file's name without extension, in upper case.
    [[nodiscard]] QString jobReference() const;
};

/// The kind of document and the building that it is about, as a file's title.
QString documentTitle(const QString& kind, const calc::ModelloLavoro& modello);

} // namespace zelto::reports

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/modello_lavoro.h"
#include "calc/written_job.h"
#include "print/print_engine.h"
#include "store/user_interface.h"

#include <QFileInfo>

namespace zelto::reports {

/// What every section works on: the loaded job, the engine it draws through and the user who waits.
struct ReportContext
{
    const calc::ModelloLavoro& modello;
    const calc::LavoroScritto& scritto; ///< the texts that it was loaded from
    QString jobPath;                    ///< full path of the job file
    QString outputFolder;               ///< where the text files go
    print::PrintEngine& engine;
    store::StatusLine& status;

    /// The job code as "Rif. - " lines show it: the file's name without extension, in upper case.
    [[nodiscard]] QString jobReference() const
    {
        return QFileInfo(jobPath).completeBaseName().toUpper();
    }
};

} // namespace zelto::reports

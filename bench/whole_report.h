// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/modello_lavoro.h"
#include "print/print_engine.h"

#include <QString>

namespace zelto::bench {

/// The usual sections of a job's report, recorded to page files in a folder that exists.
class WholeReport
{
public:
    /// Loads the job and records it once. Throws what loading and printing throw.
    WholeReport(const QString& jobPath, QString folder);

    /// Records it all anew.
    void record();

    [[nodiscard]] const QString& folder() const { return m_folder; }
    [[nodiscard]] print::PrintEngine& engine() { return m_engine; }

    /// Prints the recorded pages.
    void printOn(print::Surface& surface);

    /// The page with the most records, counted from 1.
    [[nodiscard]] int fullestPage() const;

private:
    QString m_jobPath;
    QString m_folder;
    calc::ModelloLavoro m_modello;
    print::PrintEngine m_engine;
};

} // namespace zelto::bench

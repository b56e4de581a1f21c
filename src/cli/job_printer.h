// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/modello_lavoro.h"
#include "cli/console.h"
#include "cli/options.h"
#include "print/pdf_info.h"
#include "reports/table_report.h"

#include <QString>

#include <optional>
#include <vector>

namespace zelto::cli {

/// Prints one job after the other as the command line asks, leaving the job files as they are.
class JobPrinter
{
public:
    JobPrinter(const Options& options, Console& user);

    /// Prints the job; what cannot be read or printed is reported to the user and gives false.
    bool print(const QString& lavoro);

private:
    [[nodiscard]] std::optional<calc::ModelloLavoro> load(QString path);
    void requireDistinctOutputs() const;
    void printPages(const calc::ModelloLavoro& modello, const QString& lavoro);
    [[nodiscard]] std::vector<reports::TableReport>
    tables(const calc::ModelloLavoro& modello) const;
    [[nodiscard]] bool exportsTables() const;
    void exportTables(const std::vector<reports::TableReport>& tables, const print::PdfInfo& info,
                      const QString& lavoro) const;
    void showTables(const std::vector<reports::TableReport>& tables, const QString& lavoro) const;
    [[nodiscard]] print::PdfInfo documentInfo(const calc::ModelloLavoro& modello) const;

    /// Of one job the path as given; of several a file of the job's name in it as a folder.
    [[nodiscard]] QString filePath(const QString& path, const QString& lavoro,
                                   const QString& extension) const;

    /// The folder, or one of the job's name in it for several jobs; made if it is not there.
    [[nodiscard]] QString folderPath(const QString& folder, const QString& lavoro) const;

    const Options& m_options;
    Console& m_user;
};

} // namespace zelto::cli

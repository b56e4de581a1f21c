// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/modello_lavoro.h"
#include "cli/options.h"
#include "store/user_interface.h"

#include <QString>

#include <optional>

namespace zelto::cli {

/// Prints one job after the other as the command line asks, leaving the job files as they are.
class JobPrinter
{
public:
    JobPrinter(const Options& options, store::UserInterface& user);

    /// Prints the job; what cannot be read or printed is reported to the user and gives false.
    bool print(const QString& lavoro);

private:
    [[nodiscard]] std::optional<calc::ModelloLavoro> load(QString path);
    void checkShares(const calc::ModelloLavoro& modello) const;
    void printPages(const calc::ModelloLavoro& modello, const QString& lavoro);
    void showTables(const calc::ModelloLavoro& modello, const QString& lavoro) const;
    [[nodiscard]] QString pdfPath(const QString& lavoro) const;
    [[nodiscard]] QString outputFolder(const QString& lavoro) const;

    const Options& m_options;
    store::UserInterface& m_user;
};

} // namespace zelto::cli

// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of zelto-stampa.
#pragma once

#include "cli/console.h"
#include "reports/print_sequence.h"
#include "reports/table_export.h"

#include <QString>
#include <QStringList>

#include <map>
#include <optional>

namespace zelto::cli {

/// What the command was asked to do.
struct Options
{
    enum class Action { Print, Check, ShowHelp, ShowVersion };

    Action action = Action::Print;
    QStringList lavori;
    QString pdf;             ///< file, or folder for several jobs; empty for none
    QString uscite = u"."_s; ///< folder of the text files, or of the jobs' folders
    /// The chosen formats of tables, each with its file or folder, or the folder of the jobs'.
    std::map<const reports::TableFormat*, QString> formati;
    QString schede; ///< folder of the units' sheets, or of the jobs' folders; empty for none
    QStringList sezioni = reports::sectionWords(&reports::Section::isUsual);
    reports::OpzioniCalcolo calcolo;
    std::optional<reports::OpzioniRiparto> riparto; ///< in place of the tables of shares
    bool mostra = false;

    [[nodiscard]] reports::OpzioniStampa opzioni() const
    {
        return riparto ? reports::OpzioniStampa(*riparto) : calcolo;
    }
};

/// Reads the arguments, the program's name first. Throws UsageError.
Options parseOptions(const QStringList& arguments);

/// The job's code: the file's name without extension, which its outputs are named after. The whole
/// name when nothing else than points is left.
QString jobName(const QString& lavoro);

/// The help text.
QString helpText();

} // namespace zelto::cli

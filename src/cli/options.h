// SPDX-License-Identifier: GPL-3.0-or-later
// The command line of zelto-stampa.
#pragma once

#include "reports/print_sequence.h"
#include "reports/table_export.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <stdexcept>
#include <vector>

namespace zelto::cli {

/// A command line that cannot be carried out; the Italian text says why.
class UsageError : public std::runtime_error
{
public:
    explicit UsageError(const QString& text) : std::runtime_error(text.toStdString()) {}
};

/// What the command was asked to do.
struct Options
{
    enum class Action { Print, ShowHelp, ShowVersion };

    Action action = Action::Print;
    QStringList lavori;
    QString pdf;             ///< file, or folder for several jobs; empty for none
    QString uscite = u"."_s; ///< folder of the text files, or of the jobs' folders
    /// For every format of tables the file or folder, or the folder of the jobs'; empty for none.
    std::vector<QString> formati = std::vector<QString>(reports::tableFormats().size());
    QStringList sezioni = reports::tutteLeSezioni();
    reports::OpzioniCalcolo calcolo;
    std::optional<reports::OpzioniRiparto> riparto; ///< in place of the calculation sections
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

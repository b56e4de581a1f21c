// SPDX-License-Identifier: GPL-3.0-or-later
// The tables of shares: general, special and by staircase. All that print, screens, files and the
// command know of them stands in one list.
#pragma once

#include "calc/modello_lavoro.h"
#include "calc/shares.h"
#include "calc/staircase_shares.h"
#include "reports/table_report.h"

#include <QString>

#include <vector>

namespace zelto::reports {

/// A job with the sizes of its units, from which all of its shares are computed. It outlives what
/// works with it.
struct SizedJob
{
    explicit SizedJob(const calc::ModelloLavoro& lavoro)
        : modello(lavoro), consistenze(calc::calcolaConsistenze(lavoro))
    {}

    const calc::ModelloLavoro& modello;
    calc::Consistenze consistenze;
};

/// One table among those of its kind.
struct TableChoice
{
    QString key;   ///< as the command names it; empty when there is no other
    QString label; ///< as lists show it
};

/// A kind of tables.
struct TableKind
{
    QString word;            ///< in the command's list of tables
    QString caption;         ///< of the box that has it printed
    QString outputFile = {}; ///< of its figures as plain text; empty for none
    bool hasIndex = false;   ///< whether there is a choice of how the floor index is formed

    // As the shares of an allocation.
    QString shareWord;     ///< of the command
    QString keyName = {};  ///< what the command's help calls the key; empty when there is none
    QString shareCaption;  ///< of the button
    QString listName = {}; ///< of the list of its tables
    std::vector<TableColumn> allocationColumns;

    /// The tables of the job.
    std::vector<TableChoice> (*choices)(const calc::ModelloLavoro& modello);
    /// A key as typed in the form of the choices; empty when it can be none.
    QString (*readKey)(const QString& typed) = nullptr;
    /// Why a job that has so many tables of the kind has none of that key.
    QString (*missing)(const QString& key, std::size_t count) = nullptr;
    /// Throws CalcError when a figure does not fit its column.
    TableReport (*table)(const SizedJob& job, const TableChoice& choice, calc::IndicePiano indice);
};

/// The kinds in the order of printing.
const std::vector<TableKind>& tableKinds();

} // namespace zelto::reports

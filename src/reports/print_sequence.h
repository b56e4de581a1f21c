// SPDX-License-Identifier: GPL-3.0-or-later
// What one press of a print button draws, in its order.
#pragma once

#include "reports/allocation_table.h"
#include "reports/prospectus.h"
#include "reports/report_context.h"
#include "reports/table_kinds.h"

#include <QString>
#include <QStringList>

#include <span>
#include <variant>
#include <vector>

namespace zelto::reports {

/// A section of a print, as the command and the boxes of the screens name it.
struct SezioneStampa
{
    QString word;
    QString caption;
    /// Draws it; none for the calculation, which is another in every document.
    void (*draw)(const ReportContext& context);
};

/// The sections in the order in which they are drawn.
const std::vector<SezioneStampa>& sezioniStampa();

/// The section of the calculation.
inline const QString SezioneCalcolo = u"calcolo"_s;

/// The words of all sections, and of all kinds of tables.
QStringList tutteLeSezioni();
QStringList tutteLeTabelle();

/// The calculation section of the tables of shares.
struct OpzioniCalcolo
{
    bool dettaglio = true;
    QStringList tabelle = tutteLeTabelle(); ///< the kinds, by their words
    FormatoDettaglio formato = FormatoDettaglio::Compatto;
    calc::IndicePiano indice = calc::IndicePiano::PerConsistenza;
    int primaPagina = 1; ///< number of the first calculation page
};

/// A document is the one or the other.
using OpzioniStampa = std::variant<OpzioniCalcolo, OpzioniRiparto>;

/// What a document is called.
struct Documento
{
    QString title;
    QString printTitle;      ///< of the print job
    QString nameSuffix = {}; ///< behind the job's name in the files that are proposed
};
const Documento& documento(const OpzioniStampa& opzioni);

/// The tables of a document in the order of printing; none without units. Throws CalcError when a
/// figure does not fit its column.
std::vector<TableReport> tabelleScelte(const calc::ModelloLavoro& modello,
                                       const OpzioniStampa& opzioni);

/// Draws the sections, given by their words, with their text files. Throws CalcError, and then has
/// drawn and written nothing, when a figure does not fit its column.
void stampaDocumento(const ReportContext& context, const QStringList& sezioni,
                     const OpzioniStampa& opzioni);

} // namespace zelto::reports

// SPDX-License-Identifier: GPL-3.0-or-later
// What one press of a print button draws, in its order.
#pragma once

#include "print/pdf_info.h"
#include "reports/allocation_table.h"
#include "reports/sections.h"
#include "reports/unit_sheets.h"

#include <functional>
#include <variant>

namespace zelto::reports {

/// The word of the calculation among the sections.
inline const QString SezioneCalcolo = u"calcolo"_s;

/// The words of all kinds of tables.
QStringList tableWords();

/// The names of the text files that a calculation may write.
QStringList textFiles();

/// The calculation of the tables of shares.
struct OpzioniCalcolo
{
    bool dettaglio = true;
    QStringList tabelle = tableWords(); ///< the kinds, by their words
    FormatoDettaglio formato = FormatoDettaglio::Compatto;
    calc::IndicePiano indice = calc::IndicePiano::PerConsistenza;
    int primaPagina = 1; ///< number of the first calculation page
};

/// A document is of the one kind or the other.
using OpzioniStampa = std::variant<OpzioniCalcolo, OpzioniRiparto>;

/// A section that is ready to be drawn; the page is of those that are numbered together.
using Drawing = std::function<void(ReportPage& page)>;

/// A section of a document, as the command and the boxes of the screens name it.
struct Section
{
    QString word;
    QString caption;
    bool isUsual = true;      ///< whether it is drawn unless the user chooses
    bool inAllocation = true; ///< whether the screen of an allocation has a box for it
    /// Computes what it draws. Throws CalcError when a figure does not fit its column. Context and
    /// options outlive the drawing.
    Drawing (*prepared)(const ReportContext& context, const OpzioniStampa& opzioni);
};

/// The sections in the order in which they are drawn.
const std::vector<Section>& sections();

/// Their words: of all, of the usual ones, or of those of an allocation.
QStringList sectionWords();
QStringList sectionWords(bool Section::*chosen);

/// What documents of a kind are called.
struct DocumentKind
{
    QString title;
    QString printTitle;      ///< of the print job
    QString subject;         ///< as the properties of files say it
    QString keywords;        ///< of those properties
    QString nameSuffix = {}; ///< behind the job's name in the files that are proposed
};
const DocumentKind& documentKind(const OpzioniStampa& opzioni);

/// What files say of a document: its kind with the building that it is about, and the user.
print::PdfInfo documentInfo(const OpzioniStampa& opzioni, const calc::ModelloLavoro& modello);

/// The tables of a document in the order of printing; none without units. Throws CalcError when a
/// figure does not fit its column.
Tables tabelleScelte(const calc::ModelloLavoro& modello, const OpzioniStampa& opzioni);

/// The sheets of the units with all shares, and with their parts of the amount that the document
/// divides. Throws CalcError when a figure does not fit its column.
Schede schedeUnita(const calc::ModelloLavoro& modello, const calc::LavoroScritto& scritto,
                   const OpzioniStampa& opzioni);

/// Draws the sections, given by their words, with their text files. Throws CalcError, and then has
/// drawn and written nothing, when a figure does not fit its column.
void stampaDocumento(const ReportContext& context, const QStringList& sezioni,
                     const OpzioniStampa& opzioni);

} // namespace zelto::reports

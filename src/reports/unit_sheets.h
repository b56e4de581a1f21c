// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "calc/coefficient_words.h"
#include "print/pdf_info.h"
#include "reports/report_page.h"
#include "reports/table_kinds.h"

namespace zelto::reports {

/// The sheets of the units: each tells on pages of its own what a unit is, of which rooms it
/// consists, where their coefficients come from, and which shares it has.
class Schede
{
public:
    /// The tables are those that the sheets tell the shares from, of units that a table is about;
    /// the part of an allocation is told to all. Throws CalcError when a figure does not fit its
    /// column.
    Schede(const calc::ModelloLavoro& modello, const calc::LavoroScritto& scritto, Tables quote,
           Tables riparti);

    [[nodiscard]] const std::vector<calc::UnitaImmobiliare>& unita() const
    {
        return m_job.modello.unita;
    }

    /// Draws the sheet of one of the units from a new page on, and ends the page.
    void draw(ReportPage& page, std::size_t unit) const;

    /// Draws all of them.
    void draw(ReportPage& page) const
    {
        for (std::size_t u = 0; u < unita().size(); ++u)
            draw(page, u);
    }

private:
    SizedJob m_job;
    std::vector<std::vector<calc::ParoleVano>> m_parole;
    Tables m_quote;
    Tables m_riparti;
};

/// Writes the sheet of every unit as a PDF into the folder, which is made: "007 Int. 7.pdf". Older
/// files of the same names are replaced, all or none. The engine of the context records nothing
/// meanwhile. Throws CalcError without units, and PrintError.
void writeSheets(const QString& folder, const Schede& schede, const ReportContext& context,
                 const print::PdfInfo& info);

} // namespace zelto::reports

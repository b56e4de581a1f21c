// SPDX-License-Identifier: GPL-3.0-or-later
// Tables as files for spreadsheet programs.
#pragma once

#include "print/pdf_info.h"
#include "reports/table_report.h"

namespace zelto::reports {

/// A name for each table that can stand on a sheet and in a file name: at most 31 characters,
/// none of []:*?/\ and no two alike, whatever the case of their letters.
QStringList sheetNames(const Tables& tables);

/// An XLSX workbook with one sheet per table: numbers as numbers with their places, totals of
/// shares as sums. An older file is replaced only by a complete one. Throws PrintError.
void writeWorkbook(const QString& path, const Tables& tables, const print::PdfInfo& info);

/// One CSV file per table in the folder, which is made: UTF-8 with a byte order mark, ";" between
/// fields and decimal comma, as Italian spreadsheets read them. Older files of the same names are
/// replaced, all or none. Throws PrintError.
void writeCsv(const QString& folder, const Tables& tables, const print::PdfInfo& info);

/// A format of tables for spreadsheet programs.
struct TableFormat
{
    QString option;    ///< of the command
    QString extension; ///< of its file; empty for a folder of files
    QString help;      ///< lines of the command's help
    QString where;     ///< as messages tell where the tables are: "nella cartella"
    void (*write)(const QString& path, const Tables& tables, const print::PdfInfo& info);

    [[nodiscard]] bool isFolder() const { return extension.isEmpty(); }
};

/// The formats; the user chooses the file of the first one, the others stand beside it.
inline const std::vector<TableFormat>& tableFormats()
{
    static const std::vector<TableFormat> formats{
        {u"xlsx"_s, u".xlsx"_s,
         u"le tabelle in una cartella di lavoro per fogli di calcolo;\n"
         u"con più lavori FILE è una cartella, un file per lavoro"_s,
         u"nella cartella di lavoro"_s, writeWorkbook},
        {u"csv"_s,
         {},
         u"le tabelle in file CSV, uno per tabella (con più lavori\n"
         u"una sottocartella per lavoro)"_s,
         u"in formato CSV, nella cartella"_s,
         writeCsv},
    };
    return formats;
}

} // namespace zelto::reports

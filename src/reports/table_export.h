// SPDX-License-Identifier: GPL-3.0-or-later
// Tables as files for spreadsheet programs.
#pragma once

#include "print/pdf_info.h"
#include "reports/table_report.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace zelto::reports {

/// A name for each table that can stand on a sheet and in a file name: at most 31 characters,
/// none of []:*?/\ and no two alike, whatever the case of their letters.
QStringList sheetNames(const std::vector<TableReport>& tables);

/// A format of tables for spreadsheet programs.
struct TableFormat
{
    QString option;    ///< of the command
    QString extension; ///< of its file; empty for a folder of files
    QString help;      ///< lines of the command's help
    QString where;     ///< as messages tell where the tables are: "nella cartella"
    void (*write)(const QString& path, const std::vector<TableReport>& tables,
                  const print::PdfInfo& info);
};

/// The formats; the user chooses the file of the first one, the others stand beside it.
const std::vector<TableFormat>& tableFormats();

/// An XLSX workbook with one sheet per table: numbers as numbers with their places, totals of
/// shares as sums. An older file is replaced only by a complete one. Throws PrintError.
void writeWorkbook(const QString& path, const std::vector<TableReport>& tables,
                   const print::PdfInfo& info);

/// One CSV file per table in the folder, which is made: UTF-8 with a byte order mark, ";" between
/// fields and decimal comma, as Italian spreadsheets read them. Older files of the same names are
/// replaced, all or none. Throws PrintError.
void writeCsv(const QString& folder, const std::vector<TableReport>& tables,
              const print::PdfInfo& info);

} // namespace zelto::reports

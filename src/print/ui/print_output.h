// SPDX-License-Identifier: GPL-3.0-or-later
// Where documents go: printer or PDF file.
#pragma once

#include "print/pdf_info.h"
#include "print/ui/printer_desk.h"

#include <QString>

#include <functional>

namespace zelto::store {
class Settings;
} // namespace zelto::store

namespace zelto::widgets {
class Dialogs;
class MainWindowServices;
} // namespace zelto::widgets

namespace zelto::print {

class PrintEngine;

/// What printing and previews need; all of it outlives them.
struct PrintServices
{
    PrintEngine& engine;
    PrinterDesk& printers;
    widgets::MainWindowServices& window;
    widgets::Dialogs& dialogs;
    store::Settings& settings;
};

/// A document as printers, files and their readers know it.
struct DocumentData
{
    QString printTitle; ///< of the print job
    PdfInfo info;
    QString pdfPath; ///< proposed for the PDF file
};

/// What the engine is asked to draw.
using Drawing = std::function<void()>;

/// Draws on the printer, as one job. Throws what the drawing throws, PrintError when the
/// printer refuses and EmptyDocument when nothing was drawn.
void drawOnPrinter(const PrintServices& services, const QString& title, const Drawing& drawing);

/// Draws into a PDF file of the printer's layout; an older file goes only for a complete one.
/// Throws like drawOnPrinter.
void drawIntoPdf(const PrintServices& services, const QString& path, const PdfInfo& info,
                 const Drawing& drawing);

/// Asks for the file to write, the proposed one at first; empty when the user gives up, also
/// because there is one already that shall stay. The proposed path's extension is added if none
/// is typed.
[[nodiscard]] QString chooseOutputPath(widgets::Dialogs& dialogs, const QString& title,
                                       const QString& filter, const QString& proposedPath);

/// The same for a PDF file.
[[nodiscard]] QString choosePdfPath(widgets::Dialogs& dialogs, const QString& proposedPath);

/// Tells where the document is now.
void tellWritten(widgets::Dialogs& dialogs, const QString& path);

/// Tells that there is no printer; whether the user wants a PDF file instead.
[[nodiscard]] bool offersPdfInstead(widgets::Dialogs& dialogs);

} // namespace zelto::print

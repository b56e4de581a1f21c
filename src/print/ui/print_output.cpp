// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/ui/print_output.h"

#include "print/complete_file.h"
#include "print/pdf_surface.h"
#include "print/print_engine.h"
#include "print/print_error.h"
#include "widgets/dialogs.h"

#include <QFileInfo>
#include <QPrinter>

namespace zelto::print {

namespace {

void drawOn(PagedSurface& surface, const PrintServices& services, const Drawing& drawing)
{
    const DrawingTarget target(services.engine, surface);
    services.engine.setPageSize(services.printers.pageSize());
    drawing();
}

} // namespace

void drawOnPrinter(const PrintServices& services, const QString& title, const Drawing& drawing)
{
    QPrinter& printer = services.printers.printer();
    printer.setDocName(title);
    PagedSurface surface(printer);
    drawOn(surface, services, drawing);
    surface.finish();
    printer.setCopyCount(1); // copies are chosen for one document, not for the next
    if (surface.isEmpty())
        throw EmptyDocument();
}

void drawIntoPdf(const PrintServices& services, const QString& path, const PdfInfo& info,
                 const Drawing& drawing)
{
    PdfSurface surface(chosenPath(path), info, services.printers.pageLayout());
    drawOn(surface, services, drawing);
    surface.commit();
}

QString chooseOutputPath(widgets::Dialogs& dialogs, const QString& title, const QString& filter,
                         const QString& proposedPath)
{
    const QFileInfo proposed(proposedPath);
    QString path = dialogs.ShowFileDialog({.title = title,
                                           .filter = filter,
                                           .flags = widgets::FileDialogRequest::AnyFile,
                                           .initialFolder = proposed.absolutePath(),
                                           .kind = widgets::FileDialogRequest::Kind::Save,
                                           .defaultName = proposed.fileName()});
    if (path.isEmpty())
        return {};
    if (const QString extension = u'.' + proposed.suffix();
        !path.endsWith(extension, Qt::CaseInsensitive))
        path += extension;
    const bool isFree = !QFileInfo::exists(path) ||
                        dialogs.confirmLoss(u"Il file «%1» esiste già.\n\nSostituirlo?"_s.arg(
                            QFileInfo(path).fileName()));
    return isFree ? path : QString();
}

QString choosePdfPath(widgets::Dialogs& dialogs, const QString& proposedPath)
{
    return chooseOutputPath(dialogs, u"Esporta PDF"_s, u"Documenti PDF (*.PDF)|*.pdf"_s,
                            proposedPath);
}

void tellWritten(widgets::Dialogs& dialogs, const QString& path)
{
    dialogs.showWritten(u"Il documento è stato scritto nel file\n«%1»."_s.arg(path), path);
}

bool offersPdfInstead(widgets::Dialogs& dialogs)
{
    return dialogs.askYesNo(
        u"Nessuna stampante installata.\n\nSalvare il documento in un file PDF?"_s);
}

} // namespace zelto::print

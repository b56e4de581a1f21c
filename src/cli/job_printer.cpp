// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/job_printer.h"

#include "calc/calc_error.h"
#include "calc/job_loader.h"
#include "cli/console.h"
#include "print/pdf_surface.h"
#include "print/print_error.h"
#include "reports/tables.h"
#include "store/database.h"
#include "store/format_check.h"
#include "store/schema_check.h"

#include <QDir>
#include <QFileInfo>
#include <QTemporaryDir>

#include <algorithm>

namespace zelto::cli {

namespace {

QString makeFolder(const QString& folder)
{
    if (!QDir().mkpath(folder))
        throw print::PrintError(print::PrintErrorNumber::PathAccess,
                                QStringLiteral("Impossibile creare la cartella «%1».").arg(folder));
    return folder;
}

/// A folder of its own for the page files, so that two commands never meet.
QString pageFolderTemplate()
{
    return QDir(print::TempFolder(QDir::tempPath())).filePath(QStringLiteral("zelto-XXXXXX"));
}

} // namespace

JobPrinter::JobPrinter(const Options& options, store::UserInterface& user)
    : m_options(options), m_user(user)
{}

bool JobPrinter::print(const QString& lavoro)
{
    try {
        const std::optional<calc::ModelloLavoro> modello = load(lavoro);
        if (!modello)
            return false;
        checkShares(*modello);
        printPages(*modello, lavoro);
        if (m_options.mostra)
            showTables(*modello, lavoro);
        return true;
    } catch (const std::exception& error) {
        m_user.ReportError(error);
        return false;
    }
}

std::optional<calc::ModelloLavoro> JobPrinter::load(QString path)
{
    store::VerificaFormato(path, m_user);
    if (path.isEmpty())
        return std::nullopt;
    // Jobs of the earlier format are converted before they are read: on a copy, not in the file.
    store::Database copy = store::Database::openCopyInMemory(path);
    store::ControllaVersione(copy);
    store::ControllaTabelle(copy);
    return calc::CaricaLavoro(copy);
}

void JobPrinter::checkShares(const calc::ModelloLavoro& modello) const
{
    if (!m_options.riparto)
        return;
    const auto& quote = m_options.riparto->quote;
    if (const auto* tabella = std::get_if<reports::TabellaSpecifica>(&quote))
        if (tabella->t > modello.NumTabelle())
            throw calc::CalcError(QStringLiteral("La tabella %1 non esiste: il lavoro ne ha %2.")
                                      .arg(tabella->t)
                                      .arg(modello.NumTabelle()));
    if (const auto* scala = std::get_if<reports::MillesimiScala>(&quote)) {
        const std::vector<QString> scale = calc::elencoScale(modello);
        if (std::find(scale.begin(), scale.end(), scala->codice) == scale.end())
            throw calc::CalcError(
                QStringLiteral("Nessuna unità appartiene alla scala «%1».").arg(scala->codice));
    }
}

void JobPrinter::printPages(const calc::ModelloLavoro& modello, const QString& lavoro)
{
    const QTemporaryDir pageFolder(pageFolderTemplate());
    if (!pageFolder.isValid())
        throw print::PrintError(print::PrintErrorNumber::PathAccess,
                                QStringLiteral("Impossibile creare la cartella delle pagine: %1.")
                                    .arg(pageFolder.errorString()));
    print::PrintEngine engine(pageFolder.path(), text::DecimalSeparators::detect());
    const reports::ReportContext context{.modello = modello,
                                         .jobPath = QFileInfo(lavoro).absoluteFilePath(),
                                         .outputFolder = outputFolder(lavoro),
                                         .engine = engine,
                                         .user = m_user};
    engine.BeginDocument();
    if (m_options.riparto)
        reports::StampaRiparto(context, m_options.sezioni, *m_options.riparto);
    else
        reports::StampaMillesimi(context, m_options.sezioni, m_options.calcolo);
    engine.EndDocument();
    if (m_options.pdf.isEmpty())
        return;
    if (engine.pageCount() == 0)
        throw print::PrintError(print::PrintErrorNumber::PrinterFailed,
                                QStringLiteral("Non c'è nessuna pagina da stampare."));
    print::PdfSurface pdf(pdfPath(lavoro), {.title = jobName(lavoro), .author = print::userFullName()});
    engine.setSurface(&pdf);
    engine.PrintDocument(1, engine.pageCount());
    pdf.commit();
}

void JobPrinter::showTables(const calc::ModelloLavoro& modello, const QString& lavoro) const
{
    if (m_options.lavori.size() > 1)
        writeOut(QStringLiteral("== %1 ==\n").arg(jobName(lavoro)));
    if (m_options.riparto) {
        writeOut(reports::tableAsText(reports::tabellaRiparto(modello, *m_options.riparto)));
        return;
    }
    writeOut(reports::tableAsText(reports::tabellaGenerale(modello)));
    for (int t = 1; t <= modello.NumTabelle(); ++t)
        writeOut(u'\n' + reports::tableAsText(reports::tabellaSpeciale(modello, t)));
    const calc::Consistenze consistenze = calc::calcolaConsistenze(modello);
    for (const QString& codice : calc::elencoScale(modello)) {
        const calc::QuoteScala quote =
            calc::calcolaScala(modello, consistenze, codice, m_options.calcolo.indice);
        writeOut(u'\n' + reports::tableAsText(reports::tabellaScala(modello, quote)));
    }
}

QString JobPrinter::pdfPath(const QString& lavoro) const
{
    if (m_options.lavori.size() == 1)
        return m_options.pdf;
    return QDir(makeFolder(m_options.pdf)).filePath(jobName(lavoro) + QStringLiteral(".pdf"));
}

QString JobPrinter::outputFolder(const QString& lavoro) const
{
    if (m_options.lavori.size() == 1)
        return makeFolder(m_options.uscite);
    return makeFolder(QDir(m_options.uscite).filePath(jobName(lavoro)));
}

} // namespace zelto::cli

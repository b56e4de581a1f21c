// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/job_printer.h"

#include "calc/calc_error.h"
#include "calc/job_loader.h"
#include "cli/console.h"
#include "print/complete_file.h"
#include "print/pdf_surface.h"
#include "print/print_error.h"
#include "reports/table_export.h"
#include "reports/text_output.h"
#include "store/database.h"
#include "store/files/file_names.h"
#include "store/files/passing_folder.h"
#include "store/format_check.h"
#include "store/jet/conversion.h"
#include "store/jet/page_file.h"
#include "text/system_reason.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace zelto::cli {

namespace {

/// A folder of its own for what the command puts by, so that two commands never meet.
QString passingParent()
{
    return print::TempFolder(QDir::tempPath());
}

void requireFolder(const store::PassingFolder& folder)
{
    if (!folder.isValid())
        throw print::PrintError(print::PrintErrorNumber::PathAccess,
                                u"Impossibile scrivere nella cartella «%1» (%2)."_s.arg(
                                    passingParent(), text::systemReason(folder.error())));
}

} // namespace

JobPrinter::JobPrinter(const Options& options, Console& user) : m_options(options), m_user(user) {}

bool JobPrinter::print(const QString& lavoro)
{
    try {
        const std::optional<calc::ModelloLavoro> modello = load(lavoro);
        if (!modello)
            return false;
        requireDistinctOutputs();
        // First of all: what is refused leaves nothing behind.
        const std::vector<reports::TableReport> wanted = tables(*modello);
        printPages(*modello, lavoro);
        exportTables(wanted, documentInfo(*modello), lavoro);
        if (m_options.mostra)
            showTables(wanted, lavoro);
        return true;
    } catch (const std::exception& error) {
        m_user.ReportError(error);
        return false;
    }
}

std::optional<calc::ModelloLavoro> JobPrinter::load(QString path)
{
    const store::PassingFolder folder(passingParent());
    requireFolder(folder);
    if (store::jet::isJetFile(path)) {
        const QString converted = folder.filePath(u"convertito.ZLT"_s);
        const auto report =
            store::jet::convertJob(path, converted, [](store::Database& /*job*/) {});
        for (const QString& remark : report.remarks)
            m_user.showMessage(remark);
        path = converted;
    }
    store::VerificaFormato(path, m_user);
    if (path.isEmpty())
        return std::nullopt;
    // Jobs of the earlier format are converted before they are read: on a copy, not in the file.
    store::Database copy = store::Database::openCopyInMemory(path);
    store::ControllaVersione(copy);
    store::ControllaTabelle(copy);
    return calc::CaricaLavoro(copy);
}

/// Of several jobs every one has names of its own in folders.
void JobPrinter::requireDistinctOutputs() const
{
    if (m_options.lavori.size() > 1)
        return;
    QStringList earlier;
    for (const QString& name : {reports::ConsistenzaOut, reports::CalcoloOut, reports::ScaleOut})
        earlier << QDir(m_options.uscite).filePath(name);
    QStringList files{m_options.pdf};
    for (std::size_t i = 0; i < m_options.formati.size(); ++i)
        if (!reports::tableFormats()[i].extension.isEmpty())
            files << m_options.formati[i];
    for (const QString& chosen : std::as_const(files)) {
        if (chosen.isEmpty())
            continue;
        for (const QString& other : std::as_const(earlier))
            if (store::isSameFile(QDir::cleanPath(QFileInfo(chosen).absoluteFilePath()),
                                  QDir::cleanPath(QFileInfo(other).absoluteFilePath())))
                throw print::PrintError(
                    print::PrintErrorNumber::PathAccess,
                    u"Due uscite avrebbero lo stesso nome: «%1»."_s.arg(chosen));
        earlier << chosen;
    }
}

void JobPrinter::printPages(const calc::ModelloLavoro& modello, const QString& lavoro)
{
    const store::PassingFolder pageFolder(passingParent());
    requireFolder(pageFolder);
    print::PrintEngine engine(pageFolder.path(), text::DecimalSeparators::detect());
    const reports::ReportContext context{.modello = modello,
                                         .jobPath = QFileInfo(lavoro).absoluteFilePath(),
                                         .outputFolder = folderPath(m_options.uscite, lavoro),
                                         .engine = engine,
                                         .status = m_user};
    engine.BeginDocument();
    reports::stampaDocumento(context, m_options.sezioni, m_options.opzioni());
    engine.EndDocument();
    if (m_options.pdf.isEmpty())
        return;
    if (engine.pageCount() == 0)
        throw print::EmptyDocument();
    print::PdfSurface pdf(filePath(m_options.pdf, lavoro, u".pdf"_s), documentInfo(modello));
    const print::DrawingTarget target(engine, pdf);
    engine.PrintDocument(1, engine.pageCount());
    pdf.commit();
}

print::PdfInfo JobPrinter::documentInfo(const calc::ModelloLavoro& modello) const
{
    const QString& kind = reports::documento(m_options.opzioni()).title;
    return {.title = reports::documentTitle(kind, modello), .author = print::userFullName()};
}

std::vector<reports::TableReport> JobPrinter::tables(const calc::ModelloLavoro& modello) const
{
    if (!m_options.mostra && !exportsTables())
        return {};
    return reports::tabelleScelte(modello, m_options.opzioni());
}

bool JobPrinter::exportsTables() const
{
    return std::ranges::any_of(m_options.formati,
                               [](const QString& path) { return !path.isEmpty(); });
}

void JobPrinter::exportTables(const std::vector<reports::TableReport>& tables,
                              const print::PdfInfo& info, const QString& lavoro) const
{
    if (tables.empty() && exportsTables())
        throw calc::CalcError(u"Non c'è nessuna tabella da esportare."_s);
    for (std::size_t i = 0; i < m_options.formati.size(); ++i) {
        const reports::TableFormat& format = reports::tableFormats()[i];
        const QString& chosen = m_options.formati[i];
        if (!chosen.isEmpty())
            format.write(format.extension.isEmpty() ? folderPath(chosen, lavoro)
                                                    : filePath(chosen, lavoro, format.extension),
                         tables, info);
    }
}

void JobPrinter::showTables(const std::vector<reports::TableReport>& tables,
                            const QString& lavoro) const
{
    if (m_options.lavori.size() > 1)
        writeOut(u"== %1 ==\n"_s.arg(jobName(lavoro)));
    for (const reports::TableReport& table : tables) {
        if (&table != &tables.front())
            writeOut(u"\n"_s);
        writeOut(reports::tableAsText(table));
    }
}

QString JobPrinter::filePath(const QString& path, const QString& lavoro,
                             const QString& extension) const
{
    QString file;
    if (m_options.lavori.size() == 1) {
        file = print::chosenPath(path);
    } else {
        print::makeFolder(path);
        file = QDir(path).filePath(jobName(lavoro) + extension);
    }
    for (const QString& job : m_options.lavori)
        if (store::isSameFile(file, job))
            throw print::PrintError(print::PrintErrorNumber::PathAccess,
                                    u"«%1» è un lavoro e non viene sostituito."_s.arg(file));
    return file;
}

QString JobPrinter::folderPath(const QString& folder, const QString& lavoro) const
{
    print::makeFolder(folder);
    if (m_options.lavori.size() == 1)
        return folder;
    QString own = QDir(folder).filePath(jobName(lavoro));
    print::makeOwnFolder(own);
    return own;
}

} // namespace zelto::cli

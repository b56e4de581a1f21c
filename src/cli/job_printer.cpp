// SPDX-License-Identifier: GPL-3.0-or-later
#include "cli/job_printer.h"

#include "calc/calc_error.h"
#include "calc/job_check.h"
#include "calc/job_loader.h"
#include "print/complete_file.h"
#include "print/pdf_surface.h"
#include "print/print_error.h"
#include "reports/on_paper.h"
#include "store/database.h"
#include "store/files/file_names.h"
#include "store/files/passing_folder.h"
#include "store/format_check.h"
#include "store/jet/conversion.h"
#include "store/jet/jet_file.h"
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

/// The job as a copy in memory; nothing when it is of another format, which the user hears of.
std::optional<store::Database> open(QString path, Console& user)
{
    const store::PassingFolder folder(passingParent());
    requireFolder(folder);
    if (store::jet::isJetFile(path)) {
        const QString converted = folder.filePath(u"convertito.ZLT"_s);
        const auto report =
            store::jet::convertJob(path, converted, [](store::Database& /*job*/) {});
        for (const QString& remark : report.remarks)
            user.showMessage(remark);
        path = converted;
    }
    store::VerificaFormato(path, user);
    if (path.isEmpty())
        return std::nullopt;
    // Jobs of the earlier format are converted before they are read: on a copy, not in the file.
    store::Database copy = store::Database::openCopyInMemory(path);
    store::ControllaVersione(copy);
    store::ControllaTabelle(copy);
    return copy;
}

QString remarkLine(const calc::Osservazione& osservazione)
{
    // A name may hold anything, and a remark is one line.
    return u"%1: %2"_s.arg(calc::nome(osservazione.gravita()), calc::testo(osservazione))
        .replace(u'\n', u' ');
}

/// Of several jobs every one has names of its own in folders.
void requireDistinctOutputs(const Options& options)
{
    if (options.lavori.size() > 1)
        return;
    QStringList files;
    for (const QString& name : reports::textFiles())
        files << QDir(options.uscite).filePath(name);
    const auto add = [&](const QString& chosen) {
        const auto isChosen = [&](const QString& other) {
            return store::isSameFile(QDir::cleanPath(QFileInfo(chosen).absoluteFilePath()),
                                     QDir::cleanPath(QFileInfo(other).absoluteFilePath()));
        };
        if (!chosen.isEmpty() && std::ranges::any_of(files, isChosen))
            throw print::PrintError(print::PrintErrorNumber::PathAccess,
                                    u"Due uscite avrebbero lo stesso nome: «%1»."_s.arg(chosen));
        files << chosen;
    };
    add(options.pdf);
    for (const auto& [format, path] : options.formati)
        if (!format->isFolder())
            add(path);
}

/// Of one job the path as given; of several a file of the job's name in it as a folder.
QString filePath(const Options& options, const QString& path, const QString& lavoro,
                 const QString& extension)
{
    QString file;
    if (options.lavori.size() == 1) {
        file = print::chosenPath(path);
    } else {
        print::makeFolder(path);
        file = QDir(path).filePath(jobName(lavoro) + extension);
    }
    for (const QString& job : options.lavori)
        if (store::isSameFile(file, job))
            throw print::PrintError(print::PrintErrorNumber::PathAccess,
                                    u"«%1» è un lavoro e non viene sostituito."_s.arg(file));
    return file;
}

/// The folder, or one of the job's name in it for several jobs; made if it is not there.
QString folderPath(const Options& options, const QString& folder, const QString& lavoro)
{
    print::makeFolder(folder);
    if (options.lavori.size() == 1)
        return folder;
    QString own = QDir(folder).filePath(jobName(lavoro));
    print::makeOwnFolder(own);
    return own;
}

void printPages(const Options& options, const reports::ReportContext& context,
                const print::PdfInfo& info, const QString& lavoro)
{
    print::PrintEngine& engine = context.engine;
    engine.BeginDocument();
    reports::stampaDocumento(context, options.sezioni, options.opzioni());
    engine.EndDocument();
    if (options.pdf.isEmpty())
        return;
    if (engine.pageCount() == 0)
        throw print::EmptyDocument();
    print::PdfSurface pdf(filePath(options, options.pdf, lavoro, u".pdf"_s), info);
    const print::DrawingTarget target(engine, pdf);
    engine.PrintDocument(1, engine.pageCount());
    pdf.commit();
}

void exportTables(const Options& options, const reports::Tables& tables, const print::PdfInfo& info,
                  const QString& lavoro)
{
    if (tables.empty() && !options.formati.empty())
        throw calc::CalcError(u"Non c'è nessuna tabella da esportare."_s);
    for (const auto& [format, path] : options.formati)
        format->write(format->isFolder() ? folderPath(options, path, lavoro)
                                         : filePath(options, path, lavoro, format->extension),
                      tables, info);
}

void showTables(const Options& options, const reports::Tables& tables, const QString& lavoro)
{
    if (options.lavori.size() > 1)
        writeOut(u"== %1 ==\n"_s.arg(jobName(lavoro)));
    for (const reports::TableReport& table : tables) {
        if (&table != &tables.front())
            writeOut(u"\n"_s);
        writeOut(reports::tableAsText(table));
    }
}

/// Everything that the command is to make of a job.
void printLoaded(const Options& options, const calc::ModelloLavoro& modello,
                 const calc::LavoroScritto& scritto, const QString& lavoro, Console& user)
{
    // First of all: what is refused leaves nothing behind.
    const reports::OpzioniStampa opzioni = options.opzioni();
    reports::Tables tables;
    if (options.mostra || !options.formati.empty())
        tables = reports::tabelleScelte(modello, opzioni);
    std::optional<reports::Schede> schede;
    if (!options.schede.isEmpty())
        schede.emplace(reports::schedeUnita(modello, scritto, opzioni));

    const store::PassingFolder pageFolder(passingParent());
    requireFolder(pageFolder);
    print::PrintEngine engine(pageFolder.path(), text::DecimalSeparators::detect());
    const reports::ReportContext context{.modello = modello,
                                         .scritto = scritto,
                                         .jobPath = QFileInfo(lavoro).absoluteFilePath(),
                                         .outputFolder =
                                             folderPath(options, options.uscite, lavoro),
                                         .engine = engine,
                                         .status = user};
    const print::PdfInfo info = reports::documentInfo(opzioni, modello);
    printPages(options, context, info, lavoro);
    exportTables(options, tables, info, lavoro);
    if (schede)
        reports::writeSheets(folderPath(options, options.schede, lavoro), *schede, context, info);
    if (options.mostra)
        showTables(options, tables, lavoro);
}

std::vector<calc::Osservazione> remarksOn(const calc::LavoroScritto& scritto)
{
    return calc::controlla(scritto, reports::sullaCarta());
}

} // namespace

ExitStatus printJob(const Options& options, const QString& lavoro, Console& user)
{
    try {
        std::optional<store::Database> aperto = open(lavoro, user);
        if (!aperto)
            return JobFailed;
        const calc::ModelloLavoro modello = calc::CaricaLavoro(*aperto);
        const calc::LavoroScritto scritto = calc::LeggiLavoroScritto(*aperto);
        requireDistinctOutputs(options);
        for (const calc::Osservazione& una : remarksOn(scritto))
            if (una.gravita() == calc::Gravita::Errore)
                user.showMessage(remarkLine(una));
        printLoaded(options, modello, scritto, lavoro, user);
        return Done;
    } catch (const std::exception& error) {
        user.ReportError(error);
        return JobFailed;
    }
}

ExitStatus checkJob(const QString& lavoro, Console& user)
{
    try {
        std::optional<store::Database> aperto = open(lavoro, user);
        if (!aperto)
            return JobFailed;
        ExitStatus status = Done;
        for (const calc::Osservazione& una : remarksOn(calc::LeggiLavoroScritto(*aperto))) {
            writeOut(lavoro + u": "_s + remarkLine(una) + u'\n');
            if (una.gravita() == calc::Gravita::Errore)
                status = ErrorsFound;
        }
        return status;
    } catch (const std::exception& error) {
        user.ReportError(error);
        return JobFailed;
    }
}

} // namespace zelto::cli

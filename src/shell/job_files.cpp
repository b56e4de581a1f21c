// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/job_files.h"

#include "shell/recent_jobs.h"
#include "store/file_operations.h"
#include "store/files/new_file.h"
#include "store/format_check.h"
#include "store/jet/conversion.h"
#include "store/jet/jet_file.h"
#include "store/job_copies.h"
#include "widgets/dialogs.h"
#include "widgets/keys.h"
#include "widgets/main_window_services.h"

#include <QFileInfo>

#include <utility>

namespace zelto::shell {

using Request = widgets::FileDialogRequest;

JobFiles::JobFiles(widgets::MainWindowServices& window, widgets::Dialogs& dialogs,
                   RecentJobs& recent, const store::JobCopies& copies, JobCheck check)
    : m_window(window), m_dialogs(dialogs), m_recent(recent), m_copies(copies),
      m_check(std::move(check)), m_job(window, recent)
{}

bool JobFiles::refusedByDocuments()
{
    const bool refused = m_window.HasDocumentWindows();
    if (refused)
        m_dialogs.showMessage(u"Chiudere finestre aperte prima di selezionale un altro lavoro"_s);
    return refused;
}

bool JobFiles::documentsClosed()
{
    return !m_job.isOpen() || m_window.closeDocumentWindows();
}

QString JobFiles::askFile(const Request& request)
{
    return store::asOnDisk(m_dialogs.ShowFileDialog(request));
}

QString JobFiles::askNewJob(const QString& title, store::NameRule rule, const QString& folder,
                            const QString& proposedName)
{
    const QString chosen = m_dialogs.ShowFileDialog({.title = title,
                                                     .filter = JobFilter,
                                                     .flags = Request::AnyFile,
                                                     .initialFolder = folder,
                                                     .kind = Request::Kind::Save,
                                                     .defaultName = proposedName});
    if (chosen.isEmpty())
        return {};
    const store::TargetName name = store::targetName(chosen, rule);
    if (name.byRule == name.typed)
        return name.typed;
    const auto creates = [](const QString& path) {
        return u"Crea «…/%1»"_s.arg(widgets::asCaption(store::nameOf(path)));
    };
    const std::optional<int> choice = m_dialogs.choose(
        u"Quale file si deve creare?\n\nCon il nome scritto:\n«%1»\n\nCon il nome che ne fa "
        "Zelto:\n«%2»"_s.arg(name.typed, name.byRule),
        {creates(name.typed), creates(name.byRule)});
    if (!choice)
        return {};
    return *choice == 0 ? name.typed : name.byRule;
}

bool JobFiles::refusedAsWindowsJob(const QString& path)
{
    // The open job is none, and looking at it would drop the engine's locks.
    const bool refused = !m_job.isAt(path) && store::jet::isJetFile(path);
    if (refused)
        m_dialogs.showMessage(u"Il file «%1» è un archivio dell'edizione per Windows. Per farne un "
                              "lavoro di questa, aprirlo con «Apri ...» e scegliere "
                              "«Converti ...»."_s.arg(path));
    return refused;
}

void JobFiles::chiudiLavoro()
{
    if (m_job.isOpen())
        keepCopy();
    m_job.close();
}

void JobFiles::NuovoLavoro()
{
    createJob(store::createJobFile);
}

void JobFiles::NuovoDaModello()
{
    QString model = askFile({.title = u"Selezionare il lavoro che fa da modello"_s,
                             .filter = JobFilter,
                             .flags = Request::FileMustExist,
                             .initialFolder = m_job.JobFolder()});
    if (model.isEmpty() || refusedAsWindowsJob(model))
        return;
    store::VerificaFormato(model, m_dialogs);
    if (!model.isEmpty())
        createJob([&model](const QString& path) { store::createJobFromModel(path, model); });
}

void JobFiles::createJob(const std::function<void(const QString& path)>& operation)
{
    const QString path =
        askNewJob(u"Indicare codice lavoro"_s, store::NameRule::UpToFirstDot, m_job.JobFolder());
    if (path.isEmpty())
        return;
    store::requireFreeName(path);
    if (!documentsClosed())
        return;
    const widgets::StatusScope status(m_window, u"Creazione nuovo lavoro "_s + path);
    operation(path);
    chiudiLavoro();
    m_job.open(path);
}

void JobFiles::ApriLavoro()
{
    if (refusedByDocuments())
        return;
    const QString path = askFile({.title = u"Selezionare codice lavoro"_s,
                                  .filter = JobFilter,
                                  .flags = Request::FileMustExist,
                                  .initialFolder = {},
                                  .kind = Request::Kind::Save});
    if (!path.isEmpty())
        openVerified(path, Conversion::Yes);
}

void JobFiles::LeggiRecent(std::size_t place)
{
    openListed(m_recent.paths().at(place), Conversion::No);
}

void JobFiles::openGiven(const QString& path)
{
    openListed(QFileInfo(path).absoluteFilePath(), Conversion::Yes);
}

void JobFiles::openListed(const QString& listed, Conversion conversion)
{
    if (refusedByDocuments())
        return;
    const QString path = store::findFile(listed);
    if (path.isEmpty())
        m_dialogs.showError(u"Archivio < %1 > non trovato"_s.arg(listed));
    else
        openVerified(path, conversion);
}

void JobFiles::openVerified(QString path, Conversion conversion)
{
    chiudiLavoro();
    if (store::jet::isJetFile(path))
        path = converted(path);
    else
        store::VerificaFormato(path, m_dialogs);
    if (path.isEmpty())
        return;
    m_job.open(path);
    keepCopy();
    if (conversion == Conversion::Yes) {
        try {
            store::ControllaVersione(m_job.JobDatabase());
        } catch (...) {
            m_job.close();
            throw;
        }
    }
    tellRestrictions();
}

void JobFiles::tellRestrictions()
{
    const QString& path = m_job.JobPath();
    if (m_job.isOpenElsewhere(path))
        m_dialogs.showMessage(
            u"Il lavoro «%1» è aperto anche in un'altra finestra di Zelto. Le "
            "modifiche dell'una si vedono nell'altra quando vi si ritorna."_s.arg(path));
    if (!store::isWritable(path))
        m_dialogs.showMessage(u"Il lavoro «%1» è di sola lettura: si può consultare e stampare, ma "
                              "non modificare."_s.arg(path));
}

QString JobFiles::converted(const QString& original)
{
    if (!m_dialogs.offerConversion(store::IncompatibleFormat.toString()))
        return {};
    if (store::jet::mayBeInUse(original) &&
        !m_dialogs.askYesNo(
            u"Accanto al lavoro c'è il suo file «.ldb»: forse è aperto in Zelto per "
            "Windows, e le ultime modifiche potrebbero mancare. Convertirlo "
            "ugualmente?"_s))
        return {};
    const QString target =
        askNewJob(u"Indicare il nome del lavoro convertito"_s, store::NameRule::AsTyped,
                  store::folderOf(original), store::nameOf(store::jet::convertedPath(original)));
    if (target.isEmpty())
        return {};
    store::jet::ConversionReport report;
    {
        const widgets::StatusScope status(m_window,
                                          u"Conversione "_s + original + u" su "_s + target);
        report = store::jet::convertJob(original, target, m_check);
    }
    m_dialogs.showMessage(report.text());
    return target;
}

/// When the job is opened before anything of it is converted. Without a copy one can work all the
/// same.
void JobFiles::keepCopy()
{
    try {
        m_copies.keep(m_job.JobPath());
    } catch (const std::exception& error) {
        m_dialogs.showMessage(
            u"Non è stato possibile conservare una copia di sicurezza del lavoro "
            "«%1».\n\n%2"_s.arg(m_job.JobPath(), QString::fromUtf8(error.what())));
    }
}

void JobFiles::DuplicaLavoro()
{
    const QString source = sourceOfDuplicate();
    if (source.isEmpty())
        return;
    const QString target = askNewJob(u"Selezionare Nuovo Nome del Lavoro"_s,
                                     store::NameRule::UpperCase, m_job.JobFolder());
    if (!target.isEmpty())
        duplicate(source, target);
}

QString JobFiles::sourceOfDuplicate()
{
    if (m_job.isOpen())
        return m_job.JobPath();
    QString source = askFile({.title = u"Selezionare Lavoro da Aprire"_s,
                              .filter = JobFilter,
                              .flags = Request::FileMustExist,
                              .initialFolder = m_job.JobFolder()});
    if (source.isEmpty() || refusedAsWindowsJob(source))
        return {};
    (void)store::Database::open(source, store::OpenMode::ReadOnly);
    return source;
}

void JobFiles::duplicate(const QString& source, const QString& target)
{
    const std::vector<store::FileCopy> plan = store::duplicatePlan(source, target);
    for (const store::FileCopy& file : plan)
        store::requireFreeName(file.target);
    (void)store::NewFile(target); // where nothing can be written nothing need be closed
    if (!documentsClosed())
        return;
    chiudiLavoro();
    const widgets::StatusScope status(m_window, u"Duplicazione "_s + source + u" su "_s + target);
    for (const store::FileCopy& file : plan) {
        if (file.source == source)
            store::copyDatabase(file.source, file.target);
        else
            store::copyFile(file.source, file.target);
    }
    m_job.open(target);
}

} // namespace zelto::shell

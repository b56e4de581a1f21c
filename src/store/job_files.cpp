// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/job_files.h"

#include "store/files/duplicate_plan.h"
#include "store/files/file_operations.h"
#include "store/files/job_copies.h"
#include "store/files/new_file.h"
#include "store/format_check.h"
#include "store/jet/conversion.h"
#include "store/jet/page_file.h"
#include "store/job_dialogs.h"
#include "store/main_window_services.h"
#include "store/master_database.h"
#include "store/recent_jobs.h"

#include <QFileInfo>

#include <utility>

namespace zelto::store {

using Kind = FileDialogRequest::Kind;

JobFiles::JobFiles(MainWindowServices& window, RecentJobs& recent, MasterDatabase& master,
                   const JobCopies& copies, JobCheck check)
    : m_window(window), m_recent(recent), m_master(master), m_copies(copies),
      m_check(std::move(check)), m_job(window, recent)
{}

void JobFiles::reportingErrors(const Operation& operation)
{
    try {
        operation();
    } catch (const std::exception& error) {
        m_window.ReportError(error);
    }
}

bool JobFiles::documentsClosed()
{
    return !m_job.isOpen() || m_window.closeDocumentWindows();
}

std::optional<QString> JobFiles::newJobPath(const QString& chosen, NameRule rule)
{
    const TargetName name = targetName(chosen, rule);
    if (name.byRule == name.typed)
        return name.typed;
    const auto creates = [](const QString& path) { return u"Crea «…/%1»"_s.arg(nameOf(path)); };
    const std::optional<int> choice = m_window.choose(
        u"Quale file si deve creare?\n\nCon il nome scritto:\n«%1»\n\nCon il nome che ne fa "
        "Zelto:\n«%2»"_s.arg(name.typed, name.byRule),
        {creates(name.typed), creates(name.byRule)});
    if (!choice)
        return std::nullopt;
    return *choice == 0 ? name.typed : name.byRule;
}

bool JobFiles::refusedAsWindowsJob(const QString& path)
{
    // The open job is none, and looking at it would drop the engine's locks.
    const bool refused = !m_job.isAt(path) && jet::isJetFile(path);
    if (refused)
        m_window.showMessage(u"Il file «%1» è un archivio dell'edizione per Windows. Per farne un "
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
    reportingErrors([&] {
        const QString chosen = m_window.ShowFileDialog(jobDialog(u"Indicare codice lavoro"_s,
                                                                 FileDialogRequest::AnyFile,
                                                                 Kind::Save, m_job.JobFolder()));
        if (chosen.isEmpty())
            return;
        if (const auto path = newJobPath(chosen, NameRule::UpToFirstDot))
            createJob(*path);
    });
}

void JobFiles::createJob(const QString& path)
{
    requireFreeName(path);
    if (!documentsClosed())
        return;
    const StatusScope status(m_window, u"Creazione nuovo lavoro "_s + path);
    createJobFile(path);
    chiudiLavoro();
    m_job.open(path);
}

void JobFiles::ApriLavoro()
{
    if (m_window.HasDocumentWindows()) {
        m_window.showMessage(u"Chiudere finestre aperte prima di selezionale un altro lavoro"_s);
        return;
    }
    const QString chosen = m_window.ShowFileDialog(
        jobDialog(u"Selezionare codice lavoro"_s, FileDialogRequest::FileMustExist, Kind::Save));
    if (!chosen.isEmpty())
        openVerified(asOnDisk(chosen), Conversion::Yes);
}

void JobFiles::LeggiRecent(int entry)
{
    openListed(m_recent.path(entry), Conversion::No);
}

void JobFiles::openGiven(const QString& path)
{
    openListed(QFileInfo(path).absoluteFilePath(), Conversion::Yes);
}

void JobFiles::openListed(const QString& listed, Conversion conversion)
{
    const QString path = findFile(listed);
    if (path.isEmpty())
        m_window.showError(u"Archivio < %1 > non trovato"_s.arg(listed));
    else
        openVerified(path, conversion);
}

void JobFiles::openVerified(QString path, Conversion conversion)
{
    chiudiLavoro();
    if (jet::isJetFile(path))
        path = converted(path);
    else
        VerificaFormato(path, m_window);
    if (path.isEmpty())
        return;
    m_job.open(path);
    keepCopy();
    if (conversion == Conversion::Yes) {
        try {
            ControllaVersione(m_job.JobDatabase());
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
        m_window.showMessage(
            u"Il lavoro «%1» è aperto anche in un'altra finestra di Zelto. Le "
            "modifiche dell'una si vedono nell'altra quando vi si ritorna."_s.arg(path));
    if (!isWritable(path))
        m_window.showMessage(u"Il lavoro «%1» è di sola lettura: si può consultare e stampare, ma "
                             "non modificare."_s.arg(path));
}

QString JobFiles::converted(const QString& original)
{
    if (!m_window.offerConversion(IncompatibleFormat.toString()))
        return {};
    if (jet::mayBeInUse(original) &&
        !m_window.askYesNo(u"Accanto al lavoro c'è il suo file «.ldb»: forse è aperto in Zelto per "
                           "Windows, e le ultime modifiche potrebbero mancare. Convertirlo "
                           "ugualmente?"_s))
        return {};
    FileDialogRequest request =
        jobDialog(u"Indicare il nome del lavoro convertito"_s, FileDialogRequest::AnyFile,
                  Kind::Save, folderOf(original));
    request.defaultName = nameOf(jet::convertedPath(original));
    const QString chosen = m_window.ShowFileDialog(request);
    if (chosen.isEmpty())
        return {};
    const QString target = targetName(chosen, NameRule::AsTyped).byRule;
    jet::ConversionReport report;
    {
        const StatusScope status(m_window, u"Conversione "_s + original + u" su "_s + target);
        report = jet::convertJob(original, target, m_check);
    }
    m_window.showMessage(report.text());
    return target;
}

/// When the job is opened before anything of it is converted. Without a copy one can work all the
/// same.
void JobFiles::keepCopy()
{
    try {
        m_copies.keep(m_job.JobPath());
    } catch (const std::exception& error) {
        m_window.showMessage(u"Non è stato possibile conservare una copia di sicurezza del lavoro "
                             "«%1».\n\n%2"_s.arg(m_job.JobPath(), QString::fromUtf8(error.what())));
    }
}

void JobFiles::DuplicaLavoro()
{
    reportingErrors([&] {
        const QString source = sourceOfDuplicate();
        if (source.isEmpty())
            return;
        const QString chosen = m_window.ShowFileDialog(
            jobDialog(u"Selezionare Nuovo Nome del Lavoro"_s, FileDialogRequest::AnyFile,
                      Kind::Save, m_job.JobFolder()));
        if (chosen.isEmpty())
            return;
        if (const auto target = newJobPath(chosen, NameRule::UpperCase))
            duplicate(source, *target);
    });
}

/// The open job, or one that the user chooses; empty when the user cancels.
QString JobFiles::sourceOfDuplicate()
{
    if (m_job.isOpen())
        return m_job.JobPath();
    const QString chosen = m_window.ShowFileDialog(jobDialog(u"Selezionare Lavoro da Aprire"_s,
                                                             FileDialogRequest::FileMustExist,
                                                             Kind::Open, m_job.JobFolder()));
    QString source = asOnDisk(chosen);
    if (source.isEmpty() || refusedAsWindowsJob(source))
        return {};
    (void)Database::open(source, OpenMode::ReadOnly);
    return source;
}

void JobFiles::duplicate(const QString& source, const QString& target)
{
    const std::vector<FileCopy> plan = duplicatePlan(source, target);
    for (const FileCopy& file : plan)
        requireFreeName(file.target);
    (void)NewFile(target); // where nothing can be written nothing need be closed
    if (!documentsClosed())
        return;
    chiudiLavoro();
    const StatusScope status(m_window, u"Duplicazione "_s + source + u" su "_s + target);
    for (const FileCopy& file : plan) {
        if (file.source == source)
            copyDatabase(file.source, file.target);
        else
            copyFile(file.source, file.target);
    }
    m_job.open(target);
}

} // namespace zelto::store

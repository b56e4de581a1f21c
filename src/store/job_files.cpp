// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/job_files.h"

#include "store/duplicate_plan.h"
#include "store/file_names.h"
#include "store/file_operations.h"
#include "store/format_check.h"
#include "store/jet/conversion.h"
#include "store/jet/page_file.h"
#include "store/job_copies.h"
#include "store/main_window_services.h"
#include "store/master_database.h"
#include "store/new_file.h"
#include "store/recent_jobs.h"
#include "store/repair.h"

#include <QFileInfo>

#include <utility>

namespace zelto::store {

using namespace Qt::StringLiterals;

using Kind = FileDialogRequest::Kind;

namespace {

constexpr QStringView JobExtension = u".ZLT";
constexpr QStringView BackupExtension = u".BAK";
constexpr QStringView JobFilter = u"Tabelle Millessimi (*.ZLT)|*.zlt";
constexpr QStringView DatabaseFilter =
    u"Tabelle Millessimi (*.ZLT)|*.zlt|Database Access (*.MDB)|*.mdb";

FileDialogRequest jobDialog(const QString& title, int flags, Kind kind, const QString& folder = {})
{
    return {.title = title,
            .filter = JobFilter.toString(),
            .flags = flags,
            .initialFolder = folder,
            .kind = kind};
}

FileDialogRequest databaseDialog(const QString& title, int flags, const QString& folder)
{
    return {.title = title,
            .filter = DatabaseFilter.toString(),
            .flags = flags,
            .initialFolder = folder};
}

/// The first dot counts, even one in the name of a folder.
QString newJobPath(const QString& chosen)
{
    return chosen.section(u'.', 0, 0) + JobExtension.toString();
}

QString duplicatePath(const QString& chosen)
{
    const QString path = withUpperCaseName(chosen);
    return path.right(4).contains(u'.') ? path : path + JobExtension.toString();
}

QString repairMessage(const RepairResult& result)
{
    return u"L'archivio era danneggiato. Unità recuperate: %1; vani recuperati: %2; record o campi "
           "perduti: almeno %3.\n\nControllare tutti i dati del lavoro. Il file danneggiato è "
           "conservato come «%4»."_s.arg(QString::number(result.units),
                                         QString::number(result.rooms),
                                         QString::number(result.leftOut), result.damagedOriginal);
}

/// A name that tells the restored job from the one of today.
QString restoredName(const JobCopy& copy)
{
    return u"%1 %2"_s.arg(nameOf(withoutExtension(copy.job)),
                          copy.changed.toString(u"yyyy-MM-dd HH-mm"_s));
}

} // namespace

JobFiles::JobFiles(MainWindowServices& window, RecentJobs& recent, MasterDatabase& master,
                   const JobCopies& copies, JobCheck check)
    : m_window(window), m_recent(recent), m_master(master), m_copies(copies),
      m_check(std::move(check)), m_job(window, recent)
{}

template <typename Operation>
void JobFiles::reportingErrors(Operation operation)
{
    try {
        operation();
    } catch (const std::exception& error) {
        m_window.ReportError(error);
    }
}

template <typename Operation>
void JobFiles::withFilesClosed(Operation operation)
{
    m_job.suspend();
    m_master.close();
    reportingErrors(operation);
    reportingErrors([&] { m_master.reopen(); });
    reportingErrors([&] { m_job.resume(); });
}

bool JobFiles::documentsClosed()
{
    return !m_job.isOpen() || m_window.closeDocumentWindows();
}

void JobFiles::NuovoLavoro()
{
    reportingErrors([&] {
        const QString chosen = m_window.ShowFileDialog(jobDialog(u"Indicare codice lavoro"_s,
                                                                 FileDialogRequest::AnyFile,
                                                                 Kind::Save, m_job.JobFolder()));
        if (!chosen.isEmpty())
            createJob(newJobPath(chosen));
    });
}

void JobFiles::createJob(const QString& path)
{
    requireFreeName(path);
    if (!documentsClosed())
        return;
    const StatusScope status(m_window, u"Creazione nuovo lavoro "_s + path);
    createJobFile(path);
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
    m_job.close();
    if (jet::isJetFile(path))
        path = converted(path);
    else
        VerificaFormato(path, m_window);
    if (path.isEmpty())
        return;
    m_job.open(path);
    keepCopy();
    if (conversion == Conversion::No)
        return;
    try {
        ControllaVersione(m_job.JobDatabase());
    } catch (...) {
        m_job.close();
        throw;
    }
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
    QString target = m_window.ShowFileDialog(request);
    if (target.isEmpty())
        return {};
    if (!target.endsWith(JobExtension, Qt::CaseInsensitive))
        target += JobExtension;
    jet::ConversionReport report;
    {
        const StatusScope status(m_window, u"Conversione "_s + original + u" su "_s + target);
        report = jet::convertJob(original, target, m_check);
    }
    m_window.showMessage(report.text());
    return target;
}

/// Before anything of the job is converted. Without a copy one can work all the same.
void JobFiles::keepCopy()
{
    try {
        m_copies.keep(m_job.JobPath());
    } catch (const std::exception& error) {
        m_window.showMessage(u"Il lavoro è aperto, ma non è stato possibile conservarne una copia "
                             "di sicurezza.\n\n%1"_s.arg(QString::fromUtf8(error.what())));
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
        if (!chosen.isEmpty())
            duplicate(source, duplicatePath(chosen));
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
    if (!source.isEmpty())
        (void)Database::open(source);
    return source;
}

void JobFiles::duplicate(const QString& source, const QString& target)
{
    const std::vector<FileCopy> plan = duplicatePlan(source, target);
    for (const FileCopy& file : plan)
        requireFreeName(file.target);
    if (!documentsClosed())
        return;
    m_job.close();
    const StatusScope status(m_window, u"Duplicazione "_s + source + u" su "_s + target);
    for (const FileCopy& file : plan) {
        if (file.source == source)
            copyDatabase(file.source, file.target);
        else
            copyFile(file.source, file.target);
    }
    m_job.open(withoutExtension(target) + JobExtension.toString());
}

void JobFiles::EliminaLavoro()
{
    reportingErrors([&] {
        const QString chosen = m_window.ShowFileDialog(jobDialog(
            u"Selezionare Lavoro da Eliminare"_s, FileDialogRequest::FileMustExist, Kind::Save));
        const QString path = asOnDisk(chosen);
        if (path.isEmpty())
            return;
        if (!path.endsWith(JobExtension, Qt::CaseInsensitive))
            m_window.showMessage(u"Il file selezionato non è un database ZELTO"_s);
        else if (m_window.askYesNo(u"Confermi cancellazione del file ''%1''?"_s.arg(path)))
            deleteJob(path);
    });
}

void JobFiles::deleteJob(const QString& path)
{
    if (m_job.isAt(path)) {
        if (!documentsClosed())
            return;
        m_job.close();
    }
    deleteFile(path);
}

void JobFiles::CompattaArchivio()
{
    reportingErrors([&] {
        const QString source = asOnDisk(m_window.ShowFileDialog(
            databaseDialog(u"Selezionare Database da Compattare"_s,
                           FileDialogRequest::FileMustExist, m_job.JobFolder())));
        if (source.isEmpty() || !documentsClosed())
            return;
        const QString backup =
            asOnDisk(withUpperCaseName(withoutExtension(source) + BackupExtension.toString()));
        withFilesClosed([&] {
            const StatusScope status(m_window, u"Compattamento "_s + backup + u" to "_s + source);
            compact(source, backup);
        });
    });
}

void JobFiles::RiparaArchivio()
{
    reportingErrors([&] {
        const QString path = asOnDisk(m_window.ShowFileDialog(databaseDialog(
            u"Selezionare Database da Riparare"_s, FileDialogRequest::AnyFile, m_job.JobFolder())));
        if (path.isEmpty() || !documentsClosed())
            return;
        RepairResult result;
        withFilesClosed([&] {
            const StatusScope status(m_window, u"Riparazione database - "_s + path,
                                     StatusScope::Pointer::Normal);
            result = repair(path);
        });
        if (!result.damagedOriginal.isEmpty())
            m_window.showMessage(repairMessage(result));
    });
}

void JobFiles::RipristinaCopia()
{
    reportingErrors([&] {
        if (m_copies.jobs().isEmpty()) {
            m_window.showMessage(
                u"Non c'è ancora nessuna copia di sicurezza. Zelto ne conserva una "
                "ogni volta che si apre un lavoro cambiato."_s);
            return;
        }
        const std::optional<JobCopy> copy = m_window.chooseCopy(m_copies, m_job.JobPath());
        if (!copy)
            return;
        FileDialogRequest request =
            jobDialog(u"Indicare il nome del lavoro ripristinato"_s, FileDialogRequest::AnyFile,
                      Kind::Save, folderOf(copy->job));
        request.defaultName = restoredName(*copy);
        const QString chosen = m_window.ShowFileDialog(request);
        if (!chosen.isEmpty())
            restore(copy->path, duplicatePath(chosen));
    });
}

void JobFiles::restore(const QString& copy, const QString& target)
{
    requireFreeName(target);
    if (!documentsClosed())
        return;
    {
        const StatusScope status(m_window, u"Ripristino copia su "_s + target);
        copyDatabase(copy, target);
    }
    openVerified(target, Conversion::Yes);
}

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/open_job.h"
#include "store/files/file_names.h"

#include <QString>

#include <functional>
#include <optional>

namespace zelto::store {
class JobCopies;
} // namespace zelto::store

namespace zelto::widgets {
class Dialogs;
} // namespace zelto::widgets

namespace zelto::shell {

class RecentJobs;

/// The operations of the File menu on job files, and the job that is open. NuovoLavoro,
/// DuplicaLavoro, EliminaLavoro, CompattaArchivio, RiparaArchivio and RipristinaCopia report their
/// own failures; the others throw DatabaseError, with no job open any more. Cancelling a dialog
/// changes nothing. Before the open job is replaced or deleted, the document windows are closed;
/// when one of them refuses, the operation stops.
class JobFiles
{
public:
    /// Throws when a job that was converted cannot be calculated.
    using JobCheck = std::function<void(store::Database&)>;

    /// All of it outlives the operations.
    JobFiles(widgets::MainWindowServices& window, widgets::Dialogs& dialogs, RecentJobs& recent,
             const store::JobCopies& copies, JobCheck check);

    [[nodiscard]] OpenJob& job() { return m_job; }
    [[nodiscard]] const QString& JobPath() const { return m_job.JobPath(); }

    /// Creates a job and opens it.
    void NuovoLavoro();

    /// Opens a job that the user chooses; refused while there are document windows.
    void ApriLavoro();

    /// Opens the job of recent entry 13 to 16. The caller refuses that while there are document
    /// windows.
    void LeggiRecent(int entry);

    /// Opens the job given on the command line, by a file manager or by dropping it. The caller
    /// refuses that while there are document windows.
    void openGiven(const QString& path);

    /// Copies a job with its companion files under a new name and opens the copy.
    void DuplicaLavoro();

    /// Moves a job to the trash, or deletes it where there is none; its copies go, too, if the user
    /// wants that.
    void EliminaLavoro();

    /// Compacts a database; its previous state stays beside it as ".BAK".
    void CompattaArchivio();

    /// Repairs a database in its place.
    void RiparaArchivio();

    /// Makes a new job of a copy that the user chooses, and opens it.
    void RipristinaCopia();

    /// Keeps a copy of the open job, if there is one and it was changed, and closes it.
    void chiudiLavoro();

private:
    using Operation = std::function<void()>;

    enum class Conversion { No, Yes };

    /// Runs the operation; the user hears of what it throws.
    void reportingErrors(const Operation& operation);

    /// Lets go of the open job while the operation runs.
    void withFilesClosed(const Operation& operation);

    /// Nothing shows the open job any more; false when a window refuses to close.
    [[nodiscard]] bool documentsClosed();

    /// The path of a new job; where the rule makes another name than the typed one, the user
    /// chooses. Nothing when the user cancels.
    [[nodiscard]] std::optional<QString> newJobPath(const QString& chosen, store::NameRule rule);

    /// Says so when the file is of the edition for Windows.
    [[nodiscard]] bool refusedAsWindowsJob(const QString& path);

    /// Whether another window has the job open, and the user does not want to go on.
    [[nodiscard]] bool leftToOtherWindow(const QString& path);

    void createJob(const QString& path);
    void openVerified(QString path, Conversion conversion);
    void tellRestrictions();
    /// The path of the new job; empty when the user does not want one.
    [[nodiscard]] QString converted(const QString& original);
    void keepCopy();
    void openListed(const QString& listed, Conversion conversion);
    [[nodiscard]] QString sourceOfDuplicate();
    void duplicate(const QString& source, const QString& target);
    void deleteJob(const QString& path);
    [[nodiscard]] bool copiesGoToo(const QString& path);
    [[nodiscard]] bool mayGoAfterCopy(const QString& path);
    void repairFile(const QString& path);
    void restore(const QString& copy, const QString& target);

    widgets::MainWindowServices& m_window;
    widgets::Dialogs& m_dialogs;
    const RecentJobs& m_recent;
    const store::JobCopies& m_copies;
    JobCheck m_check;
    OpenJob m_job;
};

} // namespace zelto::shell

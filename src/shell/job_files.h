// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "shell/open_job.h"
#include "store/files/file_names.h"

#include <QString>

#include <functional>

namespace zelto::store {
class JobCopies;
} // namespace zelto::store

namespace zelto::widgets {
class Dialogs;
struct FileDialogRequest;
} // namespace zelto::widgets

namespace zelto::shell {

class RecentJobs;

/// How file dialogs show jobs.
inline const QString JobFilter = u"Tabelle Millessimi (*.ZLT)|*.zlt"_s;

/// The operations of the File menu on job files, and the job that is open. What fails throws
/// DatabaseError; compaction and repair report it themselves. Cancelling a dialog changes nothing.
/// Before the open job is replaced or deleted, the document windows are closed; when one of them
/// refuses, the operation stops.
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

    /// Creates a job with the lists, codes, names and report text of one that the user chooses, and
    /// opens it.
    void NuovoDaModello();

    /// Opens a job that the user chooses; refused, as are the next two, while there are document
    /// windows.
    void ApriLavoro();

    /// Opens the recent job of a place, 0 for the newest.
    void LeggiRecent(std::size_t place);

    /// Opens the job given on the command line, by a file manager or by dropping it.
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
    void repairGiven(const QString& path);

    /// Makes a new job of a copy that the user chooses, and opens it.
    void RipristinaCopia();
    /// The copies of the job of that path are offered first.
    void restoreCopyOf(const QString& path);

    /// Opens a copy of the delivered example in a folder, which is created if need be, under the
    /// next name that is free there.
    void openExample(const QString& example, const QString& folder);

    /// Keeps a copy of the open job, if there is one and it was changed, and closes it.
    void chiudiLavoro();

private:
    enum class Conversion { No, Yes };

    /// Lets go of the open job while the operation runs; what fails is reported.
    void withFilesClosed(const std::function<void()>& operation);

    /// Says so when there are document windows.
    [[nodiscard]] bool refusedByDocuments();

    /// Nothing shows the open job any more; false when a window refuses to close.
    [[nodiscard]] bool documentsClosed();

    /// The path of a new job; where the rule makes another name than the typed one, the user
    /// chooses. Empty when the user cancels.
    [[nodiscard]] QString askNewJob(const QString& title, store::NameRule rule,
                                    const QString& folder, const QString& proposedName = {});

    /// The job or other database that the user chooses, as it is on disk; empty when cancelled.
    [[nodiscard]] QString askFile(const widgets::FileDialogRequest& request);

    /// Says so when the file is of the edition for Windows.
    [[nodiscard]] bool refusedAsWindowsJob(const QString& path);

    /// Whether another window has the job open, and the user does not want to go on.
    [[nodiscard]] bool leftToOtherWindow(const QString& path);

    /// Whether the chosen file may be written anew, with no document window open any more.
    [[nodiscard]] bool mayReplace(const QString& path);

    /// Asks for the path of a new job, has the operation make it, and opens it.
    void createJob(const std::function<void(const QString& path)>& operation);
    void openVerified(QString path, Conversion conversion);
    void tellRestrictions();
    /// The path of the new job; empty when the user does not want one.
    [[nodiscard]] QString converted(const QString& original);
    void keepCopy();
    void openListed(const QString& listed, Conversion conversion);
    /// The open job, or one that the user chooses; empty when the user cancels.
    [[nodiscard]] QString sourceOfDuplicate();
    void duplicate(const QString& source, const QString& target);
    void deleteJob(const QString& path);
    [[nodiscard]] bool copiesGoToo(const QString& path);
    [[nodiscard]] bool mayGoAfterCopy(const QString& path);
    void restore(const QString& copy, const QString& target);

    widgets::MainWindowServices& m_window;
    widgets::Dialogs& m_dialogs;
    const RecentJobs& m_recent;
    const store::JobCopies& m_copies;
    JobCheck m_check;
    OpenJob m_job;
};

} // namespace zelto::shell

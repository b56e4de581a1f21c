// SPDX-License-Identifier: GPL-3.0-or-later
// A folder of files, a scripted user, and the operations on job files between them.
#pragma once

#include "shell/job_files.h"
#include "shell/recent_jobs.h"
#include "store/master_database.h"
#include "store/store_fixture.h"
#include "support/scripted_user.h"

#include <QFileInfo>

namespace zelto::test {

using Operation = void (shell::JobFiles::*)();

/// A.ZLT and B.ZLT are jobs, OLD.ZLT is one of another format, EARLIER.ZLT of an earlier edition;
/// TEXT.ZLT is no database.
class JobDesk
{
public:
    JobDesk()
    {
        for (const char16_t* name : {u"A.ZLT", u"B.ZLT", u"OLD.ZLT", u"EARLIER.ZLT"})
            (void)folder.newJob(QString::fromUtf16(name));
        RawFile(path(u"OLD.ZLT"_s)).run("UPDATE ZELTO SET Versione='1997'");
        RawFile(path(u"EARLIER.ZLT"_s)).run("DROP TABLE Variabili");
        writeBytes(path(u"TEXT.ZLT"_s), "no database");
    }

    [[nodiscard]] QString path(const QString& name) const { return folder.file(name); }

    /// The open job with "~" for the folder.
    [[nodiscard]] QString openJob() const
    {
        return jobs.JobPath().isEmpty() ? QString()
                                        : u"~/"_s + QFileInfo(jobs.JobPath()).fileName();
    }

    /// As the program does it: the user hears of what goes wrong.
    void carryOut(Operation operation)
    {
        try {
            (jobs.*operation)();
        } catch (const std::exception& error) {
            user.ReportError(error);
        }
    }

    /// Opens a job as if it had been open all the time.
    void open(const QString& name)
    {
        jobs.openGiven(path(name));
        (void)user.said();
    }

    JobFolder folder;
    JobFolder home; ///< of the user
    ScriptedUser user{QFileInfo(folder.file(u"x"_s)).path()};
    shell::RecentJobs recent;
    store::MasterDatabase master{QStringLiteral(ZELTO_MASTER)};
    store::JobCopies copies{home.file(u"copie"_s)};
    shell::JobFiles jobs{user, user, recent, master, copies, [](store::Database& /*job*/) {}};
};

} // namespace zelto::test

Q_DECLARE_METATYPE(zelto::test::Operation)

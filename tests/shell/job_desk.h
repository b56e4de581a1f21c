// SPDX-License-Identifier: GPL-3.0-or-later
// A folder of files, a scripted user, and the operations on job files between them.
#pragma once

#include "shell/job_files.h"
#include "shell/recent_jobs.h"
#include "store/store_fixture.h"
#include "support/scripted_user.h"

namespace zelto::test {

using Operation = void (shell::JobFiles::*)();

/// A.ZLT and B.ZLT are jobs, OLD.ZLT is one of another format, EARLIER.ZLT of an earlier edition,
/// JET.ZLT of the edition for Windows; TEXT.ZLT is no database.
class JobDesk
{
public:
    JobDesk()
    {
        for (const char16_t* name : {u"A.ZLT", u"B.ZLT", u"OLD.ZLT", u"EARLIER.ZLT"})
            (void)folder.newJob(QString::fromUtf16(name));
        RawFile(path(u"OLD.ZLT"_s)).run("UPDATE ZELTO SET Versione='1997'");
        RawFile(path(u"EARLIER.ZLT"_s)).run("DROP TABLE Variabili");
        QFile::copy(QStringLiteral(JET_FOLDER "/job-jet3.zlt"), path(u"JET.ZLT"_s));
        writeBytes(path(u"TEXT.ZLT"_s), "no database");
    }

    [[nodiscard]] QString path(const QString& name) const { return folder.file(name); }

    /// The open job with "~" for the folder.
    [[nodiscard]] QString openJob() const
    {
        return QString(jobs.JobPath()).replace(folder.path(), u"~"_s);
    }

    /// What the user hears, with these answers to file dialogs; as the program does it, also of
    /// what goes wrong.
    QString carryOut(Operation operation, const QStringList& answers = {})
    {
        user.files = answers;
        try {
            (jobs.*operation)();
        } catch (const std::exception& error) {
            user.ReportError(error);
        }
        return user.said();
    }

    /// Opens a job as if it had been open all the time.
    void open(const QString& name)
    {
        jobs.openGiven(path(name));
        (void)user.said();
    }

    JobFolder folder;
    const QString a = path(u"A.ZLT"_s);
    JobFolder home; ///< of the user
    ScriptedUser user{folder.path()};
    shell::RecentJobs recent;
    store::JobCopies copies{home.file(u"copie"_s)};
    shell::JobFiles jobs{user, user, recent, copies, [](store::Database& /*job*/) {}};
};

} // namespace zelto::test

Q_DECLARE_METATYPE(zelto::test::Operation)

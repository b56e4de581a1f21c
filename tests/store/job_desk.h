// SPDX-License-Identifier: GPL-3.0-or-later
// A folder of files, a scripted user, and the operations on job files between them.
#pragma once

#include "store/job_files.h"
#include "store/master_database.h"
#include "store/recent_jobs.h"
#include "store_fixture.h"
#include "support/scripted_user.h"

#include <QFileInfo>

#include <functional>
#include <map>

namespace zelto::test {

/// The operations of the menu by name.
inline const std::map<QString, std::function<void(store::JobFiles&)>>& operations()
{
    static const std::map<QString, std::function<void(store::JobFiles&)>> all{
        {QStringLiteral("new"), &store::JobFiles::NuovoLavoro},
        {QStringLiteral("open"), &store::JobFiles::ApriLavoro},
        {QStringLiteral("duplicate"), &store::JobFiles::DuplicaLavoro},
        {QStringLiteral("delete"), &store::JobFiles::EliminaLavoro},
        {QStringLiteral("compact"), &store::JobFiles::CompattaArchivio},
        {QStringLiteral("repair"), &store::JobFiles::RiparaArchivio},
    };
    return all;
}

/// A.ZLT and B.ZLT are jobs, OLD.ZLT is one of another format, EARLIER.ZLT of an earlier edition;
/// TEXT.ZLT is no database.
class JobDesk
{
public:
    JobDesk()
    {
        for (const char16_t* name : {u"A.ZLT", u"B.ZLT", u"OLD.ZLT", u"EARLIER.ZLT"})
            (void)folder.newJob(QString::fromUtf16(name));
        RawFile(path(QStringLiteral("OLD.ZLT"))).run("UPDATE ZELTO SET Versione='1997'");
        RawFile(path(QStringLiteral("EARLIER.ZLT"))).run("DROP TABLE Variabili");
        writeBytes(path(QStringLiteral("TEXT.ZLT")), "no database");
    }

    [[nodiscard]] QString path(const QString& name) const { return folder.file(name); }

    /// The open job with "~" for the folder.
    [[nodiscard]] QString openJob() const
    {
        return jobs.JobPath().isEmpty()
                   ? QString()
                   : QStringLiteral("~/") + QFileInfo(jobs.JobPath()).fileName();
    }

    /// Opens a job as if it had been open all the time.
    void open(const QString& name)
    {
        jobs.openGiven(path(name));
        (void)user.said();
    }

    JobFolder folder;
    JobFolder home; ///< of the user
    ScriptedUser user{QFileInfo(folder.file(QStringLiteral("x"))).path()};
    store::RecentJobs recent;
    store::MasterDatabase master{QStringLiteral(ZELTO_MASTER)};
    store::JobCopies copies{home.file(QStringLiteral("copie"))};
    store::JobFiles jobs{user, recent, master, copies, [](store::Database& /*job*/) {}};
};

} // namespace zelto::test

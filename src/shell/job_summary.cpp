// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/job_summary.h"

#include "store/database.h"
#include "store/files/file_names.h"
#include "store/files/job_lock.h"
#include "store/format_check.h"
#include "store/jet/jet_file.h"
#include "store/job_limits.h"
#include "store/schema.h"

#include <QFileInfo>

namespace zelto::shell {

namespace {

/// Texts of a stranger's file may be longer than any screen.
void readContents(store::Database& job, JobSummary& summary)
{
    const store::Query general = job.query(
        u"SELECT substr([Descrizione], 1, 60), substr([Descrizionee], 1, 60), substr([Data], 1, 10)"
        " FROM %1 LIMIT 1"_s.arg(store::quoted(store::TabellaDatiGenerali)));
    if (!general.atEnd()) {
        summary.description = general.text(0).simplified();
        summary.secondDescription = general.text(1).simplified();
        summary.date = QDate::fromString(general.text(2), Qt::ISODate);
    }
    const store::Query units = job.query(u"SELECT count(*) FROM (SELECT 1 FROM %1 LIMIT %2)"_s.arg(
        store::quoted(store::TabellaUnita), QString::number(store::MostRecords)));
    summary.units = static_cast<int>(units.integer(0));
}

JobState stateOf(const store::DatabaseError& error)
{
    using store::ErrorNumber;
    switch (error.number()) {
    case ErrorNumber::InUse:
    case ErrorNumber::Locked:
        return JobState::InUse;
    case ErrorNumber::FileNotFound:
    case ErrorNumber::CannotOpen:
    case ErrorNumber::DiskError:
        return JobState::Unreadable;
    default:
        return JobState::Damaged;
    }
}

JobState stateOfReadable(const QString& path, store::Database& job)
{
    if (!store::isOfThisFormat(job))
        return JobState::OtherFormat;
    if (store::JobLock::isHeld(path))
        return JobState::OpenElsewhere;
    return store::isWritable(path) ? JobState::Ready : JobState::ReadOnly;
}

JobSummary emptySummary(const QString& path)
{
    JobSummary summary;
    summary.path = path;
    summary.modified = QFileInfo(path).lastModified();
    return summary;
}

} // namespace

QString stateText(JobState state)
{
    switch (state) {
    case JobState::Ready:
        return {};
    case JobState::ReadOnly:
        return u"sola lettura"_s;
    case JobState::OpenHere:
        return u"aperto"_s;
    case JobState::OpenElsewhere:
        return u"aperto altrove"_s;
    case JobState::InUse:
        return u"in uso"_s;
    case JobState::WindowsEdition:
        return u"edizione Windows"_s;
    case JobState::OtherFormat:
        return u"altro formato"_s;
    case JobState::Damaged:
        return u"danneggiato"_s;
    case JobState::Unreadable:
        return u"non leggibile"_s;
    }
    return {};
}

JobSummary summaryOf(const QString& path)
{
    JobSummary summary = emptySummary(path);
    try {
        if (store::jet::isJetFile(path)) {
            summary.state = JobState::WindowsEdition;
            return summary;
        }
        store::Database job = store::Database::openForGlance(path);
        readContents(job, summary);
        summary.state = stateOfReadable(path, job);
    } catch (const store::DatabaseError& error) {
        summary.state = stateOf(error);
        summary.fault = error.description();
    }
    return summary;
}

JobSummary summaryOfOpen(const QString& path, store::Database& job)
{
    JobSummary summary = emptySummary(path);
    summary.state = JobState::OpenHere;
    try {
        readContents(job, summary);
    } catch (const store::DatabaseError& error) {
        summary.fault = error.description();
    }
    return summary;
}

} // namespace zelto::shell

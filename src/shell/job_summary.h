// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDate>
#include <QDateTime>
#include <QString>

namespace zelto::store {
class Database;
} // namespace zelto::store

namespace zelto::shell {

/// What a job's file is to somebody who wants to open it.
enum class JobState {
    Ready,
    ReadOnly,
    OpenHere,
    OpenElsewhere,
    InUse,          ///< another program is writing it, or a change was broken off
    WindowsEdition, ///< to be converted
    OtherFormat,
    Damaged,
    Unreadable ///< the system does not let it be read
};

/// A job as the start page lists it.
struct JobSummary
{
    QString path;
    QString description;
    QString secondDescription;
    QDate date; ///< of the general data; invalid without one
    QDateTime modified;
    int units = -1; ///< -1 when not known
    JobState state = JobState::Ready;
    QString fault = {}; ///< why it cannot be read, for the user
};

/// The words for a state; empty for a job that is ready.
[[nodiscard]] QString stateText(JobState state);

/// Looks at a file without changing or waiting for anything; what is wrong with it is told by the
/// state. The path may be of anything.
[[nodiscard]] JobSummary summaryOf(const QString& path);

/// Of the job that this window has open.
[[nodiscard]] JobSummary summaryOfOpen(const QString& path, store::Database& job);

} // namespace zelto::shell

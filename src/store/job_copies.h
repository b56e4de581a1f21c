// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace zelto::store {

/// A state of a job that was kept.
struct JobCopy
{
    QString job; ///< its path
    QString path;
    QDateTime kept;           ///< when the job was in this state, local time
    qint64 size = 0;          ///< bytes
    std::optional<int> units; ///< nothing when the copy cannot be read
};

/// Copies of jobs that nobody has to think of, one of every state that differs from the one before.
/// Kept are the last ten of each job, then the last of a day for a month, the last of a week for a
/// year.
class JobCopies
{
public:
    static constexpr int MostRecent = 10;

    /// The folder of all copies, created with the first one.
    explicit JobCopies(QString folder) : m_folder(std::move(folder)) {}

    [[nodiscard]] const QString& folder() const { return m_folder; }

    /// Copies the job unless its last copy has the same content. The copy is read back and compared
    /// before an old one goes. Throws DatabaseError and then leaves the copies as they were.
    void keep(const QString& job, const QDateTime& now = QDateTime::currentDateTimeUtc()) const;

    /// Deletes the copies of a job, which need not exist any more. Throws DatabaseError.
    void removeAll(const QString& job) const;

    /// How many copies a job has.
    [[nodiscard]] qsizetype count(const QString& job) const;

    /// The jobs that have copies, by path; they need not exist any more.
    [[nodiscard]] QStringList jobs() const;

    /// The copies of a job, the last state first.
    [[nodiscard]] std::vector<JobCopy> copiesOf(const QString& job) const;

private:
    [[nodiscard]] QString folderOfJob(const QString& job) const;

    QString m_folder;
};

} // namespace zelto::store

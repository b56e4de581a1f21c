// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/job_copies.h"

#include "store/database.h"
#include "store/file_operations.h"
#include "store/files/file_names.h"
#include "store/files/new_file.h"
#include "store/schema.h"

#include <QCryptographicHash>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QSet>
#include <QTimeZone>

#include <algorithm>
#include <ranges>

namespace zelto::store {

namespace {

constexpr QStringView OriginName = u"ORIGINE.TXT";
constexpr QStringView StateFormat = u"yyyy-MM-dd HH-mm-ss-zzz";
constexpr int NumberDigits = 6;

/// "000012 2026-11-22 18-30-11-456.ZLT": a running number, so that a clock that was put back does
/// not turn the order round, and the moment at which the job was in this state, in UTC.
QString copyName(int number, const QDateTime& moment)
{
    return u"%1 %2.ZLT"_s.arg(number, NumberDigits, 10, QChar(u'0'))
        .arg(moment.toUTC().toString(StateFormat));
}

int numberOf(const QString& name)
{
    return name.left(NumberDigits).toInt();
}

QDateTime momentOf(const QString& name)
{
    const QDateTime read =
        QDateTime::fromString(name.mid(NumberDigits + 1).chopped(4), StateFormat.toString());
    return {read.date(), read.time(), QTimeZone::utc()};
}

/// Names of the copies in a job's folder, the last state first.
QStringList copyNames(const QString& folder)
{
    QStringList names = QDir(folder).entryList({u"*.ZLT"_s}, QDir::Files);
    names.removeIf(
        [](const QString& name) { return numberOf(name) <= 0 || !momentOf(name).isValid(); });
    std::ranges::sort(names, std::ranges::greater());
    return names;
}

QString originOf(const QString& folder)
{
    QFile origin(QDir(folder).filePath(OriginName.toString()));
    return origin.open(QIODevice::ReadOnly) ? QString::fromUtf8(origin.readAll()) : QString();
}

/// Private, because of whose buildings they are.
void makeFolder(const QString& folder, const QString& job)
{
    constexpr auto OwnerOnly = QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner;
    const QString parent = QFileInfo(folder).absolutePath();
    QDir().mkpath(parent);
    QFile::setPermissions(parent, OwnerOnly);
    QDir().mkpath(folder);
    if (originOf(folder) == job)
        return;
    NewFile origin(QDir(folder).filePath(OriginName.toString()));
    origin.write(job.toUtf8());
    origin.replace();
}

bool sameRecord(const Query& one, const Query& other)
{
    for (int field = 0; field < one.fieldCount(); ++field)
        if (one.isNull(field) != other.isNull(field) || one.utf8(field) != other.utf8(field))
            return false;
    return true;
}

bool sameTable(Database& one, Database& other, const QString& table)
{
    // In the order in which the records lie, which copying keeps.
    Query first = one.records(table);
    Query second = other.records(table);
    if (first.fieldCount() != second.fieldCount())
        return false;
    for (; !first.atEnd() && !second.atEnd(); first.next(), second.next())
        if (!sameRecord(first, second))
            return false;
    return first.atEnd() == second.atEnd();
}

bool sameContent(const QString& job, const QString& copy)
{
    Database original = Database::open(job, OpenMode::ReadOnly);
    Database copied = Database::open(copy, OpenMode::ReadOnly);
    const QStringList tables = original.tableNames();
    return copied.tableNames() == tables && std::ranges::all_of(tables, [&](const QString& table) {
               return sameTable(original, copied, table);
           });
}

bool isKept(const QString& job, const QString& copy)
{
    try {
        return sameContent(job, copy);
    } catch (const DatabaseError&) {
        return false; // whichever it was that cannot be read: copying will say
    }
}

void copyVerified(const QString& job, const QString& copy)
{
    copyDatabase(job, copy);
    try {
        if (!sameContent(job, copy))
            throw DatabaseError(ErrorNumber::Damaged,
                                u"La copia «%1» non corrisponde al lavoro «%2»; forse un altro "
                                "programma lo sta modificando."_s.arg(copy, job));
    } catch (...) {
        QFile::remove(copy);
        throw;
    }
}

/// What there is one copy of: a day within the last month, a week within the last year; nothing
/// beyond.
QString periodOf(const QString& name, const QDateTime& now)
{
    constexpr int Month = 31;
    constexpr int Year = 366;
    const QDate day = momentOf(name).toLocalTime().date();
    const qint64 age = day.daysTo(now.toLocalTime().date());
    if (age <= Month)
        return day.toString(Qt::ISODate);
    int year = 0;
    const int week = day.weekNumber(&year);
    return age <= Year ? u"%1 %2"_s.arg(week).arg(year) : QString();
}

/// The copies that have had their time. The names are those of a job, the last state first.
QStringList outdated(const QStringList& names, const QDateTime& now)
{
    QStringList old;
    QSet<QString> seen{QString()};
    for (qsizetype i = 0; i < names.size(); ++i) {
        const QString period = periodOf(names[i], now);
        if (i >= JobCopies::MostRecent && seen.contains(period))
            old += names[i];
        seen.insert(period);
    }
    return old;
}

std::optional<int> unitsIn(const QString& copy)
{
    try {
        return Database::open(copy, OpenMode::ReadOnly).count(TabellaUnita);
    } catch (const DatabaseError&) {
        return std::nullopt;
    }
}

} // namespace

void JobCopies::keep(const QString& job, const QDateTime& now) const
{
    const QString file = realPath(job);
    const QDir folder(folderOfJob(file));
    const QStringList names = copyNames(folder.path());
    if (!names.isEmpty() && isKept(file, folder.filePath(names.first())))
        return;
    makeFolder(folder.path(), file);
    const int number = names.isEmpty() ? 1 : numberOf(names.first()) + 1;
    copyVerified(file, folder.filePath(copyName(number, now)));
    for (const QString& old : outdated(copyNames(folder.path()), now))
        removeFile(folder.filePath(old));
}

void JobCopies::removeAll(const QString& job) const
{
    const QDir folder(folderOfJob(realPath(job)));
    for (const QString& name : copyNames(folder.path()))
        removeFile(folder.filePath(name));
    removeFile(folder.filePath(OriginName.toString()));
    QDir().rmdir(folder.path()); // stays if the user has put something there
}

qsizetype JobCopies::count(const QString& job) const
{
    return copyNames(folderOfJob(realPath(job))).size();
}

QStringList JobCopies::jobs() const
{
    QStringList jobs;
    for (const QString& name : QDir(m_folder).entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        const QString folder = QDir(m_folder).filePath(name);
        const QString job = originOf(folder);
        if (!job.isEmpty() && !copyNames(folder).isEmpty())
            jobs << job;
    }
    jobs.sort(Qt::CaseInsensitive);
    return jobs;
}

std::vector<JobCopy> JobCopies::copiesOf(const QString& job) const
{
    const QDir folder(folderOfJob(realPath(job)));
    std::vector<JobCopy> copies;
    for (const QString& name : copyNames(folder.path())) {
        const QString path = folder.filePath(name);
        copies.push_back({.job = job,
                          .path = path,
                          .kept = momentOf(name).toLocalTime(),
                          .size = QFileInfo(path).size(),
                          .units = unitsIn(path)});
    }
    return copies;
}

/// Readable for who looks into the folder, and different for jobs of one name in two folders.
QString JobCopies::folderOfJob(const QString& job) const
{
    constexpr qsizetype LongestName = 60;
    constexpr qsizetype HashDigits = 12;
    const QByteArray hash = QCryptographicHash::hash(job.toUtf8(), QCryptographicHash::Sha256);
    return QDir(m_folder).filePath(
        u"%1-%2"_s.arg(QFileInfo(job).completeBaseName().left(LongestName),
                       QString::fromLatin1(hash.toHex().left(HashDigits))));
}

} // namespace zelto::store

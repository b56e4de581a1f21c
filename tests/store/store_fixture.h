// SPDX-License-Identifier: GPL-3.0-or-later
// Job files in a folder of their own, and the engine without our layer to tamper with them.
#pragma once

#include "store/database.h"
#include "store/schema.h"

#include <QFile>
#include <QMap>
#include <QTemporaryDir>
#include <QTest>

#include <sqlite3.h>

namespace zelto::test {

inline QByteArray bytesOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A folder that goes with the test.
class JobFolder
{
public:
    [[nodiscard]] QString path() const { return m_folder.path(); }
    [[nodiscard]] QString file(const QString& name) const { return m_folder.filePath(name); }
    [[nodiscard]] QStringList names() const
    {
        return QDir(m_folder.path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    }

    /// What all plain files hold, by name.
    [[nodiscard]] QMap<QString, QByteArray> contents() const
    {
        QMap<QString, QByteArray> contents;
        for (const QString& name : names())
            contents[name] = QFileInfo(file(name)).isFile() ? bytesOf(file(name)) : QByteArray();
        return contents;
    }

    /// The path of a new job.
    [[nodiscard]] QString newJob(const QString& name = u"LAVORO.ZLT"_s) const
    {
        store::Database database = store::Database::create(file(name));
        store::CreaTabelleBase(database);
        return file(name);
    }

    /// The path of a copy of the example, a job of many pages.
    [[nodiscard]] QString example(const QString& name = u"LAVORO.ZLT"_s) const
    {
        QFile::copy(QStringLiteral(EXAMPLE_JOB), file(name));
        QFile::setPermissions(file(name), QFile::ReadOwner | QFile::WriteOwner);
        return file(name);
    }

private:
    QTemporaryDir m_folder;
};

/// The engine's plain handle of a file, which may change even the list of tables.
class RawFile
{
public:
    explicit RawFile(const QString& path)
    {
        if (sqlite3_open(QFile::encodeName(path).constData(), &m_handle) != SQLITE_OK)
            qFatal("cannot open the file");
        sqlite3_db_config(m_handle, SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
    }
    ~RawFile() { sqlite3_close(m_handle); }
    RawFile(const RawFile&) = delete;
    RawFile& operator=(const RawFile&) = delete;

    /// Runs the statements; a failure ends the test program.
    void run(const QByteArray& sql)
    {
        if (sqlite3_exec(m_handle, sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
            qFatal("%s: %s", sql.constData(), sqlite3_errmsg(m_handle));
    }

private:
    sqlite3* m_handle = nullptr;
};

/// The first fields of the records, which are their keys, without blanks around them.
inline QString keysOf(store::Query records)
{
    QStringList keys;
    for (; !records.atEnd(); records.next())
        keys += records.text(0).trimmed();
    return keys.join(u' ');
}

/// Gives a field of the table's first record another content.
inline void setField(store::Database& job, QStringView table, int field, const store::Value& value)
{
    const store::Record before = job.records(table).record();
    store::Record after = before;
    after.at(static_cast<std::size_t>(field)) = value;
    job.writer(store::jobTable(table)).change(before, after);
}

inline void writeBytes(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), bytes.size());
}

/// Copies a job as it lies on the disk in the midst of the statements, which are broken off.
inline void copyInterrupted(const QString& job, const QByteArray& statements, const QString& copy)
{
    RawFile raw(job);
    // A tiny cache makes the engine write changed pages before the end of the transaction.
    raw.run("PRAGMA cache_size=1; BEGIN;" + statements);
    QVERIFY(QFile::copy(job, copy));
    QVERIFY(QFile::copy(job + u"-journal"_s, copy + u"-journal"_s));
}

/// The number of the error that the operation ends with, 0 when it succeeds; and what it says.
/// Every description must name what it is about.
template <typename Operation>
int errorOf(Operation&& operation, QString* said = nullptr)
{
    try {
        operation();
    } catch (const store::DatabaseError& error) {
        if (!error.description().contains(u'«'))
            qFatal("%s", error.what());
        if (said != nullptr)
            *said = error.description();
        return static_cast<int>(error.number());
    }
    return 0;
}

} // namespace zelto::test

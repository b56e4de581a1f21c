// SPDX-License-Identifier: GPL-3.0-or-later
// Job files in a folder of their own, and the engine without our layer to tamper with them.
#pragma once

#include "store/database.h"
#include "store/schema.h"

#include <QFile>
#include <QMap>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
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

    /// The path of a copy of the example.
    [[nodiscard]] QString example(const QString& name = u"LAVORO.ZLT"_s) const
    {
        QFile::copy(QStringLiteral(EXAMPLE_JOB), file(name));
        return file(name);
    }

private:
    QTemporaryDir m_folder;
};

/// The engine's plain handle of a file.
class RawFile
{
public:
    explicit RawFile(const QString& path)
    {
        sqlite3* handle = nullptr;
        if (sqlite3_open(QFile::encodeName(path).constData(), &handle) != SQLITE_OK)
            qFatal("cannot open the file");
        m_handle.reset(handle);
    }

    /// Runs the statements; a failure ends the test program.
    void run(const QByteArray& sql)
    {
        if (sqlite3_exec(m_handle.get(), sql.constData(), nullptr, nullptr, nullptr) != SQLITE_OK)
            qFatal("%s: %s", sql.constData(), sqlite3_errmsg(m_handle.get()));
    }

    void allowSchemaChanges()
    {
        sqlite3_db_config(m_handle.get(), SQLITE_DBCONFIG_DEFENSIVE, 0, nullptr);
    }

private:
    struct Closer
    {
        void operator()(sqlite3* handle) const { sqlite3_close(handle); }
    };
    std::unique_ptr<sqlite3, Closer> m_handle;
};

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

/// The number of the error that the operation ends with; 0 when it succeeds. Every description
/// must name what it is about.
template <typename Operation>
int errorOf(Operation&& operation)
{
    try {
        operation();
    } catch (const store::DatabaseError& error) {
        if (!error.description().contains(u'«'))
            qFatal("%s", error.what());
        return static_cast<int>(error.number());
    }
    return 0;
}

} // namespace zelto::test

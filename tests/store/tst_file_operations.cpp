// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/duplicate_plan.h"
#include "store/file_names.h"
#include "store/file_operations.h"
#include "store/new_file.h"
#include "store_fixture.h"
#include "system_faults.h"

#include <QDir>
#include <QTest>

#include <array>
#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

class TestFileOperations : public QObject
{
    Q_OBJECT

private slots:
    void names_data();
    void names();
    void filesAreFoundInAnyLetterCase();
    void planOfDuplicate_data();
    void planOfDuplicate();
    void compacting();
    void compactingThroughALink();
    void compactingRefuses_data();
    void compactingRefuses();
    void copies();
    void leftovers();
    void deletionTakesEngineFiles();
    void plainRenames();
};

void TestFileOperations::names_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("stem");
    QTest::addColumn<QString>("upper");
    const auto row = [](const QString& path, const QString& folder, const QString& stem,
                        const QString& upper) {
        QTest::newRow(qPrintable(path)) << path << folder << stem << upper;
    };
    row(u"/a/b.zlt"_s, u"/a"_s, u"/a/b"_s, u"/a/B.ZLT"_s);
    row(u"/b.zlt"_s, u""_s, u"/b"_s, u"/B.ZLT"_s);
    row(u"/a.b/è.x"_s, u"/a.b"_s, u"/a.b/è"_s, u"/a.b/È.X"_s);
    row(u"/a/lavoro"_s, u"/a"_s, u"/a/la"_s, u"/a/LAVORO"_s);
    row(u"/a/bc"_s, u"/a"_s, u"/a/b"_s, u"/a/BC"_s);
}

void TestFileOperations::names()
{
    QFETCH(QString, path);
    QTEST(folderOf(path), "folder");
    QTEST(withoutExtension(path), "stem");
    QTEST(withUpperCaseName(path), "upper");
}

void TestFileOperations::filesAreFoundInAnyLetterCase()
{
    const JobFolder folder;
    writeBytes(folder.file(u"Città.zlt"_s), "1");
    QCOMPARE(findFile(folder.file(u"CITTÀ.ZLT"_s)), folder.file(u"Città.zlt"_s));
    writeBytes(folder.file(u"CITTÀ.ZLT"_s), "2");
    QCOMPARE(findFile(folder.file(u"CITTÀ.ZLT"_s)), folder.file(u"CITTÀ.ZLT"_s));
    QCOMPARE(findFile(folder.file(u"x"_s)), QString());
    QCOMPARE(asOnDisk(folder.file(u"x"_s)), folder.file(u"x"_s));
    QVERIFY(QFile::link(folder.file(u"Città.zlt"_s), folder.file(u"link"_s)));
    QVERIFY(isSameFile(folder.file(u"link"_s), folder.file(u"Città.zlt"_s)));
    QVERIFY(!isSameFile(folder.file(u"link"_s), folder.file(u"x"_s)));
}

void TestFileOperations::planOfDuplicate_data()
{
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("plan");
    const auto row = [](const char* name, const QStringList& files, const QString& target,
                        const QString& plan) { QTest::newRow(name) << files << target << plan; };
    row("job alone", {u"A.ZLT"_s, u"AB.ZLT"_s, u"B.ZLT"_s}, u"N.ZLT"_s, u"A.ZLT>N.ZLT"_s);
    row("companions", {u"A.ZLT"_s, u"a.bak"_s, u"A.txt"_s}, u"N.ZLT"_s,
        u"A.txt>N.TXT a.bak>N.BAK A.ZLT>N.ZLT"_s);
    row("long extensions", {u"A.ZLT"_s, u"A.html"_s, u"A.jpeg"_s}, u"N.ZLT"_s,
        u"A.html>N A.jpeg>N.JPEG A.ZLT>N.ZLT"_s);
    row("engine's files", {u"A.ZLT"_s, u"A.ZLT-journal"_s}, u"N.ZLT"_s, u"A.ZLT>N.ZLT"_s);
    row("other target extension", {u"A.ZLT"_s}, u"N.X"_s, u"A.ZLT>N.ZLT"_s);
}

void TestFileOperations::planOfDuplicate()
{
    QFETCH(QStringList, files);
    QFETCH(QString, target);
    const JobFolder folder;
    for (const QString& name : files)
        writeBytes(folder.file(name), "x");
    QStringList plan;
    for (const FileCopy& copy : duplicatePlan(folder.file(u"A.ZLT"_s), folder.file(target)))
        plan += nameOf(copy.source) + u'>' + nameOf(copy.target);
    QTEST(plan.join(u' '), "plan");
}

void TestFileOperations::compacting()
{
    const JobFolder folder;
    const QString path = folder.newJob();
    RawFile(path).run("PRAGMA user_version=7;"
                      "INSERT INTO Variabili (Var0) VALUES (hex(zeroblob(200000)));"
                      "DELETE FROM Variabili WHERE length(Var0) > 1");
    ::chmod(QFile::encodeName(path).constData(), 0640);
    const QByteArray before = bytesOf(path);
    writeBytes(folder.file(u"LAVORO.BAK"_s), "former");
    compact(path, folder.file(u"LAVORO.BAK"_s));
    QCOMPARE(bytesOf(folder.file(u"LAVORO.BAK"_s)), before);
    QVERIFY(bytesOf(path).size() < before.size() / 4);
    QCOMPARE(bytesOf(path).mid(60, 12), before.mid(60, 12)); // user version and application
    QVERIFY(QFile::permissions(path).testFlag(QFileDevice::ReadGroup));
    QVERIFY(!QFile::permissions(path).testFlag(QFileDevice::ReadOther));
    QCOMPARE(Database::open(path).openTable(TabellaVariabili).RecordCount(), 1);
    QCOMPARE(folder.names().size(), 2);
}

void TestFileOperations::compactingThroughALink()
{
    const JobFolder folder;
    const JobFolder other;
    const QString path = folder.newJob();
    QVERIFY(QFile::link(path, other.file(u"LINK.ZLT"_s)));
    compact(other.file(u"LINK.ZLT"_s), other.file(u"LINK.BAK"_s));
    QCOMPARE(other.names(), QStringList(u"LINK.ZLT"_s));
    QCOMPARE(folder.names(), QStringList({u"LAVORO.ZLT"_s, u"LINK.BAK"_s}));
    QVERIFY(QFileInfo(other.file(u"LINK.ZLT"_s)).isSymLink());
}

void TestFileOperations::compactingRefuses_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("backup");
    QTest::addColumn<int>("error");
    QTest::newRow("missing") << u"none"_s << u"LAVORO.BAK"_s << 3024;
    QTest::newRow("no database") << u"text"_s << u"LAVORO.BAK"_s << 3343;
    QTest::newRow("itself") << u"LAVORO.ZLT"_s << u"lavoro.zlt"_s << 3204;
    QTest::newRow("backup is a folder") << u"LAVORO.ZLT"_s << u"folder"_s << 3051;
}

void TestFileOperations::compactingRefuses()
{
    QFETCH(QString, name);
    QFETCH(QString, backup);
    const JobFolder folder;
    const QByteArray before = bytesOf(folder.newJob());
    writeBytes(folder.file(u"text"_s), "no database");
    QVERIFY(QDir().mkdir(folder.file(u"folder"_s)));
    const QStringList names = folder.names();
    QTEST(errorOf([&] { compact(folder.file(name), folder.file(backup)); }), "error");
    QCOMPARE(folder.names(), names);
    QCOMPARE(bytesOf(folder.file(u"LAVORO.ZLT"_s)), before);
}

void TestFileOperations::copies()
{
    const JobFolder folder;
    const QString path = folder.newJob();
    // A copy is consistent although somebody is in the middle of a change.
    RawFile other(path);
    other.run("BEGIN IMMEDIATE; DELETE FROM Vani");
    copyDatabase(path, folder.file(u"COPY.ZLT"_s));
    other.run("COMMIT");
    QCOMPARE(Database::open(folder.file(u"COPY.ZLT"_s)).openTable(TabellaVani).RecordCount(), 1);
    QCOMPARE(errorOf([&] { copyDatabase(path, folder.file(u"copy.zlt"_s)); }), 3204);

    const QString text = folder.file(u"text"_s);
    writeBytes(text, QByteArray(200'000, 'x'));
    copyFile(text, folder.file(u"copy"_s));
    QCOMPARE(bytesOf(folder.file(u"copy"_s)), bytesOf(text));
    QCOMPARE(errorOf([&] { copyFile(text, folder.file(u"Copy"_s)); }), 3204);
    QCOMPARE(errorOf([&] { copyFile(folder.file(u"none"_s), folder.file(u"x"_s)); }), 3051);
    writeBytes(text, "new");
    copyFile(text, folder.file(u"copy"_s), Existing::Replace);
    QCOMPARE(bytesOf(folder.file(u"copy"_s)), "new");
    QCOMPARE(folder.names().size(), 4);
}

/// Of a program that was killed; another that is still running keeps what it has.
void TestFileOperations::leftovers()
{
    const JobFolder folder;
    for (const QString& name : {u".zelto-abc123"_s, u".zelto-def456"_s, u".zelto-longer1"_s})
        QVERIFY(QDir().mkdir(folder.file(name)));
    const timespec longAgo{.tv_sec = 1'000'000, .tv_nsec = 0};
    const std::array times{longAgo, longAgo};
    for (const QString& name : {u".zelto-abc123"_s, u".zelto-longer1"_s})
        QCOMPARE(::utimensat(AT_FDCWD, QFile::encodeName(folder.file(name)).constData(),
                             times.data(), 0),
                 0);
    createJobFile(folder.file(u"A.ZLT"_s));
    QCOMPARE(folder.names(), QStringList({u".zelto-def456"_s, u".zelto-longer1"_s, u"A.ZLT"_s}));
}

void TestFileOperations::deletionTakesEngineFiles()
{
    const JobFolder folder;
    const QString path = folder.newJob();
    writeBytes(path + u"-journal"_s, "x");
    deleteFile(path);
    QCOMPARE(folder.names(), QStringList());
    QCOMPARE(errorOf([&] { deleteFile(path); }), 3024);
    writeBytes(path, "no database");
    deleteFile(path);
    QCOMPARE(folder.names(), QStringList());
}

/// Comes last: exchanging names is not to be had any more.
void TestFileOperations::plainRenames()
{
    allowPlainRenamesOnly();
    compacting();
    const JobFolder folder;
    const QByteArray before = bytesOf(folder.newJob());
    QVERIFY(QDir().mkdir(folder.file(u"folder"_s)));
    const QStringList names = folder.names();
    QCOMPARE(errorOf([&] { compact(folder.file(u"LAVORO.ZLT"_s), folder.file(u"folder"_s)); }),
             3051);
    QCOMPARE(errorOf([&] { createJobFile(folder.file(u"lavoro.zlt"_s)); }), 3204);
    QCOMPARE(folder.names(), names);
    QCOMPARE(bytesOf(folder.file(u"LAVORO.ZLT"_s)), before);
    createJobFile(folder.file(u"B.ZLT"_s));
    QCOMPARE(Database::open(folder.file(u"B.ZLT"_s)).openTable(TabellaVani).RecordCount(), 1);
}

QTEST_GUILESS_MAIN(TestFileOperations)
#include "tst_file_operations.moc"

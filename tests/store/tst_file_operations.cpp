// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/file_operations.h"
#include "store/files/file_names.h"
#include "store/files/new_file.h"
#include "store/files/passing_folder.h"
#include "store_fixture.h"
#include "support/runner.h"
#include "system_faults.h"

#include <QDir>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

class TestFileOperations : public QObject
{
    Q_OBJECT

private slots:
    void names()
    {
        QCOMPARE(folderOf(u"/b.zlt"_s), QString());
        QCOMPARE(withoutExtension(u"/a/lavoro"_s), u"/a/la"_s);
        QCOMPARE(withoutExtension(u"/a/bc"_s), u"/a/b"_s);
    }

    /// By the rules of a new, a duplicated, and a restored or converted job, and as it was typed.
    void targetNames()
    {
        const auto names = [](const QString& chosen) {
            QStringList names;
            for (const auto rule : {NameRule::UpToFirstDot, NameRule::UpperCase, NameRule::AsTyped})
                names += targetName(chosen, rule).byRule;
            return names.join(u' ') + u' ' + targetName(chosen, NameRule::UpperCase).typed;
        };
        QCOMPARE(names(u"/a/è"_s), u"/a/è.ZLT /a/È.ZLT /a/è.ZLT /a/è.ZLT"_s);
        QCOMPARE(names(u"/a/b.zlt"_s), u"/a/b.ZLT /a/B.ZLT /a/b.ZLT /a/b.ZLT"_s);
        QCOMPARE(names(u"/a/Scala.1"_s),
                 u"/a/Scala.ZLT /a/SCA.ZLT /a/Scala.1.ZLT /a/Scala.1.ZLT"_s);
        QCOMPARE(names(u"/a/b.html"_s), u"/a/b.ZLT /a/B.HTML.ZLT /a/b.html.ZLT /a/b.html.ZLT"_s);
        QCOMPARE(names(u"/m.r/b"_s), u"/m.ZLT /m.r/B.ZLT /m.r/b.ZLT /m.r/b.ZLT"_s);
    }

    void filesAreFoundInAnyLetterCase()
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

    void planOfDuplicate()
    {
        const auto planFor = [](const QStringList& files) {
            const JobFolder folder;
            for (const QString& name : files)
                writeBytes(folder.file(name), "x");
            QStringList plan;
            for (const FileCopy& copy :
                 duplicatePlan(folder.file(u"A.ZLT"_s), folder.file(u"N.ZLT"_s)))
                plan += nameOf(copy.source) + u'>' + nameOf(copy.target);
            return plan.join(u' ');
        };
        QCOMPARE(planFor({u"A.ZLT"_s, u"AB.ZLT"_s, u"B.ZLT"_s}), u"A.ZLT>N.ZLT"_s);
        QCOMPARE(planFor({u"A.ZLT"_s, u"a.bak"_s, u"A.html"_s}),
                 u"A.html>N.html a.bak>N.bak A.ZLT>N.ZLT"_s);
        QCOMPARE(planFor({u"A.ZLT"_s, u"A.ZLT-journal"_s}), u"A.ZLT>N.ZLT"_s);
        // Another job, in other letters or with a dot, has companions of its own.
        QCOMPARE(planFor({u"A.ZLT"_s, u"a.zlt"_s, u"a.bak"_s, u"A.bak"_s}),
                 u"A.bak>N.bak A.ZLT>N.ZLT"_s);
        QCOMPARE(planFor({u"A.ZLT"_s, u"A.2.ZLT"_s, u"A.2.BAK"_s, u"A.BAK"_s}),
                 u"A.BAK>N.BAK A.ZLT>N.ZLT"_s);
        QCOMPARE(errorOf([&] { (void)planFor({u"A.ZLT"_s, u"A.bak"_s, u"a.BAK"_s}); }), 3204);
    }

    void compacting()
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
        QCOMPARE(Database::open(path).count(TabellaVariabili), 1);
        QCOMPARE(folder.names().size(), 2);
    }

    void compactingThroughALink()
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

    void compactingRefuses()
    {
        const JobFolder folder;
        (void)folder.newJob();
        writeBytes(folder.file(u"text"_s), "no database");
        QVERIFY(QDir().mkdir(folder.file(u"folder"_s)));
        const auto before = folder.contents();
        const auto error = [&](const QString& name, const QString& backup) {
            return errorOf([&] { compact(folder.file(name), folder.file(backup)); });
        };
        QCOMPARE(error(u"none"_s, u"LAVORO.BAK"_s), 3024);
        QCOMPARE(error(u"text"_s, u"LAVORO.BAK"_s), 3343);
        QCOMPARE(error(u"LAVORO.ZLT"_s, u"lavoro.zlt"_s), 3204);
        QCOMPARE(error(u"LAVORO.ZLT"_s, u"folder"_s), 3051);
        QCOMPARE(folder.contents(), before);
    }

    void copies()
    {
        const JobFolder folder;
        const QString path = folder.newJob();
        // A copy is consistent although somebody is in the middle of a change.
        RawFile other(path);
        other.run("BEGIN IMMEDIATE; DELETE FROM Vani");
        copyDatabase(path, folder.file(u"COPY.ZLT"_s));
        other.run("COMMIT");
        QCOMPARE(Database::open(folder.file(u"COPY.ZLT"_s)).count(TabellaVani), 1);
        QCOMPARE(errorOf([&] { copyDatabase(path, folder.file(u"copy.zlt"_s)); }), 3204);

        const QString text = folder.file(u"text"_s);
        writeBytes(text, QByteArray(200'000, 'x'));
        ::chmod(QFile::encodeName(text).constData(), 0700);
        copyFile(text, folder.file(u"copy"_s));
        QCOMPARE(bytesOf(folder.file(u"copy"_s)), bytesOf(text));
        QCOMPARE(QFile::permissions(folder.file(u"copy"_s)), QFile::permissions(text));
        QCOMPARE(errorOf([&] { copyFile(text, folder.file(u"Copy"_s)); }), 3204);
        QCOMPARE(errorOf([&] { copyFile(folder.file(u"none"_s), folder.file(u"x"_s)); }), 3051);
        writeBytes(text, "new");
        copyFile(text, folder.file(u"copy"_s), Existing::Replace);
        QCOMPARE(bytesOf(folder.file(u"copy"_s)), "new");
        QCOMPARE(folder.names().size(), 4);
    }

    /// Of a program that was killed: what only looks like that stays, and what is in use.
    void leftovers()
    {
        const JobFolder folder;
        const JobFolder elsewhere;
        const PassingFolder inUse(elsewhere.file(u"."_s));
        const QString proof = QFileInfo(inUse.path()).fileName();
        const auto plant = [&](const QString& name, const QString& proofName) {
            QVERIFY(QDir().mkdir(folder.file(name)));
            QVERIFY(QFile::copy(inUse.filePath(proof), folder.file(name + u'/' + proofName)));
            writeBytes(folder.file(name + u"/A.ZLT"_s), "x");
        };
        plant(u".zelto-abc123"_s, u".zelto-abc123"_s);
        plant(u".zelto-copied"_s, u".zelto-abc123"_s);
        plant(u".zelto-backup"_s, u"altro"_s);
        plant(u".zelto-longer1"_s, u".zelto-longer1"_s);
        QVERIFY(QFile::link(folder.file(u".zelto-longer1"_s), folder.file(u".zelto-linked"_s)));
        const PassingFolder running(folder.file(u"."_s));
        createJobFile(folder.file(u"B.ZLT"_s));
        QStringList names = folder.names();
        QVERIFY(names.removeOne(QFileInfo(running.path()).fileName()));
        QCOMPARE(names, (QStringList{u".zelto-backup"_s, u".zelto-copied"_s, u".zelto-linked"_s,
                                     u".zelto-longer1"_s, u"B.ZLT"_s}));
        QCOMPARE(bytesOf(folder.file(u".zelto-backup/A.ZLT"_s)), "x");
    }

    void deletionTakesEngineFiles()
    {
        const JobFolder folder;
        const QString path = folder.newJob();
        writeBytes(path + u"-journal"_s, "x");
        const auto noTrash = [](const QString& /*path*/) { return false; };
        QVERIFY(!deleteFile(path, noTrash));
        QCOMPARE(folder.names(), QStringList());
        QCOMPARE(errorOf([&] { deleteFile(path, noTrash); }), 3024);
        writeBytes(path, "no database");
        writeBytes(path + u"-wal"_s, "of a damaged file");
        QStringList trash;
        QVERIFY(deleteFile(path, [&](const QString& one) {
            trash += nameOf(one);
            return QFile::remove(one);
        }));
        QCOMPARE(trash, QStringList({u"LAVORO.ZLT"_s, u"LAVORO.ZLT-wal"_s}));
        QCOMPARE(folder.names(), QStringList());
    }

    /// Comes last: exchanging names is not to be had any more.
    void plainRenames()
    {
        systemFaults.plainRenamesOnly = true;
        compacting();
        compactingRefuses();
        const JobFolder folder;
        const QByteArray before = bytesOf(folder.newJob());
        QVERIFY(QDir().mkdir(folder.file(u"folder"_s)));
        QCOMPARE(errorOf([&] { createJobFile(folder.file(u"lavoro.zlt"_s)); }), 3204);
        createJobFile(folder.file(u"B.ZLT"_s));
        QCOMPARE(Database::open(folder.file(u"B.ZLT"_s)).count(TabellaVani), 1);

        std::vector<std::unique_ptr<NewFile>> files;
        for (const QString& name : {u"LAVORO.ZLT"_s, u"C.ZLT"_s, u"folder"_s}) {
            files.push_back(std::make_unique<NewFile>(folder.file(name)));
            writeBytes(files.back()->path(), "new");
        }
        QCOMPARE(errorOf([&] { NewFile::replaceAll(files); }), 3051);
        QCOMPARE(bytesOf(folder.file(u"LAVORO.ZLT"_s)), before);
        QVERIFY(!QFile::exists(folder.file(u"C.ZLT"_s)));
    }
};

ZELTO_TEST(TestFileOperations)
#include "tst_file_operations.moc"

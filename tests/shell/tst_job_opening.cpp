// SPDX-License-Identifier: GPL-3.0-or-later
// Which jobs open in each way of opening, and jobs that others have open, too.
#include "shell/job_desk.h"
#include "support/plain_user.h"
#include "support/runner.h"

#include <QTest>

#include <sys/stat.h>

using namespace Qt::StringLiterals;
using namespace zelto::shell;
using namespace zelto::store;
using namespace zelto::test;

class TestJobOpening : public QObject
{
    Q_OBJECT

private slots:
    void opening_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("error");
        QTest::newRow("job") << u"B.ZLT"_s << 0;
        QTest::newRow("earlier edition") << u"EARLIER.ZLT"_s << 0;
        QTest::newRow("no database") << u"TEXT.ZLT"_s << 3343;
        QTest::newRow("empty marker") << u"EMPTY.ZLT"_s << 3421;
        QTest::newRow("not our tables") << u"STRANGE.ZLT"_s << 3049;
        QTest::newRow("folder") << u"FOLDER.ZLT"_s << 3051;
    }

    void opening()
    {
        QFETCH(QString, name);
        JobDesk desk;
        RawFile(desk.folder.newJob(u"EMPTY.ZLT"_s))
            .run("DELETE FROM ZELTO; INSERT INTO ZELTO VALUES('','')");
        RawFile(desk.folder.newJob(u"STRANGE.ZLT"_s)).run("ALTER TABLE Vani ADD COLUMN x");
        QDir().mkdir(desk.path(u"FOLDER.ZLT"_s));
        QFETCH(int, error);
        const QString expected = error == 0 ? u"~/"_s + name : QString();

        desk.open(u"A.ZLT"_s);
        desk.recent.AggiornaRecent(desk.path(name));
        QTEST(errorOf([&] { desk.jobs.LeggiRecent(0); }), "error");
        QCOMPARE(desk.openJob(), expected);
        if (name == u"EARLIER.ZLT")
            QVERIFY(!desk.jobs.job().JobDatabase().tableNames().contains(u"Variabili"));

        desk.open(u"A.ZLT"_s);
        QTEST(errorOf([&] { desk.jobs.openGiven(desk.path(name.toLower())); }), "error");
        QCOMPARE(desk.openJob(), expected);
        if (error == 0)
            QVERIFY(!desk.jobs.job().JobDatabase().records(TabellaVariabili).atEnd());

        desk.open(u"A.ZLT"_s);
        desk.user.files = QStringList{u"~/"_s + name};
        QTEST(errorOf([&] { desk.jobs.ApriLavoro(); }), "error");
        QCOMPARE(desk.openJob(), expected);
        desk.jobs.chiudiLavoro();
        QCOMPARE(desk.openJob(), QString());
    }

    void windowsEdition_data()
    {
        QTest::addColumn<bool>("converts");
        QTest::addColumn<QString>("lockFile");
        QTest::addColumn<bool>("saysYes");
        QTest::addColumn<QStringList>("files");
        QTest::addColumn<QString>("openAfter");
        QTest::addColumn<QString>("lastSaid");
        const QString asks = u"save: Indicare il nome del lavoro convertito"_s;
        const QStringList name{u"~/nuovo"_s};
        QTest::newRow("OK") << false << QString() << true << name << QString()
                            << u"convert: Formato"_s;
        QTest::newRow("no name") << true << QString() << true << QStringList() << QString() << asks;
        QTest::newRow("in use, left alone") << true << u"VECCHIO.LDB"_s << false << name
                                            << QString() << u"ask: Accanto al lavoro"_s;
        QTest::newRow("in use, converted")
            << true << u"vecchio.ldb"_s << true << name << u"~/nuovo.ZLT"_s << u"recent"_s;
        QTest::newRow("converted")
            << true << QString() << true << name << u"~/nuovo.ZLT"_s << u"recent"_s;
        QTest::newRow("name exists")
            << true << QString() << true << QStringList{u"~/b.zlt"_s} << QString() << QString();
    }

    /// A job of the edition for Windows, opened in each of the three ways.
    void windowsEdition()
    {
        QFETCH(bool, converts);
        QFETCH(QString, lockFile);
        QFETCH(bool, saysYes);
        QFETCH(QStringList, files);
        QFETCH(QString, openAfter);
        QFETCH(QString, lastSaid);
        for (const QString& way : {u"dialog"_s, u"given"_s, u"recent"_s}) {
            JobDesk desk;
            const QString old = desk.path(u"VECCHIO.ZLT"_s);
            QVERIFY(QFile::copy(QStringLiteral(JET_FOLDER "/job-jet3.zlt"), old));
            const QByteArray before = bytesOf(old);
            if (!lockFile.isEmpty())
                writeBytes(desk.path(lockFile), "lock");
            desk.user.converts = converts;
            desk.user.saysYes = saysYes;
            desk.user.files = way == u"dialog" ? QStringList{u"~/VECCHIO.ZLT"_s} + files : files;
            desk.recent.AggiornaRecent(old);
            const int error = errorOf([&] {
                if (way == u"dialog")
                    desk.jobs.ApriLavoro();
                else if (way == u"given")
                    desk.jobs.openGiven(old);
                else
                    desk.jobs.LeggiRecent(0);
            });
            const QString said = desk.user.said();
            QCOMPARE(error, lastSaid.isEmpty() ? 3204 : 0);
            QVERIFY2(lastSaid.isEmpty() || said.split(u'\n').constLast().startsWith(lastSaid),
                     qPrintable(said));
            QCOMPARE(desk.openJob(), openAfter);
            QCOMPARE(said.contains(u"message: Unità convertite: "), !openAfter.isEmpty());
            QCOMPARE(bytesOf(old), before);
        }
    }

    void recentEntries()
    {
        JobDesk desk;
        desk.open(u"B.ZLT"_s);
        desk.open(u"A.ZLT"_s);
        QVERIFY(QFile::remove(desk.path(u"B.ZLT"_s)));
        desk.jobs.LeggiRecent(1);
        QCOMPARE(desk.user.said(), u"error: Archivio < ~/B.ZLT > non trovato"_s);
        QCOMPARE(desk.openJob(), u"~/A.ZLT"_s);
        QCOMPARE(errorOf([&] { desk.open(u"TEXT.ZLT"_s); }), 3343);
        QCOMPARE(desk.recent.paths().front(), desk.path(u"A.ZLT"_s));
    }

    void readOnlyJob()
    {
        JobDesk desk;
        const QString folder = QFileInfo(desk.path(u"x"_s)).path();
        ::chmod(QFile::encodeName(folder).constData(), 0755);
        ::chmod(QFile::encodeName(desk.path(u"B.ZLT"_s)).constData(), 0444);
        ::chmod(QFile::encodeName(desk.path(u"EARLIER.ZLT"_s)).constData(), 0444);
        const PlainUser plain;
        desk.jobs.openGiven(desk.path(u"B.ZLT"_s));
        QVERIFY(
            desk.user.said().endsWith(u"è di sola lettura: si può consultare e stampare, ma non "
                                      "modificare."_s));
        QCOMPARE(desk.openJob(), u"~/B.ZLT"_s);
        QCOMPARE(errorOf([&] { desk.jobs.job().JobDatabase().Execute(u"DELETE FROM Vani"_s); }),
                 3027);
        // It cannot be completed, so it does not stay open either.
        QCOMPARE(errorOf([&] { desk.jobs.openGiven(desk.path(u"EARLIER.ZLT"_s)); }), 3027);
        QCOMPARE(desk.openJob(), QString());
    }

    /// A job that two windows have open: each operation that would take it away asks first.
    void otherWindow()
    {
        JobDesk desk;
        ScriptedUser otherUser{desk.path(QString())};
        RecentJobs otherRecent;
        OpenJob other(otherUser, otherRecent);
        other.open(desk.path(u"A.ZLT"_s));
        QVERIFY(!other.isOpenElsewhere(desk.path(u"A.ZLT"_s)));
        desk.jobs.openGiven(desk.path(u"A.ZLT"_s));
        QVERIFY(desk.user.said().endsWith(u"quando vi si ritorna."_s));
        QVERIFY(other.isOpenElsewhere(desk.path(u"A.ZLT"_s)));

        const QByteArray before = bytesOf(desk.path(u"A.ZLT"_s));
        desk.user.keeps = u"in un'altra finestra"_s;
        for (const Operation operation :
             {&JobFiles::EliminaLavoro, &JobFiles::CompattaArchivio, &JobFiles::RiparaArchivio}) {
            desk.user.files = {u"~/A.ZLT"_s};
            desk.carryOut(operation);
            QVERIFY(desk.user.said().endsWith(u"Proseguire?"_s));
            QCOMPARE(bytesOf(desk.path(u"A.ZLT"_s)), before);
            QCOMPARE(desk.openJob(), u"~/A.ZLT"_s);
        }
        other.close();
        desk.user.files = {u"~/A.ZLT"_s};
        desk.jobs.CompattaArchivio();
        QVERIFY(!desk.user.said().contains(u"Proseguire?"));
        // It is another file by now, which the lock has followed.
        QVERIFY(other.isOpenElsewhere(desk.path(u"A.ZLT"_s)));
        desk.jobs.chiudiLavoro();
        QVERIFY(!other.isOpenElsewhere(desk.path(u"A.ZLT"_s)));
    }

    /// One that somebody else prepared is left alone.
    void lockFolder()
    {
        const JobFolder folder;
        const QString job = folder.newJob();
        for (const char16_t* name : {u"session", u"temp", u"other"})
            QVERIFY(QDir().mkdir(folder.file(QString::fromUtf16(name))));
        QVERIFY(QFile::link(folder.file(u"other"_s), folder.file(u"session/zelto"_s)));
        const QByteArray session = qgetenv("XDG_RUNTIME_DIR");
        const QByteArray temp = qgetenv("TMPDIR");
        qputenv("XDG_RUNTIME_DIR", folder.file(u"session"_s).toUtf8());
        qputenv("TMPDIR", folder.file(u"temp"_s).toUtf8());
        {
            const JobLock one(job);
            QVERIFY(one.isAlone());
            const JobLock other(job);
            QVERIFY(!one.isAlone() && !other.isAlone());
            QVERIFY(JobLock(folder.file(u"none.ZLT"_s)).isAlone());
        }
        qputenv("XDG_RUNTIME_DIR", session);
        qputenv("TMPDIR", temp);
        QVERIFY(QDir(folder.file(u"other"_s)).isEmpty());
        const QFileInfoList locks =
            QDir(folder.file(u"temp"_s)).entryInfoList(QDir::Dirs | QDir::NoDotAndDotDot);
        QCOMPARE(locks.size(), 1);
        QCOMPARE(int(locks.first().permissions() & (QFile::ReadOther | QFile::ExeGroup)), 0);
    }

    /// Another program is in the middle of a change.
    void lockedJob()
    {
        for (const Operation operation : {&JobFiles::CompattaArchivio, &JobFiles::EliminaLavoro}) {
            JobDesk desk;
            const QByteArray before = bytesOf(desk.path(u"A.ZLT"_s));
            RawFile other(desk.path(u"A.ZLT"_s));
            other.run("BEGIN IMMEDIATE; DELETE FROM Vani");
            desk.user.files = {u"~/a.zlt"_s};
            desk.carryOut(operation);
            QVERIFY(desk.user.said().endsWith(u"report: 3045"));
            other.run("ROLLBACK");
            QCOMPARE(bytesOf(desk.path(u"A.ZLT"_s)), before);
            QVERIFY(!QFile::exists(desk.path(u"A.BAK"_s)));
        }
    }

    /// Whoever has the job open meanwhile finds out before anything of his goes to the wrong file.
    void anotherProgramReplacesTheJob()
    {
        JobDesk desk;
        Database other = Database::open(desk.path(u"A.ZLT"_s));
        desk.user.files = {u"~/A.ZLT"_s};
        desk.jobs.CompattaArchivio();
        QVERIFY(!desk.user.said().contains(u"report"));
        const QByteArray backup = bytesOf(desk.path(u"A.BAK"_s));
        QCOMPARE(errorOf([&] { other.Execute(u"DELETE FROM Vani"_s); }), 3027);
        QCOMPARE(bytesOf(desk.path(u"A.BAK"_s)), backup);
    }
};

ZELTO_TEST(TestJobOpening)
#include "tst_job_opening.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
// Which jobs open in each way of opening, and jobs that others have open, too.
#include "shell/job_desk.h"
#include "support/columns.h"
#include "support/plain_user.h"
#include "support/runner.h"

using namespace zelto::shell;
using namespace zelto::store;
using namespace zelto::test;

class TestJobOpening : public QObject
{
    Q_OBJECT

    enum class Way { Recent, Given, Dialog };

    /// The number of the error with which the job opens in that way, 0 for none; answers to further
    /// dialogs.
    static int errorOfOpening(JobDesk& desk, const QString& name, Way way,
                              const QStringList& answers = {})
    {
        desk.recent.AggiornaRecent(desk.path(name));
        desk.user.files = answers;
        if (way == Way::Dialog)
            desk.user.files.prepend(u"~/"_s + name);
        return errorOf([&] {
            if (way == Way::Recent)
                desk.jobs.LeggiRecent(0);
            else if (way == Way::Given)
                desk.jobs.openGiven(desk.path(name.toLower()));
            else
                desk.jobs.ApriLavoro();
        });
    }

private slots:
    void opening_data()
    {
        const auto row = columns<QString, int>("name", "error");
        row("job", u"B.ZLT"_s, 0);
        row("earlier edition", u"EARLIER.ZLT"_s, 0);
        row("no database", u"TEXT.ZLT"_s, 3343);
        row("empty marker", u"EMPTY.ZLT"_s, 3421);
        row("not our tables", u"STRANGE.ZLT"_s, 3049);
        row("folder", u"FOLDER.ZLT"_s, 3051);
    }
    /// A recent entry is not completed.
    void opening()
    {
        QFETCH(QString, name);
        QFETCH(int, error);
        JobDesk desk;
        RawFile(desk.folder.newJob(u"EMPTY.ZLT"_s))
            .run("DELETE FROM ZELTO; INSERT INTO ZELTO VALUES('','')");
        RawFile(desk.folder.newJob(u"STRANGE.ZLT"_s)).run("ALTER TABLE Vani ADD COLUMN x");
        QDir().mkdir(desk.path(u"FOLDER.ZLT"_s));
        for (const Way way : {Way::Recent, Way::Given, Way::Dialog}) {
            desk.open(u"A.ZLT"_s);
            QCOMPARE(errorOfOpening(desk, name, way), error);
            QCOMPARE(desk.openJob(), error == 0 ? u"~/"_s + name : QString());
            if (error == 0)
                QCOMPARE(desk.jobs.job().JobDatabase().tableNames().contains(u"Variabili"),
                         way != Way::Recent || name == u"B.ZLT");
        }
        desk.jobs.chiudiLavoro();
        QCOMPARE(desk.openJob(), QString());
    }

    /// The user stops where the last is said; nothing of an error.
    void windowsEdition_data()
    {
        const auto row = columns<QString, QString, QString>("lockFile", "name", "lastSaid");
        row("OK", {}, {}, u"convert: Formato"_s);
        row("no name", {}, {}, u"save: Indicare il nome del lavoro convertito"_s);
        row("in use, left alone", u"JET.LDB"_s, {}, u"ask: Accanto al lavoro"_s);
        row("in use, converted", u"jet.ldb"_s, u"~/nuovo"_s, u"recent"_s);
        row("converted", {}, u"~/nuovo"_s, u"recent"_s);
        row("name exists", {}, u"~/b.zlt"_s, {});
    }
    /// A job of the edition for Windows, opened in each of the three ways.
    void windowsEdition()
    {
        QFETCH(QString, lockFile);
        QFETCH(QString, name);
        QFETCH(QString, lastSaid);
        for (const Way way : {Way::Recent, Way::Given, Way::Dialog}) {
            JobDesk desk;
            const QByteArray before = bytesOf(desk.path(u"JET.ZLT"_s));
            if (!lockFile.isEmpty())
                writeBytes(desk.path(lockFile), "lock");
            desk.user.converts = !lastSaid.startsWith(u"convert");
            desk.user.saysYes = !lastSaid.startsWith(u"ask");
            QCOMPARE(errorOfOpening(desk, u"JET.ZLT"_s, way, {name}),
                     lastSaid.isEmpty() ? 3204 : 0);
            const QString said = desk.user.said();
            QVERIFY2(lastSaid.isEmpty() || said.split(u'\n').constLast().startsWith(lastSaid),
                     qPrintable(said));
            const bool converted = lastSaid == u"recent";
            QCOMPARE(desk.openJob(), converted ? u"~/nuovo.ZLT"_s : QString());
            QCOMPARE(said.contains(u"message: Unità convertite: "), converted);
            QCOMPARE(bytesOf(desk.path(u"JET.ZLT"_s)), before);
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
        QCOMPARE(desk.recent.paths().front(), desk.a);
    }

    void readOnlyJob()
    {
        JobDesk desk;
        QFile::setPermissions(desk.folder.path(), QFile::Permissions::fromInt(0x7755));
        for (const QString& name : {u"B.ZLT"_s, u"EARLIER.ZLT"_s})
            QFile::setPermissions(desk.path(name), QFile::Permissions::fromInt(0x4444));
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
        ScriptedUser otherUser;
        RecentJobs otherRecent;
        OpenJob other(otherUser, otherRecent);
        other.open(desk.a);
        QVERIFY(!other.isOpenElsewhere(desk.a));
        desk.jobs.openGiven(desk.a);
        QVERIFY(desk.user.said().endsWith(u"quando vi si ritorna."_s));
        QVERIFY(other.isOpenElsewhere(desk.a));

        const QByteArray before = bytesOf(desk.a);
        desk.user.keeps = u"in un'altra finestra"_s;
        for (const Operation operation :
             {&JobFiles::EliminaLavoro, &JobFiles::CompattaArchivio, &JobFiles::RiparaArchivio}) {
            QVERIFY(desk.carryOut(operation, {desk.a}).endsWith(u"Proseguire?"_s));
            QCOMPARE(bytesOf(desk.a), before);
            QCOMPARE(desk.openJob(), u"~/A.ZLT"_s);
        }
        other.close();
        QVERIFY(!desk.carryOut(&JobFiles::CompattaArchivio, {desk.a}).contains(u"Proseguire?"));
        // It is another file by now, which the lock has followed.
        QVERIFY(other.isOpenElsewhere(desk.a));
        desk.jobs.chiudiLavoro();
        QVERIFY(!other.isOpenElsewhere(desk.a));
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
            const QByteArray before = bytesOf(desk.a);
            RawFile other(desk.a);
            other.run("BEGIN IMMEDIATE; DELETE FROM Vani");
            QVERIFY(desk.carryOut(operation, {desk.a}).endsWith(u"report: 3045"));
            other.run("ROLLBACK");
            QCOMPARE(bytesOf(desk.a), before);
            QVERIFY(!QFile::exists(desk.path(u"A.BAK"_s)));
        }
    }

    /// Whoever has the job open meanwhile finds out before anything of his goes to the wrong file.
    void anotherProgramReplacesTheJob()
    {
        JobDesk desk;
        Database other = Database::open(desk.a);
        QVERIFY(!desk.carryOut(&JobFiles::CompattaArchivio, {desk.a}).contains(u"report"));
        const QByteArray backup = bytesOf(desk.path(u"A.BAK"_s));
        QCOMPARE(errorOf([&] { other.Execute(u"DELETE FROM Vani"_s); }), 3027);
        QCOMPARE(bytesOf(desk.path(u"A.BAK"_s)), backup);
    }
};

ZELTO_TEST(TestJobOpening)
#include "tst_job_opening.moc"

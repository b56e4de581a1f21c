// SPDX-License-Identifier: GPL-3.0-or-later
// The copies that are kept of jobs, and jobs made of them.
#include "job_desk.h"
#include "store/new_file.h"
#include "support/disk_limit.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

namespace {

/// A job's user is told in its first table; every state is as many seconds after the first.
void changeJob(const QString& path, int state)
{
    RawFile(path).run("UPDATE ZELTO SET Utente='" + QByteArray::number(state) + "'");
    const QDateTime first(QDate(2026, 10, 25), QTime(0, 59, 59), Qt::UTC);
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadWrite));
    QVERIFY(file.setFileTime(first.addSecs(state), QFileDevice::FileModificationTime));
}

/// The states of a job's copies, the last first.
QString states(const JobCopies& copies, const QString& job)
{
    QStringList states;
    for (const JobCopy& copy : copies.copiesOf(job))
        states << Database::open(copy.path, OpenMode::ReadOnly).openTable(TabellaZelto).text(1);
    return states.join(u' ');
}

} // namespace

class TestJobCopies : public QObject
{
    Q_OBJECT

private slots:
    void everyStateOnce();
    void jobsApart();
    void whatIsListed();
    void failureKeepsOldCopies();
    void openingWithoutCopy();
    void restoring();
    void restoringALostJob();
    void refusedRestoring_data();
    void refusedRestoring();
};

void TestJobCopies::everyStateOnce()
{
    const JobDesk desk;
    const QString job = desk.path(u"A.ZLT"_s);
    for (int state = 1; state <= 12; ++state) {
        changeJob(job, state);
        desk.copies.keep(job);
        desk.copies.keep(job);
    }
    QCOMPARE(states(desk.copies, job), u"12 11 10 9 8 7 6 5 4 3"_s);
    // Through the hour that the clock is put back, and to a state of before.
    const std::vector<JobCopy> kept = desk.copies.copiesOf(job);
    QCOMPARE(kept.front().changed.toUTC().time(), QTime(1, 0, 11));
    changeJob(job, 1);
    desk.copies.keep(job);
    QCOMPARE(states(desk.copies, job), u"1 12 11 10 9 8 7 6 5 4"_s);
}

void TestJobCopies::jobsApart()
{
    const JobDesk desk;
    QVERIFY(QDir().mkdir(desk.path(u"altra"_s)));
    const QString a = desk.path(u"A.ZLT"_s);
    const QString other = desk.path(u"altra/A.ZLT"_s);
    const QString link = desk.path(u"LINK.ZLT"_s);
    QVERIFY(QFile::copy(desk.path(u"B.ZLT"_s), other));
    QVERIFY(QFile::link(a, link));
    changeJob(a, 1);
    changeJob(other, 2);
    for (const QString& job : {a, other, link})
        desk.copies.keep(job);
    QCOMPARE(desk.copies.jobs(), QStringList({a, other}));
    QCOMPARE(states(desk.copies, a), u"1"_s);
    QCOMPARE(states(desk.copies, other), u"2"_s);
    const auto others = QFile::permissions(desk.copies.folder()) &
                        (QFile::ReadGroup | QFile::ReadOther | QFile::ExeGroup | QFile::ExeOther);
    QCOMPARE(int(others), 0);
}

void TestJobCopies::whatIsListed()
{
    const JobDesk desk;
    QCOMPARE(desk.copies.jobs(), QStringList());
    const QString job = desk.path(u"A.ZLT"_s);
    for (int state : {1, 2}) {
        changeJob(job, state);
        desk.copies.keep(job);
    }
    const std::vector<JobCopy> kept = desk.copies.copiesOf(job);
    const QDir folder(QFileInfo(kept.front().path).path());
    writeBytes(folder.filePath(u"mio.ZLT"_s), "mine");
    writeBytes(folder.filePath(u"000099 ieri.ZLT"_s), "mine, too");
    writeBytes(kept.back().path, "no database");
    const std::vector<JobCopy> listed = desk.copies.copiesOf(job);
    QCOMPARE(listed.size(), 2U);
    QCOMPARE(listed.front().units, std::optional(1));
    QVERIFY(listed.front().size > 1000);
    QVERIFY(!listed.back().units);
    for (int state = 3; state <= 14; ++state) {
        changeJob(job, state);
        desk.copies.keep(job);
    }
    QCOMPARE(bytesOf(folder.filePath(u"mio.ZLT"_s)), "mine");
}

void TestJobCopies::failureKeepsOldCopies()
{
    const JobDesk desk;
    const QString job = desk.path(u"A.ZLT"_s);
    for (int state = 1; state <= 10; ++state) {
        changeJob(job, state);
        desk.copies.keep(job);
    }
    changeJob(job, 11);
    {
        const DiskLimit full(8192);
        const int error = errorOf([&] { desk.copies.keep(job); });
        QVERIFY2(error == 3026 || error == 3043, qPrintable(QString::number(error)));
    }
    QCOMPARE(states(desk.copies, job), u"10 9 8 7 6 5 4 3 2 1"_s);
}

void TestJobCopies::openingWithoutCopy()
{
    JobDesk desk;
    writeBytes(desk.copies.folder(), "a file in the folder's place");
    desk.jobs.openGiven(desk.path(u"A.ZLT"_s));
    QVERIFY(desk.user.said().contains(u"message: Il lavoro è aperto, ma non è stato possibile"));
    QCOMPARE(desk.openJob(), u"~/A.ZLT"_s);
}

void TestJobCopies::restoring()
{
    JobDesk desk;
    const QString job = desk.path(u"EARLIER.ZLT"_s);
    for (int state : {1, 2}) {
        changeJob(job, state);
        desk.open(u"EARLIER.ZLT"_s);
        desk.jobs.chiudiLavoro();
    }
    // Opening completes a job of an earlier edition; its copy is of the state before that.
    const std::vector<JobCopy> kept = desk.copies.copiesOf(job);
    QCOMPARE(kept.size(), 2U);
    QVERIFY(!Database::open(kept.back().path).tableNames().contains(u"Variabili"));
    desk.open(u"EARLIER.ZLT"_s);
    const QByteArray today = bytesOf(job);

    desk.user.copy = 1;
    desk.user.files = QStringList{u"~/di prima"_s};
    desk.jobs.RipristinaCopia();
    const QString said = desk.user.said();
    QVERIFY2(said.contains(u"in [~EARLIER 2026-10-25"), qPrintable(said));
    QVERIFY(said.contains(u"status: Ripristino copia su ~/DI PRIMA.ZLT (busy)"));
    QCOMPARE(desk.openJob(), u"~/DI PRIMA.ZLT"_s);
    QCOMPARE(desk.jobs.job().JobDatabase().openTable(TabellaZelto).text(1), u"1"_s);
    QVERIFY(desk.jobs.job().JobDatabase().tableNames().contains(u"Variabili"));
    QCOMPARE(bytesOf(job), today);
}

void TestJobCopies::restoringALostJob()
{
    JobDesk desk;
    desk.open(u"A.ZLT"_s);
    desk.jobs.chiudiLavoro();
    (void)desk.user.said();
    QVERIFY(QFile::remove(desk.path(u"A.ZLT"_s)));
    desk.user.files = QStringList{u"~/a"_s};
    desk.jobs.RipristinaCopia();
    QCOMPARE(desk.openJob(), u"~/A.ZLT"_s);
}

void TestJobCopies::refusedRestoring_data()
{
    QTest::addColumn<int>("copy");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<QString>("lastSaid");
    QTest::newRow("no copy chosen") << 9 << QStringList() << u"copies: ~/A.ZLT"_s;
    QTest::newRow("no name chosen") << 0 << QStringList() << u"save: Indicare il nome"_s;
    QTest::newRow("name exists") << 0 << QStringList{u"~/b"_s} << u"report: 3204"_s;
    QTest::newRow("onto itself") << 0 << QStringList{u"~/A.ZLT"_s} << u"report: 3204"_s;
    QTest::newRow("no such folder") << 0 << QStringList{u"~/none/x"_s} << u"report: 3024"_s;
}

void TestJobCopies::refusedRestoring()
{
    QFETCH(int, copy);
    QFETCH(QStringList, files);
    QFETCH(QString, lastSaid);
    JobDesk desk;
    desk.jobs.RipristinaCopia();
    QVERIFY(desk.user.said().startsWith(u"message: Non c'è ancora nessuna copia"));
    desk.open(u"A.ZLT"_s);
    const QStringList before = desk.folder.names();
    desk.user.copy = static_cast<std::size_t>(copy);
    desk.user.files = files;
    desk.jobs.RipristinaCopia();
    const QString last = desk.user.said().split(u'\n').constLast();
    QVERIFY2(last.startsWith(lastSaid), qPrintable(last));
    QCOMPARE(desk.folder.names(), before);
    QCOMPARE(desk.openJob(), u"~/A.ZLT"_s);
}

QTEST_GUILESS_MAIN(TestJobCopies)
#include "tst_job_copies.moc"

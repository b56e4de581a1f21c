// SPDX-License-Identifier: GPL-3.0-or-later
// The copies that are kept of jobs, and jobs made of them.
#include "shell/job_desk.h"
#include "store/files/new_file.h"
#include "support/disk_limit.h"
#include "support/runner.h"

#include <QTest>

#include <numeric>

using namespace Qt::StringLiterals;
using namespace zelto::shell;
using namespace zelto::store;
using namespace zelto::test;

namespace {

/// A job's state is told in its first table.
void changeJob(const QString& path, int state)
{
    RawFile(path).run("UPDATE ZELTO SET Utente='" + QByteArray::number(state) + "'");
}

/// Keeps a copy of each state.
void keepStates(const JobDesk& desk, const QString& job, int first, int last)
{
    for (int state = first; state <= last; ++state) {
        changeJob(job, state);
        desk.copies.keep(job);
    }
}

/// In the hour in which the clock is put back.
const QDateTime Beginning(QDate(2026, 10, 25), QTime(0, 59, 59), Qt::UTC);

/// The states of a job's copies, the last first.
QString states(const JobCopies& copies, const QString& job)
{
    QStringList states;
    for (const JobCopy& copy : copies.copiesOf(job))
        states << Database::open(copy.path, OpenMode::ReadOnly).records(TabellaZelto).text(1);
    return states.join(u' ');
}

} // namespace

class TestJobCopies : public QObject
{
    Q_OBJECT

private slots:
    /// Whatever the time of the file.
    void everyStateOnce()
    {
        const JobDesk desk;
        const QString job = desk.path(u"A.ZLT"_s);
        for (int state = 1; state <= 12; ++state) {
            changeJob(job, state);
            desk.copies.keep(job, Beginning.addSecs(state));
            QFile file(job);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(Beginning.addDays(state), QFileDevice::FileModificationTime));
            desk.copies.keep(job, Beginning.addSecs(state));
        }
        QCOMPARE(states(desk.copies, job), u"12 11 10 9 8 7 6 5 4 3"_s);
        QCOMPARE(desk.copies.copiesOf(job).front().kept.toUTC().time(), QTime(1, 0, 11));
        changeJob(job, 1);
        desk.copies.keep(job, Beginning);
        QCOMPARE(states(desk.copies, job), u"1 12 11 10 9 8 7 6 5 4"_s);
    }

    /// Three states a day for 400 days.
    void olderStatesThinOut()
    {
        const JobDesk desk;
        const QString job = desk.path(u"A.ZLT"_s);
        changeJob(job, 0);
        desk.copies.keep(job, Beginning);
        const QString first = desk.copies.copiesOf(job).front().path;
        const QDateTime noon(QDate(2026, 1, 1), QTime(12, 0), Qt::UTC);
        const QString folder = QFileInfo(first).path();
        for (int state = 1; state < 1200; ++state) {
            const QDateTime moment = noon.addDays(state / 3).addSecs(state % 3);
            const QString name = u"%1 %2.ZLT"_s.arg(state + 1, 6, 10, QChar(u'0'))
                                     .arg(moment.toString(u"yyyy-MM-dd HH-mm-ss-zzz"));
            QVERIFY(QFile::copy(first, folder + u'/' + name));
        }
        changeJob(job, 1);
        const QDateTime now = noon.addDays(400);
        desk.copies.keep(job, now);
        QList<qint64> ages;
        for (const JobCopy& copy : desk.copies.copiesOf(job))
            ages += copy.kept.toUTC().daysTo(now);
        QCOMPARE(ages.first(10), (QList<qint64>{0, 1, 1, 1, 2, 2, 2, 3, 3, 3}));
        QList<qint64> days(28);
        std::iota(days.begin(), days.end(), 4);
        QCOMPARE(ages.mid(10, 28), days);
        const QList<qint64> weeks = ages.mid(38);
        for (qsizetype i = 2; i < weeks.size(); ++i) // of the first week some days are in the month
            QCOMPARE(weeks[i] - weeks[i - 1], 7);
        QVERIFY(weeks.first() <= 38 && weeks.last() > 359 && weeks.last() <= 366);
    }

    void jobsApart()
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
        const auto others =
            QFile::permissions(desk.copies.folder()) &
            (QFile::ReadGroup | QFile::ReadOther | QFile::ExeGroup | QFile::ExeOther);
        QCOMPARE(int(others), 0);
    }

    void whatIsListed()
    {
        const JobDesk desk;
        QCOMPARE(desk.copies.jobs(), QStringList());
        const QString job = desk.path(u"A.ZLT"_s);
        keepStates(desk, job, 1, 2);
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
        keepStates(desk, job, 3, 14);
        QCOMPARE(bytesOf(folder.filePath(u"mio.ZLT"_s)), "mine");
    }

    void failureKeepsOldCopies()
    {
        const JobDesk desk;
        const QString job = desk.path(u"A.ZLT"_s);
        keepStates(desk, job, 1, 10);
        changeJob(job, 11);
        {
            const DiskLimit full(8192);
            const int error = errorOf([&] { desk.copies.keep(job); });
            QVERIFY2(error == 3026 || error == 3043, qPrintable(QString::number(error)));
        }
        QCOMPARE(states(desk.copies, job), u"10 9 8 7 6 5 4 3 2 1"_s);
    }

    void openingWithoutCopy()
    {
        JobDesk desk;
        writeBytes(desk.copies.folder(), "a file in the folder's place");
        desk.jobs.openGiven(desk.path(u"A.ZLT"_s));
        QVERIFY(desk.user.said().contains(u"message: Non è stato possibile conservare una copia"));
        QCOMPARE(desk.openJob(), u"~/A.ZLT"_s);
    }

    void restoring()
    {
        JobDesk desk;
        const QString job = desk.path(u"EARLIER.ZLT"_s);
        for (int state : {1, 2}) {
            changeJob(job, state);
            desk.open(u"EARLIER.ZLT"_s);
            desk.jobs.chiudiLavoro();
        }
        // Opening completes a job of an earlier edition; its copy is of the state before that, and
        // the next one of what closing found.
        const std::vector<JobCopy> kept = desk.copies.copiesOf(job);
        QCOMPARE(kept.size(), 3U);
        QVERIFY(!Database::open(kept.back().path).tableNames().contains(u"Variabili"));
        desk.open(u"EARLIER.ZLT"_s);
        const QByteArray today = bytesOf(job);

        desk.user.copy = 2;
        desk.user.files = {u"~/di prima.1"_s};
        desk.jobs.RipristinaCopia();
        const QString said = desk.user.said();
        QVERIFY2(said.contains(u"in [~EARLIER 20"), qPrintable(said));
        QVERIFY(said.contains(u"status: Ripristino copia su ~/di prima.1.ZLT (busy)"));
        QCOMPARE(desk.openJob(), u"~/di prima.1.ZLT"_s);
        QCOMPARE(desk.jobs.job().JobDatabase().records(TabellaZelto).text(1), u"1"_s);
        QVERIFY(desk.jobs.job().JobDatabase().tableNames().contains(u"Variabili"));
        QCOMPARE(bytesOf(job), today);
    }

    void restoringALostJob()
    {
        JobDesk desk;
        desk.open(u"A.ZLT"_s);
        desk.jobs.chiudiLavoro();
        (void)desk.user.said();
        QVERIFY(QFile::remove(desk.path(u"A.ZLT"_s)));
        desk.user.files = {u"~/a"_s};
        desk.jobs.RipristinaCopia();
        QCOMPARE(desk.openJob(), u"~/a.ZLT"_s);
    }

    /// At opening, at closing if it was changed, before repair and deletion.
    void whenCopiesAreMade()
    {
        JobDesk desk;
        const QString job = desk.path(u"A.ZLT"_s);
        const auto change = [&](int state) {
            desk.jobs.job().JobDatabase().Execute(u"UPDATE ZELTO SET Utente='%1'"_s.arg(state));
        };
        changeJob(job, 1);
        desk.open(u"A.ZLT"_s);
        desk.jobs.chiudiLavoro();
        QCOMPARE(states(desk.copies, job), u"1"_s);
        desk.open(u"A.ZLT"_s);
        change(2);
        desk.open(u"B.ZLT"_s);
        QCOMPARE(states(desk.copies, job), u"2 1"_s);
        changeJob(job, 3);
        desk.user.files = {u"~/A.ZLT"_s};
        desk.jobs.RiparaArchivio();
        QCOMPARE(states(desk.copies, job), u"3 2 1"_s);
        changeJob(job, 4);
        desk.user.files = {u"~/A.ZLT"_s};
        desk.jobs.EliminaLavoro();
        QVERIFY(!QFile::exists(job));
        QCOMPARE(states(desk.copies, job), u"4 3 2 1"_s);
    }

    void copiesGoWithTheirJob()
    {
        JobDesk desk;
        const QString job = desk.path(u"A.ZLT"_s);
        desk.open(u"B.ZLT"_s);
        desk.open(u"A.ZLT"_s);
        const QString folder = QFileInfo(desk.copies.copiesOf(job).front().path).path();
        desk.user.keeps = u"\t"_s;
        desk.user.hasTrash = false;
        desk.user.files = {u"~/A.ZLT"_s};
        desk.jobs.EliminaLavoro();
        QVERIFY(
            desk.user.said().endsWith(u"è stato cancellato: non c'è un cestino che lo prenda."_s));
        QVERIFY(!QFile::exists(job) && !QFile::exists(folder));
        QCOMPARE(desk.copies.jobs(), QStringList(desk.path(u"B.ZLT"_s)));
    }

    void refusedRestoring_data()
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

    void refusedRestoring()
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
        desk.carryOut(&JobFiles::RipristinaCopia);
        const QString last = desk.user.said().split(u'\n').constLast();
        QVERIFY2(last.startsWith(lastSaid), qPrintable(last));
        QCOMPARE(desk.folder.names(), before);
        QCOMPARE(desk.openJob(), u"~/A.ZLT"_s);
    }
};

ZELTO_TEST(TestJobCopies)
#include "tst_job_copies.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
// The copies that are kept of jobs, and jobs made of them.
#include "shell/job_desk.h"
#include "support/disk_limit.h"
#include "support/runner.h"

#include <QTimeZone>

#include <numeric>

using namespace zelto::shell;
using namespace zelto::store;
using namespace zelto::test;

namespace {

/// A job's state is told in its first table.
void changeJob(const QString& path, int state)
{
    RawFile(path).run("UPDATE ZELTO SET Utente='" + QByteArray::number(state) + "'");
}

/// The states of a job's copies, the last first.
QString states(const JobCopies& copies, const QString& job)
{
    QStringList states;
    for (const JobCopy& copy : copies.copiesOf(job))
        states << Database::open(copy.path, OpenMode::ReadOnly).records(TabellaZelto).text(1);
    return states.join(u' ');
}

/// In the hour in which the clock is put back.
const QDateTime Beginning(QDate(2026, 10, 25), QTime(0, 59, 59), QTimeZone::utc());

/// A desk on which A.ZLT gets other states.
struct CopyDesk : JobDesk
{
    void change(int state) const { changeJob(a, state); }
    [[nodiscard]] QString kept() const { return states(copies, a); }
    [[nodiscard]] QString folderOfCopies() const
    {
        return QFileInfo(copies.copiesOf(a).front().path).path();
    }
    void keepStates(int first, int last) const
    {
        for (int state = first; state <= last; ++state) {
            change(state);
            copies.keep(a);
        }
    }
};

} // namespace

class TestJobCopies : public QObject
{
    Q_OBJECT

private slots:
    /// Whatever the time of the file.
    void everyStateOnce()
    {
        const CopyDesk desk;
        for (int state = 1; state <= 12; ++state) {
            desk.change(state);
            desk.copies.keep(desk.a, Beginning.addSecs(state));
            QFile file(desk.a);
            QVERIFY(file.open(QIODevice::ReadWrite));
            QVERIFY(file.setFileTime(Beginning.addDays(state), QFileDevice::FileModificationTime));
            desk.copies.keep(desk.a, Beginning.addSecs(state));
        }
        QCOMPARE(desk.kept(), u"12 11 10 9 8 7 6 5 4 3"_s);
        QCOMPARE(desk.copies.copiesOf(desk.a).front().kept.toUTC().time(), QTime(1, 0, 11));
        desk.change(1);
        desk.copies.keep(desk.a, Beginning);
        QCOMPARE(desk.kept(), u"1 12 11 10 9 8 7 6 5 4"_s);
        RawFile(desk.a).run("INSERT INTO Vani (Chiave) VALUES ('    1    2')");
        desk.copies.keep(desk.a, Beginning);
        QCOMPARE(desk.kept(), u"1 1 12 11 10 9 8 7 6 5"_s);
    }

    /// Three states a day for 400 days.
    void olderStatesThinOut()
    {
        const CopyDesk desk;
        desk.change(0);
        desk.copies.keep(desk.a, Beginning);
        const QString first = desk.copies.copiesOf(desk.a).front().path;
        const QString folder = desk.folderOfCopies();
        const QDateTime noon(QDate(2026, 1, 1), QTime(12, 0), QTimeZone::utc());
        for (int state = 1; state < 1200; ++state) {
            const QDateTime moment = noon.addDays(state / 3).addSecs(state % 3);
            const QString name = u"/%1 %2.ZLT"_s.arg(state + 1, 6, 10, QChar(u'0'))
                                     .arg(moment.toString(u"yyyy-MM-dd HH-mm-ss-zzz"));
            QVERIFY(QFile::copy(first, folder + name));
        }
        desk.change(1);
        const QDateTime now = noon.addDays(400);
        desk.copies.keep(desk.a, now);
        QList<qint64> ages;
        for (const JobCopy& copy : desk.copies.copiesOf(desk.a))
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
        const CopyDesk desk;
        QVERIFY(QDir().mkdir(desk.path(u"altra"_s)));
        const QString other = desk.path(u"altra/A.ZLT"_s);
        const QString link = desk.path(u"LINK.ZLT"_s);
        QVERIFY(QFile::copy(desk.path(u"B.ZLT"_s), other));
        QVERIFY(QFile::link(desk.a, link));
        desk.change(1);
        changeJob(other, 2);
        for (const QString& job : {desk.a, other, link})
            desk.copies.keep(job);
        QCOMPARE(desk.copies.jobs(), QStringList({desk.a, other}));
        QCOMPARE(desk.kept(), u"1"_s);
        QCOMPARE(states(desk.copies, other), u"2"_s);
        const auto others =
            QFile::permissions(desk.copies.folder()) &
            (QFile::ReadGroup | QFile::ReadOther | QFile::ExeGroup | QFile::ExeOther);
        QCOMPARE(int(others), 0);
    }

    void whatIsListed()
    {
        const CopyDesk desk;
        QCOMPARE(desk.copies.jobs(), QStringList());
        desk.keepStates(1, 2);
        const QDir folder(desk.folderOfCopies());
        writeBytes(folder.filePath(u"mio.ZLT"_s), "mine");
        writeBytes(folder.filePath(u"000099 ieri.ZLT"_s), "mine, too");
        writeBytes(desk.copies.copiesOf(desk.a).back().path, "no database");
        const std::vector<JobCopy> listed = desk.copies.copiesOf(desk.a);
        QCOMPARE(listed.size(), 2U);
        QCOMPARE(listed.front().units, std::optional(1));
        QVERIFY(listed.front().size > 1000);
        QVERIFY(!listed.back().units);
        desk.keepStates(3, 14);
        QCOMPARE(bytesOf(folder.filePath(u"mio.ZLT"_s)), "mine");
    }

    void failureKeepsOldCopies()
    {
        const CopyDesk desk;
        desk.keepStates(1, 10);
        desk.change(11);
        {
            const DiskLimit full(8192);
            const int error = errorOf([&] { desk.copies.keep(desk.a); });
            QVERIFY2(error == 3026 || error == 3043, qPrintable(QString::number(error)));
        }
        QCOMPARE(desk.kept(), u"10 9 8 7 6 5 4 3 2 1"_s);
    }

    void openingWithoutCopy()
    {
        JobDesk desk;
        writeBytes(desk.copies.folder(), "a file in the folder's place");
        desk.jobs.openGiven(desk.a);
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
        const QString said = desk.carryOut(&JobFiles::RipristinaCopia, {u"~/di prima.1"_s});
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
        QVERIFY(QFile::remove(desk.a));
        desk.carryOut(&JobFiles::RipristinaCopia, {u"~/a"_s});
        QCOMPARE(desk.openJob(), u"~/a.ZLT"_s);
    }

    /// At opening, at closing if it was changed, before repair and deletion.
    void whenCopiesAreMade()
    {
        CopyDesk desk;
        desk.change(1);
        desk.open(u"A.ZLT"_s);
        desk.jobs.chiudiLavoro();
        QCOMPARE(desk.kept(), u"1"_s);
        desk.open(u"A.ZLT"_s);
        desk.jobs.job().JobDatabase().Execute(u"UPDATE ZELTO SET Utente='2'"_s);
        desk.open(u"B.ZLT"_s);
        QCOMPARE(desk.kept(), u"2 1"_s);
        desk.change(3);
        desk.carryOut(&JobFiles::RiparaArchivio, {desk.a});
        QCOMPARE(desk.kept(), u"3 2 1"_s);
        desk.change(4);
        desk.carryOut(&JobFiles::EliminaLavoro, {desk.a});
        QVERIFY(!QFile::exists(desk.a));
        QCOMPARE(desk.kept(), u"4 3 2 1"_s);
    }

    void copiesGoWithTheirJob()
    {
        CopyDesk desk;
        desk.open(u"B.ZLT"_s);
        desk.open(u"A.ZLT"_s);
        const QString folder = desk.folderOfCopies();
        desk.user.keeps = u"\t"_s;
        desk.user.hasTrash = false;
        QVERIFY(desk.carryOut(&JobFiles::EliminaLavoro, {desk.a})
                    .endsWith(u"è stato cancellato: non c'è un cestino che lo prenda."_s));
        QVERIFY(!QFile::exists(desk.a) && !QFile::exists(folder));
        QCOMPARE(desk.copies.jobs(), QStringList(desk.path(u"B.ZLT"_s)));
    }

    void refusedRestoring()
    {
        JobDesk desk;
        QVERIFY(desk.carryOut(&JobFiles::RipristinaCopia)
                    .startsWith(u"message: Non c'è ancora nessuna copia"));
        desk.open(u"A.ZLT"_s);
        const QStringList before = desk.folder.names();
        const auto refusal = [&](const QStringList& answers) {
            const QString said = desk.carryOut(&JobFiles::RipristinaCopia, answers);
            return desk.openJob() == u"~/A.ZLT" && desk.folder.names() == before
                       ? said.section(u'\n', -1).section(u',', 0, 0)
                       : u"not refused: "_s + said;
        };
        QCOMPARE(refusal({}), u"save: Indicare il nome del lavoro ripristinato"_s);
        QCOMPARE(refusal({u"~/b"_s}), u"report: 3204"_s);
        QCOMPARE(refusal({desk.a}), u"report: 3204"_s);
        QCOMPARE(refusal({u"~/none/x"_s}), u"report: 3024"_s);
        desk.user.copy = 9; // none is chosen
        QCOMPARE(refusal({}), u"copies: ~/A.ZLT"_s);
    }
};

ZELTO_TEST(TestJobCopies)
#include "tst_job_copies.moc"

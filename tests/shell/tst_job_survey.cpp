// SPDX-License-Identifier: GPL-3.0-or-later
#include "job_desk.h"
#include "shell/job_list.h"
#include "shell/job_survey.h"
#include "store/files/job_lock.h"
#include "support/runner.h"

#include <QDir>
#include <QSignalSpy>

#include <sys/stat.h>

using namespace zelto;
using namespace zelto::shell;
using namespace zelto::test;

class TestJobSurvey : public QObject
{
    Q_OBJECT

    /// "NAME units state" of every job that a survey finds, sorted.
    static QStringList survey(const QStringList& listed, const QString& folder)
    {
        JobSurvey survey(summaryOf);
        QSignalSpy finished(&survey, &JobSurvey::finished);
        QStringList jobs;
        connect(&survey, &JobSurvey::found, [&](const QList<JobSummary>& found) {
            for (const JobSummary& job : found)
                jobs << u"%1 %2 %3"_s.arg(store::nameOf(job.path))
                            .arg(job.units)
                            .arg(stateText(job.state))
                            .trimmed();
        });
        survey.start(listed, folder);
        if (finished.isEmpty() && !finished.wait())
            jobs << u"it does not end"_s;
        jobs.sort();
        return jobs;
    }

private slots:
    /// Every file is told for what it is, and left as it was; what is no file is not opened.
    void strangersFiles()
    {
        JobDesk desk;
        const auto link = [&](const QString& target, const QString& name) {
            QVERIFY(QFile::link(target, desk.path(name)));
        };
        QCOMPARE(::mkfifo(QFile::encodeName(desk.path(u"PIPE.ZLT"_s)).constData(), 0600), 0);
        QVERIFY(QDir(desk.folder.path()).mkdir(u"FOLDER.ZLT"_s));
        link(desk.a, u"link.zlt"_s);
        link(desk.path(u"PIPE.ZLT"_s), u"TOPIPE.ZLT"_s);
        link(desk.path(u"GONE"_s), u"DEAD.ZLT"_s);
        link(desk.path(u"LOOP.ZLT"_s), u"LOOP.ZLT"_s);
        writeBytes(desk.path(u"EMPTY.ZLT"_s), {});
        writeBytes(desk.path(u"NOTES.TXT"_s), "no job");
        writeBytes(desk.path(u"CUT.ZLT"_s), bytesOf(desk.folder.example()).first(20'000));
        const QString huge = desk.home.newJob(u"HUGE.ZLT"_s);
        QVERIFY(QFile::resize(huge, qint64{300} << 20));
        writeBytes(desk.folder.newJob(u"BROKEN.ZLT"_s) + u"-journal"_s, "a change");
        RawFile(desk.folder.newJob(u"FOREIGN.ZLT"_s)).run("DROP TABLE [Unità immobiliari]");
        RawFile writer(desk.folder.newJob(u"WRITTEN.ZLT"_s));
        writer.run("BEGIN EXCLUSIVE");
        const store::JobLock window(desk.path(u"B.ZLT"_s));
        const QMap<QString, QByteArray> before = desk.folder.contents();
        const QStringList expected{
            u"A.ZLT 1"_s,
            u"B.ZLT 1 aperto altrove"_s,
            u"BROKEN.ZLT -1 in uso"_s,
            u"CUT.ZLT -1 danneggiato"_s,
            u"EARLIER.ZLT 1"_s,
            u"EMPTY.ZLT -1 danneggiato"_s,
            u"FOREIGN.ZLT -1 danneggiato"_s,
            u"HUGE.ZLT -1 danneggiato"_s,
            u"JET.ZLT -1 edizione Windows"_s,
            u"LAVORO.ZLT 32"_s,
            u"OLD.ZLT 1 altro formato"_s,
            u"TEXT.ZLT -1 danneggiato"_s,
            u"WRITTEN.ZLT -1 in uso"_s,
            u"link.zlt 1"_s,
        };
        QCOMPARE(survey({huge}, desk.folder.path()), expected);
        QCOMPARE(desk.folder.contents(), before);
    }

    /// Listed jobs come once; a folder may have none or be gone.
    void places()
    {
        const JobFolder folder;
        const JobFolder other;
        const QString a = folder.newJob(u"A.ZLT"_s);
        const QString b = other.newJob(u"B.ZLT"_s);
        QCOMPARE(survey({}, {}), QStringList());
        QCOMPARE(survey({}, folder.file(u"gone"_s)), QStringList());
        QCOMPARE(survey({b, a, folder.file(u"GONE.ZLT"_s)}, folder.path()),
                 (QStringList{u"A.ZLT 1"_s, u"B.ZLT 1"_s}));
    }

    /// What vanishes under its feet ends it, and what stops it is obeyed.
    void ends()
    {
        JobDesk desk;
        int looks = 0;
        JobSurvey survey([&](const QString& path) {
            ++looks;
            QTest::qSleep(10); // so that every slice has one
            return summaryOf(path);
        });
        QSignalSpy found(&survey, &JobSurvey::found);
        QSignalSpy finished(&survey, &JobSurvey::finished);
        survey.start({}, desk.folder.path());
        QVERIFY(found.wait());
        QDir(desk.folder.path()).removeRecursively();
        QVERIFY(finished.wait());
        QVERIFY(looks < 6);
        QVERIFY(QDir().mkpath(desk.folder.path()));
        (void)desk.folder.newJob(u"A.ZLT"_s);
        looks = 0;
        survey.start({}, desk.folder.path());
        survey.stop();
        QTest::qWait(50);
        QCOMPARE(looks, 0);
    }

    /// Rows stay where they are over a second survey, but those that it does not find.
    void list()
    {
        JobSummary a{.path = u"/lavori/A.ZLT"_s};
        a.description = u"Condominio «Città Alta»"_s;
        a.date = QDate(2024, 3, 9);
        JobSummary b{.path = u"/altri/B.ZLT"_s};
        b.secondDescription = u"via Perù 12"_s;
        b.units = 40;
        b.state = JobState::WindowsEdition;
        JobList list;
        FoundJobs found;
        found.setSourceModel(&list);
        list.begin(u"/lavori"_s);
        list.add({a, b});
        list.end();
        const auto names = [&] {
            QStringList names;
            for (int row = 0; row < found.rowCount(); ++row)
                names << found.index(row, 0).data().toString();
            return names.join(u'|');
        };
        for (const auto& [text, jobs] :
             std::initializer_list<std::pair<QString, QString>>{{u""_s, u"A|B (/altri)"_s},
                                                                {u"citta"_s, u"A"_s},
                                                                {u"CITTÀ alta"_s, u"A"_s},
                                                                {u"09/03"_s, u"A"_s},
                                                                {u"peru 40"_s, u"B (/altri)"_s},
                                                                {u"windows"_s, u"B (/altri)"_s},
                                                                {u"citta peru"_s, u""_s}}) {
            found.search(text);
            QCOMPARE(names(), jobs);
        }
        found.search({});
        a.description.clear();
        list.begin(u"/altri"_s);
        list.add({b});
        QCOMPARE(found.rowCount(), 2);
        list.end();
        QCOMPARE(names(), u"B"_s);
        list.add({a});
        QCOMPARE(names(), u"B|A (/lavori)"_s);
    }

    /// A copy is opened under a name that is free, in whatever case the taken ones are.
    void example()
    {
        JobDesk desk;
        const QString delivered = desk.home.example(u"ESEMPIO.ZLT"_s);
        const QString folder = desk.path(u"documenti"_s);
        desk.jobs.openExample(delivered, folder);
        QCOMPARE(desk.openJob(), u"~/documenti/ESEMPIO.ZLT"_s);
        writeBytes(folder + u"/esempio 2.zlt"_s, "taken");
        desk.jobs.openExample(delivered, folder);
        QCOMPARE(desk.openJob(), u"~/documenti/ESEMPIO 3.ZLT"_s);
        QCOMPARE(bytesOf(folder + u"/esempio 2.zlt"_s), QByteArray("taken"));
    }
};

ZELTO_TEST(TestJobSurvey)
#include "tst_job_survey.moc"

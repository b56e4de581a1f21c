// SPDX-License-Identifier: GPL-3.0-or-later
// The printing command as its users start it.
#include "store/store_fixture.h"
#include "support/runner.h"

#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QScopeGuard>
#include <QTest>

#include <csignal>

using namespace Qt::StringLiterals;

using zelto::test::bytesOf;
using zelto::test::JobFolder;

namespace {

struct Result
{
    int status;
    QString out;
    QString errors;
};

Result run(const QStringList& arguments, const QString& program = QStringLiteral(PROGRAM))
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForFinished(120'000))
        qFatal("the program does not end");
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            QString::fromUtf8(process.readAllStandardOutput()),
            QString::fromUtf8(process.readAllStandardError())};
}

const QString example = QStringLiteral(EXAMPLE_JOB);

int pageCount(const QString& pdf)
{
    return static_cast<int>(bytesOf(pdf).count("/Type /Page\n"));
}

} // namespace

class TestZeltoStampa : public QObject
{
    Q_OBJECT

private slots:
    void printsTheExample()
    {
        const JobFolder folder;
        const QByteArray before = bytesOf(example);
        const Result result = run({example, u"--mostra"_s, u"-o"_s, folder.file(u"a.pdf"_s),
                                   u"-u"_s, folder.file(u"out"_s)});
        QCOMPARE(result.status, 0);
        QVERIFY2(result.errors.isEmpty(), qPrintable(result.errors));
        QVERIFY(result.out.startsWith(u"DETERMINAZIONE MILLESIMI GENERALI\n"));
        QCOMPARE(result.out.count(u"DETERMINAZIONE MILLESIMI"), 6);
        QVERIFY(pageCount(folder.file(u"a.pdf"_s)) >= 15);
        QVERIFY(bytesOf(folder.file(u"out/calcolo.out"_s)).contains("\r\n"));
        QVERIFY(!bytesOf(folder.file(u"out/consistenza.out"_s)).isEmpty());
        QVERIFY(!bytesOf(folder.file(u"out/scale.out"_s)).isEmpty());
        QCOMPARE(bytesOf(example), before);
    }

    /// Printed from the original, and from what the converter makes of it.
    void windowsEdition()
    {
        const JobFolder folder;
        const QString old = folder.file(u"VECCHIO.ZLT"_s);
        QVERIFY(QFile::copy(QStringLiteral(JET_FOLDER "/job-jet4.zlt"), old));
        const Result printed = run({old, u"--mostra"_s, u"-u"_s, folder.file(u"a"_s)});
        QCOMPARE(printed.status, 0);
        QVERIFY(printed.out.contains(u"int. 24 à"));
        // Printing tells the errors of the check and nothing else.
        const Result checked = run({u"--controllo"_s, old, example});
        QCOMPARE(checked.status, 3);
        QVERIFY2(checked.errors.isEmpty(), qPrintable(checked.errors));
        QVERIFY(checked.out.contains(example + u": nota: Variabili, "_s));
        QString errors;
        for (const QString& line : checked.out.split(u'\n'))
            if (line.startsWith(old + u": errore: "_s))
                errors += u"zelto-stampa: "_s + line + u'\n';
        QVERIFY(!errors.isEmpty());
        QCOMPARE(printed.errors, errors);
        QCOMPARE(run({u"--controllo"_s, example}).status, 0);
        QCOMPARE(run({u"--controllo"_s, old, folder.file(u"MANCA.ZLT"_s)}).status, 2);
        QCOMPARE(run({u"--controllo"_s, u"--mostra"_s, example}).status, 1);

        const QString converter = QStringLiteral(CONVERTER);
        const QString out = folder.file(u"nuovi"_s);
        const Result converted = run({u"-o"_s, out, old, example}, converter);
        QCOMPARE(converted.status, 2);
        QStringList lines = converted.out.split(u'\n');
        QCOMPARE(lines.size(), 3);
        const QString job = out + u"/VECCHIO convertito.ZLT"_s;
        const QString result = u"%1: convertito in «%2». Unità convertite: "_s.arg(old, job);
        QVERIFY2(lines[0].startsWith(result), qPrintable(lines[0]));
        QVERIFY2(lines[1].startsWith(example + u": non convertito"_s), qPrintable(lines[1]));
        QCOMPARE(run({job, u"--mostra"_s, u"-u"_s, folder.file(u"b"_s)}).out, printed.out);

        QCOMPARE(run({old}, converter).status, 0);
        QCOMPARE(run({old}, converter).status, 2);
        QCOMPARE(run({}, converter).status, 1);
        QCOMPARE(run({u"-x"_s, old}, converter).status, 1);
        QVERIFY(run({u"--help"_s}, converter).out.startsWith(u"Uso: zelto-converti"));
    }

    void writesOnlyWhatIsAskedFor()
    {
        const JobFolder folder;
        const Result result = run({example, u"--calcolo"_s, u"generali"_s, u"--sezioni"_s,
                                   u"calcolo"_s, u"-u"_s, folder.file(u"out"_s)});
        QCOMPARE(result.status, 0);
        QCOMPARE(folder.names(), QStringList{u"out"_s});
        QCOMPARE(QDir(folder.file(u"out"_s)).entryList(QDir::Files), QStringList{u"calcolo.out"_s});
    }

    void allocation()
    {
        const JobFolder folder;
        const QString pdf = folder.file(u"r.pdf"_s);
        QCOMPARE(run({example, u"--riparto"_s, u"12000,00"_s, u"--quote"_s, u"scala=A"_s,
                      u"--sezioni"_s, u"calcolo"_s, u"-o"_s, pdf, u"-u"_s, folder.file(u"u"_s)})
                     .status,
                 0);
        QCOMPARE(pageCount(pdf), 1);
        QVERIFY(QDir(folder.file(u"u"_s)).isEmpty());
        for (const QString& quote : {u"scala=Z"_s, u"tabella=9"_s}) {
            const Result refused = run({example, u"--riparto"_s, u"1"_s, u"--quote"_s, quote,
                                        u"-u"_s, folder.file(u"u"_s)});
            QCOMPARE(refused.status, 2);
            QVERIFY(refused.errors.contains(example));
        }
    }

    /// Jobs that cannot be read are named, the others printed.
    void severalJobs()
    {
        const JobFolder folder;
        const QString good = folder.newJob(u"BUONO.ZLT"_s);
        const QString garbage = folder.file(u"ROTTO.ZLT"_s);
        zelto::test::writeBytes(garbage, "no database at all");
        const QString otherVersion = folder.newJob(u"ALTRO.ZLT"_s);
        zelto::test::RawFile(otherVersion).run("UPDATE ZELTO SET Versione='2008'");

        const Result result = run({garbage, good, otherVersion, folder.file(u"MANCA.ZLT"_s),
                                   u"-o"_s, folder.file(u"pdf"_s), u"-u"_s, folder.file(u"out"_s)});
        QCOMPARE(result.status, 2);
        QCOMPARE(result.errors.count(u'\n'), 3);
        QVERIFY(result.errors.contains(
            otherVersion + u": Formato non compatibile, eseguire la conversione dell'archivio"_s));
        QCOMPARE(QDir(folder.file(u"pdf"_s)).entryList(QDir::Files), QStringList{u"BUONO.pdf"_s});
        QVERIFY(QFile::exists(folder.file(u"out/BUONO/scale.out"_s)));
    }

    void jobOfTheEarlierEdition()
    {
        const JobFolder folder;
        const QString job = folder.newJob();
        zelto::test::RawFile(job).run("DROP TABLE Variabili");
        QFile::setPermissions(job, QFile::ReadOwner);
        const QByteArray before = bytesOf(job);
        QCOMPARE(run({job, u"-u"_s, folder.file(u"out"_s)}).status, 0);
        QCOMPARE(bytesOf(job), before);
    }

    /// Names that are nothing but an extension lead neither upwards nor to each other.
    void oddNames()
    {
        const JobFolder folder;
        const QStringList names{u"...ZLT"_s, u"..ZLT"_s, u".ZLT"_s};
        QStringList jobs;
        for (const QString& name : names)
            jobs << folder.newJob(name);
        const QString out = folder.file(u"out"_s);
        const qsizetype before = folder.names().size();
        QCOMPARE(run(jobs + QStringList{u"-u"_s, out, u"-o"_s, out}).status, 0);
        QCOMPARE(folder.names().size(), before + 1);
        for (const QString& name : names) {
            QVERIFY(QFile::exists(out + u'/' + name + u"/calcolo.out"_s));
            QVERIFY(QFile::exists(out + u'/' + name + u".pdf"_s));
        }
        // A folder that somebody put there, and the job itself.
        QVERIFY(QDir(out + u"/...ZLT"_s).removeRecursively());
        QVERIFY(QFile::link(folder.file(u"."_s), out + u"/...ZLT"_s));
        QCOMPARE(run(jobs + QStringList{u"-u"_s, out}).status, 2);
        const QByteArray job = bytesOf(jobs[0]);
        QCOMPARE(run({jobs[0], u"-u"_s, out, u"-o"_s, jobs[0]}).status, 2);
        QCOMPARE(bytesOf(jobs[0]), job);
        QVERIFY(!QFile::exists(folder.file(u"calcolo.out"_s)));
        // One output in another's place.
        const QString same = folder.file(u"x.pdf"_s);
        QCOMPARE(run({jobs[0], u"-u"_s, out, u"-o"_s, same, u"--xlsx"_s, same}).status, 2);
        QCOMPARE(run({jobs[0], u"-u"_s, out, u"-o"_s, out + u"/../out/scale.out"_s}).status, 2);
        QVERIFY(!QFile::exists(same));
    }

    void whatCannotBeSaid()
    {
        const JobFolder folder;
        for (const auto& [program, arguments] :
             {std::pair(QStringLiteral(PROGRAM), QStringList{u"--help"_s}),
              std::pair(QStringLiteral(PROGRAM),
                        QStringList{example, u"--mostra"_s, u"-u"_s, folder.file(u"out"_s)}),
              std::pair(QStringLiteral(CONVERTER), QStringList{example})}) {
            QProcess process;
            process.setStandardOutputFile(u"/dev/full"_s);
            process.start(program, arguments);
            QVERIFY(process.waitForFinished());
            QCOMPARE(process.exitCode(), 2);
            const QString said = QString::fromUtf8(process.readAllStandardError());
            QVERIFY(said.startsWith(QFileInfo(program).fileName() + u": "_s));
            QVERIFY2(said.contains(u"spazio su disco esaurito"), qPrintable(said));
        }
    }

    void ended_data()
    {
        QTest::addColumn<int>("signal");
        QTest::addRow("SIGTERM") << SIGTERM;
        QTest::addRow("Ctrl+C") << SIGINT;
        QTest::addRow("SIGKILL") << SIGKILL;
    }

    /// Pages with people's figures do not stay: at the latest the next command removes them.
    void ended()
    {
        QFETCH(int, signal);
        const JobFolder folder;
        const QString temp = folder.file(u"temp"_s);
        QVERIFY(QDir().mkdir(temp));
        qputenv("TEMP", QFile::encodeName(temp));
        [[maybe_unused]] const auto restoring = qScopeGuard([] { qunsetenv("TEMP"); });
        const auto pages = [&] {
            return QDirIterator(temp, {u"~VKM0000.Tmp"_s}, QDir::Files | QDir::Hidden,
                                QDirIterator::Subdirectories)
                .hasNext();
        };
        QStringList jobs;
        for (int i = 0; i < 40; ++i) {
            jobs << folder.file(u"J%1.ZLT"_s.arg(i));
            QVERIFY(QFile::copy(example, jobs.back()));
        }
        QProcess process;
        process.setChildProcessModifier([] { std::signal(SIGINT, SIG_DFL); });
        process.start(QStringLiteral(PROGRAM), jobs + QStringList{u"-u"_s, folder.file(u"out"_s)});
        QVERIFY(process.waitForStarted());
        while (!pages() && process.state() == QProcess::Running)
            QTest::qSleep(1);
        ::kill(static_cast<pid_t>(process.processId()), signal);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        const auto everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        if (signal != SIGKILL)
            QVERIFY(QDir(temp).isEmpty(everything));
        QCOMPARE(run({jobs[0], u"-u"_s, folder.file(u"out"_s)}).status, 0);
        QVERIFY(QDir(temp).isEmpty(everything));
    }

    void failuresKeepOlderFiles()
    {
        const JobFolder folder;
        const QString pdf = folder.file(u"a.pdf"_s);
        zelto::test::writeBytes(pdf, "old");
        const QString job = folder.newJob();
        zelto::test::RawFile(job).run(
            "UPDATE Vani SET [Consistenza reale]='9E37', Destinazione='9E9'");
        QCOMPARE(run({job, u"-o"_s, pdf, u"-u"_s, folder.file(u"out"_s)}).status, 2);
        QCOMPARE(bytesOf(pdf), QByteArray("old"));
    }

    void wrongUsage()
    {
        const Result result = run({u"--formato"_s, u"grande"_s, example});
        QCOMPARE(result.status, 1);
        QVERIFY(result.errors.contains(u"grande"));
        QVERIFY(run({u"--help"_s}).out.startsWith(u"Uso: zelto-stampa"));
        QCOMPARE(run({u"--version"_s}).status, 0);
    }
};

ZELTO_TEST(TestZeltoStampa)
#include "tst_zelto_stampa.moc"

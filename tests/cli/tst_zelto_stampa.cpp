// SPDX-License-Identifier: GPL-3.0-or-later
// The printing command as its users start it.
#include "support/pdf_file.h"
#include "support/runner.h"

#include <QDir>
#include <QDirIterator>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <cstring>

using namespace Qt::StringLiterals;
using namespace zelto::test;

namespace {

struct Result
{
    int status;
    QString out;
    QString errors;
};

const QString Program = QStringLiteral(PROGRAM);
const QString Converter = QStringLiteral(CONVERTER);

/// A folder in which commands are run, with the example in it.
class Desk : public JobFolder
{
public:
    Desk() { writeBytes(file(u"ES.ZLT"_s), bytesOf(QStringLiteral(EXAMPLE_JOB))); }

    /// Arguments are separated by blanks; one with blanks stands in quotes.
    [[nodiscard]] Result run(const QString& arguments, const QString& program = Program,
                             const QString& outputFile = {}) const
    {
        QProcess process;
        process.setWorkingDirectory(file({}));
        process.setStandardOutputFile(outputFile);
        process.start(program, QProcess::splitCommand(arguments));
        if (!process.waitForFinished(120'000))
            qFatal("the program does not end");
        return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
                QString::fromUtf8(process.readAllStandardOutput()),
                QString::fromUtf8(process.readAllStandardError())};
    }
    [[nodiscard]] QByteArray bytes(const QString& name) const { return bytesOf(file(name)); }
    [[nodiscard]] QStringList filesIn(const QString& folder) const
    {
        return QDir(file(folder)).entryList(QDir::Files);
    }
    [[nodiscard]] qsizetype pagesOf(const QString& pdf) const
    {
        return PdfFile(file(pdf)).labels().size();
    }
};

} // namespace

class TestZeltoStampa : public QObject
{
    Q_OBJECT

private slots:
    void printsTheExample()
    {
        const Desk desk;
        const Result result = desk.run(u"ES.ZLT --mostra -o a.pdf -u out"_s);
        QCOMPARE(result.status, 0);
        QCOMPARE(result.errors, QString());
        QVERIFY(result.out.startsWith(u"DETERMINAZIONE MILLESIMI GENERALI\n"));
        QCOMPARE(result.out.count(u"DETERMINAZIONE MILLESIMI"), 6);
        QVERIFY(desk.pagesOf(u"a.pdf"_s) >= 15);
        QCOMPARE(desk.filesIn(u"out"_s).size(), 3);
        QCOMPARE(desk.bytes(u"ES.ZLT"_s), bytesOf(QStringLiteral(EXAMPLE_JOB)));
    }

    /// Printed from the original, and from what the converter makes of it.
    void windowsEdition()
    {
        const Desk desk;
        QVERIFY(QFile::copy(QStringLiteral(JET_FOLDER "/job-jet4.zlt"), desk.file(u"A.ZLT"_s)));
        const Result printed = desk.run(u"A.ZLT --mostra -u a"_s);
        QCOMPARE(printed.status, 0);
        QVERIFY(printed.out.contains(u"int. 24 à"));
        // Printing tells the errors of the check and nothing else.
        const Result checked = desk.run(u"--controllo A.ZLT ES.ZLT"_s);
        QCOMPARE(checked.status, 3);
        QCOMPARE(checked.errors, QString());
        QVERIFY(checked.out.contains(u"\nES.ZLT: nota: Variabili, "));
        QString errors;
        for (const QString& line : checked.out.split(u'\n'))
            if (line.startsWith(u"A.ZLT: errore: "))
                errors += u"zelto-stampa: "_s + line + u'\n';
        QVERIFY(!errors.isEmpty());
        QCOMPARE(printed.errors, errors);
        const Result sound = desk.run(u"--controllo ES.ZLT"_s);
        QCOMPARE(sound.status, 0);
        QCOMPARE(sound.out.count(u"\n"_s), sound.out.count(u"ES.ZLT: nota: "_s));
        QCOMPARE(desk.run(u"--controllo A.ZLT MANCA.ZLT"_s).status, 2);
        QCOMPARE(desk.run(u"--controllo --mostra ES.ZLT"_s).status, 1);

        const Result converted = desk.run(u"-o nuovi A.ZLT ES.ZLT"_s, Converter);
        QCOMPARE(converted.status, 2);
        const QStringList lines = converted.out.split(u'\n');
        QCOMPARE(lines.size(), 3);
        const QString job = u"nuovi/A convertito.ZLT"_s;
        QVERIFY(lines[0].startsWith(u"A.ZLT: convertito in «%1». Unità convertite: "_s.arg(job)));
        QVERIFY(lines[1].startsWith(u"ES.ZLT: non convertito"));
        QCOMPARE(desk.run(u"\"%1\" --mostra -u b"_s.arg(job)).out, printed.out);

        QCOMPARE(desk.run(u"A.ZLT"_s, Converter).status, 0);
        QCOMPARE(desk.run(u"A.ZLT"_s, Converter).status, 2);
        QCOMPARE(desk.run({}, Converter).status, 1);
        QCOMPARE(desk.run(u"-x A.ZLT"_s, Converter).status, 1);
        QVERIFY(desk.run(u"--help"_s, Converter).out.startsWith(u"Uso: zelto-converti"));
    }

    void writesOnlyWhatIsAskedFor()
    {
        const Desk desk;
        QCOMPARE(desk.run(u"ES.ZLT --calcolo generali --sezioni calcolo -u out"_s).status, 0);
        QCOMPARE(desk.names(), (QStringList{u"ES.ZLT"_s, u"out"_s}));
        QCOMPARE(desk.filesIn(u"out"_s), QStringList{u"calcolo.out"_s});
    }

    void allocation()
    {
        const Desk desk;
        const QString riparto = u"ES.ZLT -u u --sezioni calcolo --riparto "_s;
        QCOMPARE(desk.run(riparto + u"12000,00 --quote scala=A -o r.pdf"_s).status, 0);
        QCOMPARE(desk.pagesOf(u"r.pdf"_s), 1);
        QVERIFY(QDir(desk.file(u"u"_s)).isEmpty());
        for (const QString& quote : {u"scala=Z"_s, u"tabella=9"_s}) {
            const Result refused = desk.run(riparto + u"1 --quote "_s + quote);
            QCOMPARE(refused.status, 2);
            QVERIFY(refused.errors.contains(u"ES.ZLT"));
        }
    }

    void sheetsOfTheUnits()
    {
        const Desk desk;
        QVERIFY(QFile::copy(desk.file(u"ES.ZLT"_s), desk.file(u"B.ZLT"_s)));
        QCOMPARE(desk.run(u"ES.ZLT B.ZLT -u u --schede s --riparto 100"_s).status, 0);
        for (const QString& folder : {u"s/ES"_s, u"s/B"_s}) {
            QCOMPARE(desk.filesIn(folder).size(), 32);
            QCOMPARE(desk.pagesOf(folder + u"/008 A-3 - Dalmasi.pdf"_s), 1);
        }
        QCOMPARE(desk.run(u"ES.ZLT -u u --sezioni schede -o s.pdf"_s).status, 0);
        QCOMPARE(desk.pagesOf(u"s.pdf"_s), 32);
        (void)desk.newJob(u"VUOTO.ZLT"_s);
        RawFile(desk.file(u"VUOTO.ZLT"_s)).run("DELETE FROM [Unità immobiliari]");
        const Result refused = desk.run(u"VUOTO.ZLT -u u --schede vuoto"_s);
        QCOMPARE(refused.status, 2);
        QVERIFY(refused.errors.contains(u"nessuna unità"));
    }

    /// Jobs that cannot be read are named, the others printed.
    void severalJobs()
    {
        const Desk desk;
        writeBytes(desk.file(u"ROTTO.ZLT"_s), "no database at all");
        RawFile(desk.newJob(u"ALTRO.ZLT"_s)).run("UPDATE ZELTO SET Versione='2008'");
        const Result result = desk.run(u"ROTTO.ZLT ES.ZLT ALTRO.ZLT MANCA.ZLT -o pdf -u out"_s);
        QCOMPARE(result.status, 2);
        QCOMPARE(result.errors.count(u'\n'), 3);
        QVERIFY(result.errors.contains(u"ALTRO.ZLT: Formato non compatibile, eseguire la "
                                       "conversione dell'archivio"));
        QCOMPARE(desk.filesIn(u"pdf"_s), QStringList{u"ES.pdf"_s});
        QVERIFY(QFile::exists(desk.file(u"out/ES/scale.out"_s)));
    }

    /// The name of another job behind -o, and jobs named like an output.
    void noJobIsReplaced()
    {
        const std::vector<std::pair<QString, QString>> cases{
            {u"ALTRO.ZLT"_s, u"-o ALTRO.ZLT"_s},
            {u"ALTRO.ZLT"_s, u"--xlsx ALTRO.ZLT"_s},
            {u"t/Scala A.csv"_s, u"--csv t"_s},
            {u"u/calcolo.out"_s, u"-u u"_s},
            {u"s/001 Negozio 1 - Panificio.pdf"_s, u"--schede s"_s},
        };
        for (const auto& [job, output] : cases) {
            const Desk desk;
            QVERIFY(QDir(desk.file({})).mkpath(QFileInfo(desk.file(job)).path()));
            writeBytes(desk.file(job), desk.bytes(u"ES.ZLT"_s));
            const Result result = desk.run(output + u" ES.ZLT"_s);
            QCOMPARE(result.status, 2);
            QVERIFY2(result.errors.contains(u"è un lavoro e non viene sostituito"_s),
                     qPrintable(result.errors));
            QCOMPARE(desk.bytes(job), desk.bytes(u"ES.ZLT"_s));
        }
    }

    void jobOfTheEarlierEdition()
    {
        const Desk desk;
        const QString job = desk.newJob();
        RawFile(job).run("DROP TABLE Variabili");
        QFile::setPermissions(job, QFile::ReadOwner);
        const QByteArray before = bytesOf(job);
        QCOMPARE(desk.run(u"LAVORO.ZLT -u out"_s).status, 0);
        QCOMPARE(bytesOf(job), before);
    }

    /// Names that are nothing but an extension lead neither upwards nor to each other.
    void oddNames()
    {
        const Desk desk;
        const QStringList names{u"...ZLT"_s, u"..ZLT"_s, u".ZLT"_s};
        for (const QString& name : names)
            (void)desk.newJob(name);
        const qsizetype before = desk.names().size();
        QCOMPARE(desk.run(u"...ZLT ..ZLT .ZLT -u out -o out"_s).status, 0);
        QCOMPARE(desk.names().size(), before + 1);
        for (const QString& name : names) {
            QVERIFY(QFile::exists(desk.file(u"out/%1/calcolo.out"_s.arg(name))));
            QVERIFY(QFile::exists(desk.file(u"out/%1.pdf"_s.arg(name))));
        }
        // A folder that somebody put there, and the job itself.
        const QString own = desk.file(u"out/...ZLT"_s);
        QVERIFY(QDir(own).removeRecursively());
        QVERIFY(QFile::link(desk.file(u"."_s), own));
        QCOMPARE(desk.run(u"...ZLT ..ZLT .ZLT -u out"_s).status, 2);
        const QByteArray job = desk.bytes(u"...ZLT"_s);
        QCOMPARE(desk.run(u"...ZLT -u out -o ...ZLT"_s).status, 2);
        QCOMPARE(desk.bytes(u"...ZLT"_s), job);
        QVERIFY(!QFile::exists(desk.file(u"calcolo.out"_s)));
        // One output in another's place.
        QCOMPARE(desk.run(u"...ZLT -u out -o x.pdf --xlsx x.pdf"_s).status, 2);
        QCOMPARE(desk.run(u"...ZLT -u out -o out/../out/scale.out"_s).status, 2);
        QVERIFY(!QFile::exists(desk.file(u"x.pdf"_s)));
    }

    void whatCannotBeSaid()
    {
        const Desk desk;
        for (const auto& [program, arguments] : {std::pair(Program, u"--help"_s),
                                                 {Program, u"ES.ZLT --mostra -u out"_s},
                                                 {Converter, u"ES.ZLT"_s}}) {
            const Result result = desk.run(arguments, program, u"/dev/full"_s);
            QCOMPARE(result.status, 2);
            QVERIFY(result.errors.startsWith(QFileInfo(program).fileName() + u": "_s));
            QVERIFY2(result.errors.contains(u"spazio su disco esaurito"),
                     qPrintable(result.errors));
        }
    }

    void ended_data()
    {
        QTest::addColumn<int>("signal");
        for (const int signal : {SIGTERM, SIGINT, SIGKILL})
            QTest::addRow("%s", strsignal(signal)) << signal;
    }

    /// Pages with people's figures do not stay: at the latest the next command removes them.
    void ended()
    {
        QFETCH(int, signal);
        const Desk desk;
        const QString temp = desk.file(u"temp"_s);
        QVERIFY(QDir().mkdir(temp));
        qputenv("TEMP", QFile::encodeName(temp));
        [[maybe_unused]] const auto restoring = qScopeGuard([] { qunsetenv("TEMP"); });
        const auto pages = [&] {
            return QDirIterator(temp, {u"~VKM0000.Tmp"_s}, QDir::Files | QDir::Hidden,
                                QDirIterator::Subdirectories)
                .hasNext();
        };
        QStringList arguments{u"-u"_s, u"out"_s};
        for (int i = 0; i < 40; ++i) {
            arguments << u"J%1.ZLT"_s.arg(i);
            QVERIFY(QFile::copy(desk.file(u"ES.ZLT"_s), desk.file(arguments.back())));
        }
        QProcess process;
        process.setWorkingDirectory(desk.file({}));
        process.setChildProcessModifier([] { std::signal(SIGINT, SIG_DFL); });
        process.start(Program, arguments);
        QVERIFY(process.waitForStarted());
        while (!pages() && process.state() == QProcess::Running)
            QTest::qSleep(1);
        ::kill(static_cast<pid_t>(process.processId()), signal);
        QVERIFY(process.waitForFinished());
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        const auto everything = QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot;
        if (signal != SIGKILL)
            QVERIFY(QDir(temp).isEmpty(everything));
        QCOMPARE(desk.run(u"ES.ZLT -u out"_s).status, 0);
        QVERIFY(QDir(temp).isEmpty(everything));
    }

    void wrongUsage()
    {
        const Desk desk;
        const Result result = desk.run(u"--formato grande ES.ZLT"_s);
        QCOMPARE(result.status, 1);
        QVERIFY(result.errors.contains(u"grande"));
        QVERIFY(desk.run(u"--help"_s).out.startsWith(u"Uso: zelto-stampa"));
        QCOMPARE(desk.run(u"--version"_s).status, 0);
    }
};

ZELTO_TEST(TestZeltoStampa)
#include "tst_zelto_stampa.moc"

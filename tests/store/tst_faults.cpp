// SPDX-License-Identifier: GPL-3.0-or-later
// Operations on jobs in which the n-th write, sync, truncation, rename or deletion fails or is the
// last: every file is then whole, as it was or as it is to be.
#include "coefficients/job_texts.h"
#include "register/register.h"
#include "store/file_operations.h"
#include "store/jet/conversion.h"
#include "store/recovery/repair.h"
#include "store_fixture.h"
#include "support/dump.h"
#include "support/runner.h"
#include "system_faults.h"

#include <algorithm>
#include <functional>
#include <sys/mman.h>
#include <sys/wait.h>

using namespace zelto;
using namespace zelto::store;
using namespace zelto::test;

namespace {

/// Something done with the job at the path.
using Operation = std::function<void(const QString&)>;

QString beside(const QString& job, QStringView name)
{
    return QFileInfo(job).dir().filePath(name.toString());
}

/// What a file holds: its records, or its bytes when it is no job that opens.
QByteArray stateOf(const QString& path)
{
    try {
        Database job = Database::open(path, OpenMode::ReadOnly);
        return dumpOf(job).toUtf8();
    } catch (const DatabaseError&) {
        return bytesOf(path);
    }
}

QMap<QString, QByteArray> statesIn(const JobFolder& folder)
{
    QMap<QString, QByteArray> states;
    for (const QString& name : folder.names())
        if (!name.startsWith(u".zelto-") && !name.endsWith(u"-journal"))
            states[name] = stateOf(folder.file(name));
    return states;
}

/// How a process of its own ended; refused with an error that the user can read.
enum class End { Done, Refused, Killed, Wrong };

/// How many calls the last such process made.
int* const callsApart = static_cast<int*>(
    mmap(nullptr, sizeof(int), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));

End runApart(const Operation& operation, const QString& job, int faultyCall, Fault fault)
{
    const pid_t process = fork();
    if (process == 0) {
        End end = End::Done;
        // Private copies that stay behind go with the folder.
        const QString passing = beside(job, u".zelto-tmp");
        QDir().mkdir(passing);
        qputenv("TMPDIR", QFile::encodeName(passing));
        systemFaults = {.call = faultyCall, .fault = fault};
        try {
            operation(job);
        } catch (const DatabaseError&) {
            end = End::Refused;
        }
        *callsApart = systemFaults.callsSoFar;
        _exit(static_cast<int>(end));
    }
    int status = 0;
    waitpid(process, &status, 0);
    if (WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL)
        return End::Killed;
    return WIFEXITED(status) ? static_cast<End>(WEXITSTATUS(status)) : End::Wrong;
}

/// An operation that frees the job's name for a moment, in which the backup bears the job.
constexpr const char* PlainRenames = "compact, plain renames";

/// The job in the midst of a change that was broken off.
void interrupt(const QString& job)
{
    const QString crashed = job + u"-crashed"_s;
    copyInterrupted(job, "UPDATE Variabili SET Var0 = hex(zeroblob(20000))", crashed);
    QVERIFY(QFile::remove(job) && QFile::rename(crashed, job));
    QVERIFY(QFile::rename(crashed + u"-journal"_s, job + u"-journal"_s));
}

} // namespace

class TestFaults : public QObject
{
    Q_OBJECT

private slots:
    /// In memory: thousands of syncs would take their time on a disk.
    void initTestCase()
    {
        if (QFileInfo::exists(u"/dev/shm"_s))
            qputenv("TMPDIR", "/dev/shm");
    }

    void wholeAfterFault_data()
    {
        QTest::addColumn<Operation>("prepare");
        QTest::addColumn<Operation>("operation");
        const auto row = [](
                             const char* name, const Operation& operation,
                             const Operation& prepare = [](const QString& /*job*/) {}) {
            QTest::newRow(name) << prepare << operation;
        };
        row("new", [](const QString& job) { createJobFile(beside(job, u"NUOVO.ZLT")); });
        row("duplicate, restore",
            [](const QString& job) { copyDatabase(job, beside(job, u"COPIA.ZLT")); });
        row("compact", [](const QString& job) { compact(job, beside(job, u"LAVORO.BAK")); });
        row(PlainRenames, [](const QString& job) {
            systemFaults.plainRenamesOnly = true;
            compact(job, beside(job, u"LAVORO.BAK"));
        });
        row("delete",
            [](const QString& job) { deleteFile(job, [](const QString&) { return false; }); });
        row("repair", [](const QString& job) { repair(job); });
        row(
            "repair of foreign tables", [](const QString& job) { repair(job); },
            [](const QString& job) { RawFile(job).run("CREATE INDEX i ON Vani (Ambiente)"); });
        row("convert", [](const QString& job) {
            jet::convertJob(QStringLiteral(JET_FOLDER "/job-jet3.zlt"), beside(job, u"NUOVO.ZLT"),
                            [](Database& /*made*/) {});
        });
        row("cell", [](const QString& job) {
            Database database = Database::open(job);
            registro::Register(database).MemorizzaVano(7,
                                                       {{1, registro::RoomAmbiente, u"Camera"_s}});
        });
        row("units moved", [](const QString& job) {
            Database database = Database::open(job);
            registro::Register(database).ScambiaUI({{6, 7}, {7, 8}});
        });
        row("Applica", [](const QString& job) {
            Database database = Database::open(job);
            const coefficients::JobTexts loaded =
                coefficients::loadTexts(database, TabellaVariabili);
            coefficients::JobTexts groups = loaded;
            groups[u"Var0"_s] = QString(20'000, u'x');
            coefficients::saveTexts(database, TabellaVariabili, groups, loaded);
        });
        row(
            "open after an interruption", [](const QString& job) { (void)Database::open(job); },
            interrupt);
    }

    void wholeAfterFault()
    {
        QFETCH(Operation, prepare);
        QFETCH(Operation, operation);
        const QString job = u"LAVORO.ZLT"_s;
        const JobFolder sound;
        prepare(sound.example());
        const auto before = statesIn(sound);
        QCOMPARE(runApart(operation, sound.file(job), -1, Fault::Once), End::Done);
        const int calls = *callsApart;
        const auto after = statesIn(sound);
        QVERIFY(calls > 0);

        // All of them in the long form.
        constexpr int Sample = 16;
        const int step = qEnvironmentVariableIsSet("ZELTO_KILLS") ? 1 : std::max(1, calls / Sample);
        for (const Fault fault : {Fault::Once, Fault::ForGood, Fault::Kill})
            for (int call = 1; call <= calls; call += step) {
                const JobFolder folder;
                prepare(folder.example());
                const End end = runApart(operation, folder.file(job), call, fault);
                const QString place = u"fault %1 at call %2 of %3: "_s.arg(static_cast<int>(fault))
                                          .arg(call)
                                          .arg(calls);
                QVERIFY2(fault == Fault::Kill ? end == End::Killed
                                              : end == End::Done || end == End::Refused,
                         qPrintable(place));
                auto now = statesIn(folder);
                if (!now.contains(job) && QTest::currentDataTag() == QByteArray(PlainRenames))
                    now[job] = now.take(u"LAVORO.BAK"_s);
                for (const QString& name : now.keys() + before.keys()) {
                    const QByteArray state = now.value(name, "none");
                    QVERIFY2(before.value(name, "none") == state ||
                                 after.value(name, "none") == state,
                             qPrintable(place + name));
                }
                QVERIFY2(end != End::Done || now == after, qPrintable(place + u"done"_s));
            }
        qInfo("%d calls that change files", calls);
    }
};

ZELTO_TEST(TestFaults)
#include "tst_faults.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/jet/jet_file.h"
#include "store_fixture.h"
#include "support/columns.h"
#include "support/runner.h"

#include <QSemaphore>
#include <QThread>

#include <fcntl.h>
#include <functional>
#include <numeric>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

namespace {

/// Makes something unfit out of a fresh job's path.
using Tampering = std::function<void(const QString&)>;

Tampering sql(const QByteArray& statements)
{
    return [statements](const QString& path) { RawFile(path).run(statements); };
}

Tampering bytes(const std::function<QByteArray(QByteArray)>& change)
{
    return [change](const QString& path) { writeBytes(path, change(bytesOf(path))); };
}

/// Puts a file beside the job.
Tampering beside(const QString& suffix, const QByteArray& content)
{
    return [suffix, content](const QString& path) { writeBytes(path + suffix, content); };
}

void makePipe(const QString& path)
{
    QCOMPARE(mkfifo(QFile::encodeName(path).constData(), 0600), 0);
}

const QString Journal = u"-journal"_s;
const QByteArray JournalMagic = QByteArray::fromHex("d9d505f920a163d7");

/// A journal with a head and the record by which changes of several files are undone together.
QByteArray journalNaming(const QByteArray& name)
{
    QByteArray head = JournalMagic + QByteArray(504, '\0');
    const auto number = [](qsizetype value) {
        return QByteArray::fromHex(QByteArray::number(value, 16).rightJustified(8, '0'));
    };
    return head + number(1) + name + number(name.size()) +
           number(std::accumulate(name.begin(), name.end(), 0)) + JournalMagic;
}

/// Whether somebody holds the engine's lock; this process lets go of it in asking.
bool isLocked(const QString& path)
{
    constexpr off_t LockBytes = 0x40000000;
    struct flock lock = {
        .l_type = F_WRLCK, .l_whence = SEEK_SET, .l_start = LockBytes, .l_len = 512, .l_pid = 0};
    const int file = ::open(QFile::encodeName(path).constData(), O_RDWR);
    fcntl(file, F_OFD_GETLK, &lock);
    ::close(file);
    return lock.l_type != F_UNLCK;
}

Tampering instead(const std::function<void(const QString&)>& make)
{
    return [make](const QString& path) {
        QFile::remove(path);
        make(path);
    };
}

} // namespace

class TestDatabaseFile : public QObject
{
    Q_OBJECT

private slots:
    void createdFile()
    {
        const JobFolder folder;
        // Characters that mean something in a URI or to the engine.
        const QString name = u"file:è ?mode=memory&%41.ZLT"_s;
        const QString path = folder.newJob(name);
        QCOMPARE(folder.names(), QStringList{name});
        QCOMPARE(bytesOf(path).mid(68, 4), "ZLT9");
        QCOMPARE(Database::open(path).path(), path);
    }

    void createRefuses()
    {
        const JobFolder folder;
        writeBytes(folder.file(u"file"_s), "precious");
        QVERIFY(QDir().mkdir(folder.file(u"folder"_s)));
        QVERIFY(QFile::link(folder.file(u"nowhere"_s), folder.file(u"link"_s)));
        const auto before = folder.contents();
        for (const auto& [name, error] : {std::pair(u"file"_s, 3204),
                                          {u"folder"_s, 3204},
                                          {u"link"_s, 3204},
                                          {u"file/x.ZLT"_s, 3051},
                                          {u"none/x.ZLT"_s, 3051}}) {
            const QString path = folder.file(name);
            QCOMPARE(errorOf([&] { Database::create(path); }), error);
        }
        QCOMPARE(folder.contents(), before);
    }

    void unfitFiles_data()
    {
        const auto row = columns<int, Tampering>("error", "tamper");
        row("missing", 3024, instead([](const QString&) {}));
        row("folder", 3051, instead([](const QString& path) { QDir().mkdir(path); }));
        row("pipe", 3051, instead(makePipe));
        row("too large", 3049, [](const QString& path) { QFile::resize(path, 257 << 20); });
        row("empty", 3343, bytes([](const QByteArray&) { return QByteArray(); }));
        row("text", 3343, bytes([](const QByteArray&) { return QByteArray(5000, 'x'); }));
        row("header cut", 3343, bytes([](const QByteArray& all) { return all.left(60); }));
        row("cut in the middle", 3049,
            bytes([](const QByteArray& all) { return all.left(all.size() / 2); }));
        row("page overwritten", 3049, bytes([](QByteArray all) {
                return all.replace(4096, 4096, QByteArray(4096, '\xff'));
            }));
        row("WAL", 3343, sql("PRAGMA journal_mode=WAL"));
        row("view", 3343, sql("CREATE VIEW v AS SELECT 1"));
        row("trigger", 3343,
            sql("CREATE TRIGGER t AFTER INSERT ON Vani BEGIN DELETE FROM Vani; END"));
        row("virtual table", 3343, sql("CREATE VIRTUAL TABLE v USING fts5(x)"));
        row("WAL beside it", 3343, beside(u"-wal"_s, "x"));
        row("journal naming a file", 3343, beside(Journal, journalNaming("NOTE.TXT")));
        row("nothing but the name", 3343, beside(Journal, journalNaming("NOTE.TXT").mid(512)));
        for (const QByteArray pageSize : {"00001000", "00000000"}) // of a large file's journal
            row(pageSize, 3049,
                beside(Journal, JournalMagic + QByteArray::fromHex(
                                                   "000000000000000000ffffff00000200" + pageSize)));
        row("journal is a pipe", 3051, [](const QString& path) { makePipe(path + Journal); });
        row("journal is a link", 3051,
            [](const QString& path) { QFile::link(u"NOTE.TXT"_s, path + Journal); });
        const QByteArray slow = "(instr(hex(zeroblob(4000000)), hex(zeroblob(1000000)) || a))";
        row("foreign condition", 3343, sql("CREATE TABLE x (a CHECK " + slow + ")"));
        row("foreign computed column", 3343, sql("CREATE TABLE x (a, b AS " + slow + ")"));
        row("foreign index on an expression", 3343,
            sql("CREATE TABLE x (a); CREATE INDEX i ON x (instr(a, 'x'))"));
        row("foreign index on a part", 3343,
            sql("CREATE TABLE x (a); CREATE INDEX i ON x (a) WHERE a > 1"));
        row("condition of its own", 3049,
            sql("DROP TABLE Variabili; CREATE TABLE Variabili (Var0, a CHECK " + slow + ")"));
        row("index of its own", 3049, sql("CREATE INDEX i ON Vani (Ambiente)"));
        row("broken schema", 3049,
            sql("PRAGMA writable_schema=ON;"
                "UPDATE sqlite_schema SET sql='CREATE TABLE Vani(' WHERE name='Vani'"));
    }

    void unfitFiles()
    {
        QFETCH(Tampering, tamper);
        const JobFolder folder;
        const QString path = folder.newJob();
        writeBytes(folder.file(u"NOTE.TXT"_s), "precious");
        tamper(path);
        const auto before = folder.contents();
        QTEST(errorOf([&] { Database::open(path, OpenMode::ReadWrite); }), "error");
        QTEST(errorOf([&] { Database::open(path, OpenMode::ReadOnly); }), "error");
        QTEST(errorOf([&] { Database::openCopyInMemory(path); }), "error");
        QCOMPARE(folder.contents(), before);
    }

    /// Files of other programs, and of earlier editions.
    void acceptsForeignFiles()
    {
        for (const QByteArray settings :
             {"", "PRAGMA page_size=512;", "PRAGMA encoding='UTF-16';", "PRAGMA auto_vacuum=FULL;",
              "CREATE TABLE x ([check] INTEGER PRIMARY KEY, \"as\" TEXT DEFAULT 'x AS y', -- "
              "CHECK (1)\n b UNIQUE); CREATE INDEX i ON x (b DESC);"}) {
            const JobFolder folder;
            const QString path = folder.file(u"a.db"_s);
            RawFile(path).run(settings +
                              "CREATE TABLE t (a TEXT); INSERT INTO t VALUES ('già €𝄞')");
            for (Database database :
                 {Database::open(path), Database::open(path, OpenMode::ReadOnly),
                  Database::openCopyInMemory(path)})
                QCOMPARE(database.records(u"T").text(0), u"già €𝄞"_s);
        }
    }

    void readersLeaveTheFileAlone()
    {
        const JobFolder folder;
        const QString path = folder.newJob();
        const auto before = folder.contents();
        Database database = Database::open(path, OpenMode::ReadOnly);
        QCOMPARE(errorOf([&] { setField(database, TabellaUnita, 2, u"A"_s); }), 3027);
        Database copy = Database::openCopyInMemory(path);
        QCOMPARE(copy.path(), path);
        copy.Execute(u"DROP TABLE Variabili"_s);
        copy.appendTable(jobTable(TabellaVariabili));
        QVERIFY(copy.records(TabellaVariabili).atEnd());
        QCOMPARE(folder.contents(), before);
    }

    /// Waited for, but not for ever.
    void heldByAnotherProgram()
    {
        const JobFolder folder;
        const QString path = folder.newJob();
        QSemaphore locked;
        const std::unique_ptr<QThread> other(QThread::create([&] {
            RawFile raw(path);
            raw.run("BEGIN EXCLUSIVE");
            locked.release();
            QThread::msleep(300);
            raw.run("COMMIT");
        }));
        other->start();
        locked.acquire();
        Database database = Database::open(path);
        other->wait();

        RawFile raw(path);
        raw.run("BEGIN IMMEDIATE");
        QCOMPARE(errorOf([&] { database.Execute(u"DELETE FROM Vani"_s); }), 3045);
        QCOMPARE(database.count(TabellaVani), 1);
    }

    void undoesAnInterruptedWrite()
    {
        const JobFolder folder;
        const QString path = folder.newJob();
        const QString crashed = folder.file(u"CRASHED.ZLT"_s);
        const QTemporaryDir passing;
        qputenv("TMPDIR", QFile::encodeName(passing.path()));
        copyInterrupted(path,
                        "UPDATE Variabili SET Var0 = 'half';"
                        "WITH n(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n WHERE i < 3000)"
                        "INSERT INTO Vani (Chiave) SELECT printf('%10d', i) FROM n",
                        crashed);
        QVERIFY(bytesOf(crashed).contains("half") ||
                bytesOf(crashed).size() > bytesOf(path).size());
        const auto before = folder.contents();
        for (const OpenMode mode : {OpenMode::ReadOnly, OpenMode::ReadWrite}) {
            QCOMPARE(folder.contents(), before);
            Database database = Database::open(crashed, mode);
            QCOMPARE(database.count(TabellaVani), 1);
            QCOMPARE(database.records(TabellaVariabili).text(0), u" "_s);
            QCOMPARE(database.path(), crashed);
        }
        QVERIFY(!QFile::exists(crashed + Journal));
        QVERIFY(QDir(passing.path()).isEmpty());
        qunsetenv("TMPDIR");
    }

    /// What becomes of the file of an open job before the next change: only what the engine did is
    /// built upon.
    void overwrittenWhileOpen_data()
    {
        const auto row = columns<int, Tampering>("error", "tamper");
        row("another program's change", 0, sql("UPDATE Vani SET Ambiente = 'altro'"));
        row("a copy written over it", 3197, bytes([](QByteArray all) { return all; }));
        row("shorter", 3049,
            bytes([](const QByteArray& all) { return all.left(all.size() - 4096); }));
        row("a copy in its place", 3197, [](const QString& path) {
            const QByteArray all = bytesOf(path);
            writeBytes(path + u".2"_s, all);
            QFile::remove(path);
            QVERIFY(QFile::rename(path + u".2"_s, path));
        });
        row("gone", 3197, instead([](const QString&) {}));
    }

    void overwrittenWhileOpen()
    {
        QFETCH(Tampering, tamper);
        const JobFolder folder;
        const QString path = folder.newJob();
        Database job = Database::open(path);
        int round = 0;
        const auto change = [&] {
            Database::Transaction transaction(job);
            job.Execute(u"UPDATE Vani SET Ambiente = 'vano %1'"_s.arg(++round));
            transaction.commit();
        };
        change();
        QTest::qSleep(20); // times of files go in ticks
        tamper(path);
        const QByteArray before = bytesOf(path);
        const int error = errorOf(change);
        QTEST(error, "error");
        QCOMPARE(bytesOf(path) == before, error != 0);
    }

    /// Whatever else this process does with the file.
    void locksStay()
    {
        const JobFolder folder;
        const QString path = folder.newJob();
        Database database = Database::open(path);
        const Database::Transaction transaction(database);
        (void)Database::open(path, OpenMode::ReadOnly);
        QVERIFY(!jet::isJetFile(path));
        QCOMPARE(errorOf([&] { (void)jet::JetFile(path); }), 3343);
        QVERIFY(isLocked(path));
        QVERIFY(!isLocked(path));
    }
};

ZELTO_TEST(TestDatabaseFile)
#include "tst_database_file.moc"

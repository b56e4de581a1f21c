// SPDX-License-Identifier: GPL-3.0-or-later
// A process that is killed in the middle of an operation on whole files leaves whole files.
#include "store_fixture.h"
#include "support/killed_process.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

class TestKill : public QObject
{
    Q_OBJECT

private slots:
    void wholeAfterKill_data();
    void wholeAfterKill();

private:
    /// Fails unless all files are whole; returns how many were still being written.
    static int checkFiles(const JobFolder& folder, const QString& rooms);

    /// All rooms of the job in that file.
    static QString roomsOf(const QString& path);
};

QString TestKill::roomsOf(const QString& path)
{
    Database job = Database::open(path);
    TableRecordset records = job.openTable(TabellaVani);
    QString all;
    for (; !records.EndOfFile(); records.MoveNext())
        for (int field = 0; field < records.fieldCount(); ++field)
            all += records.text(field) + u'|';
    return all;
}

int TestKill::checkFiles(const JobFolder& folder, const QString& rooms)
{
    int unfinished = 0;
    for (const QString& name : folder.names()) {
        const QString path = folder.file(name);
        if (name.startsWith(u".zelto-"))
            unfinished += QDir(path).removeRecursively() ? 1 : 0;
        else if (!name.endsWith(u"-journal") && roomsOf(path) != rooms)
            qFatal("%s is not whole", qPrintable(name));
    }
    return unfinished;
}

void TestKill::wholeAfterKill_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("compact") << QStringList{u"compact"_s};
    QTest::newRow("compact, plain renames") << QStringList{u"compact"_s, u"plain"_s};
    QTest::newRow("duplicate") << QStringList{u"duplicate"_s};
    QTest::newRow("repair") << QStringList{u"repair"_s};
}

void TestKill::wholeAfterKill()
{
    QFETCH(QStringList, arguments);
    const JobFolder folder;
    const QString job = folder.file(u"LAVORO.ZLT"_s);
    const QString backup = folder.file(u"LAVORO.BAK"_s);
    QVERIFY(QFile::copy(QStringLiteral(EXAMPLE_JOB), job));
    const QString rooms = roomsOf(job);
    QVERIFY(rooms.size() > 5000);
    arguments.insert(1, QFileInfo(job).path());

    int unfinished = 0;
    int onlyBackup = 0;
    for (int kill = 0; kill < kills(); ++kill) {
        QVERIFY(killed(QStringLiteral(KILL_TARGET), arguments,
                       QRandomGenerator::global()->bounded(60'000U)));
        unfinished += checkFiles(folder, rooms);
        QFile::remove(folder.file(u"COPIA.ZLT"_s));
        if (!QFile::exists(job) && QFile::rename(backup, job))
            ++onlyBackup;
        QVERIFY(QFile::exists(job));
    }
    qInfo("%d kills, %d while a file was being written, %d left the backup only", kills(),
          unfinished, onlyBackup);
    QVERIFY(unfinished > 0);
    QVERIFY(onlyBackup == 0 || arguments.contains(u"plain"_s));
}

QTEST_GUILESS_MAIN(TestKill)
#include "tst_kill.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
// A process that is killed while it changes the register has done each change wholly or not at all.
#include "store/store_fixture.h"
#include "support/killed_process.h"
#include "support/runner.h"

#include <QRandomGenerator>

using namespace Qt::StringLiterals;

using zelto::store::Database;

namespace {

int count(Database& job, const QString& what)
{
    return static_cast<int>(job.query(u"SELECT COUNT(*) FROM "_s + what).integer(0));
}

} // namespace

class TestRegisterKill : public QObject
{
    Q_OBJECT

private slots:
    void wholeAfterKill()
    {
        const zelto::test::JobFolder folder;
        const QString path = folder.file(u"LAVORO.ZLT"_s);
        QVERIFY(QFile::copy(QStringLiteral(EXAMPLE_JOB), path));
        int rooms = 0;
        int copied = 0;
        {
            Database job = Database::open(path);
            job.Execute(u"UPDATE Vani SET Ambiente = 'x' WHERE [Riferimento unità] = 1"_s);
            rooms = count(job, u"Vani"_s);
            copied = count(job, u"Vani WHERE [Riferimento unità] <= 5"_s);
        }
        int withCopies = 0;
        quint32 longest = 40'000; // microseconds; more where the machine has not come to the copies
        for (int kill = 0; kill < zelto::test::kills(); ++kill) {
            QVERIFY(zelto::test::killed(QStringLiteral(KILL_TARGET), {path},
                                        QRandomGenerator::global()->bounded(longest)));
            Database job = Database::open(path);
            const bool copies = count(job, u"[Unità immobiliari]"_s) == 37;
            withCopies += copies ? 1 : 0;
            longest += withCopies == 0 ? longest / 16 : 0;
            QCOMPARE(count(job, u"[Unità immobiliari]"_s), copies ? 37 : 32);
            QCOMPARE(count(job, u"Vani"_s), copies ? rooms + copied : rooms);
            QCOMPARE(count(job, u"Vani WHERE [Riferimento unità] NOT IN "
                                "(SELECT [Riferimento unità] FROM [Unità immobiliari])"_s),
                     0);
            QCOMPARE(count(job, u"Vani WHERE Chiave <> printf('%5d%5d', [Riferimento unità], "
                                "Posizione)"_s),
                     0);
            QCOMPARE(count(job, u"(SELECT DISTINCT Ambiente FROM Vani WHERE [Riferimento unità] "
                                "= 1 AND Posizione <= 2)"_s),
                     1);
        }
        qInfo("%d kills, %d with the copies in place", zelto::test::kills(), withCopies);
        QVERIFY(withCopies > 0 && withCopies < zelto::test::kills());
    }
};

ZELTO_TEST(TestRegisterKill)
#include "tst_register_kill.moc"

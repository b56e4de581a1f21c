// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/format_check.h"
#include "store_fixture.h"
#include "support/dump.h"
#include "support/runner.h"
#include "support/scripted_user.h"

#include <QCryptographicHash>

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

class TestJob : public QObject
{
    Q_OBJECT

private slots:
    void newJob()
    {
        Database job = Database::open(m_folder.newJob());
        QCOMPARE(job.tableNames().join(u'|'),
                 u"ZELTO|Dati Generali|Unità immobiliari|Vani|Variabili"_s);
        const QString noTexts = u" -"_s.repeated(16);
        QCOMPARE(dumpOf(job), u"Dati Generali: [1]"_s + noTexts +
                                  u"\nUnità immobiliari: [    1] [1]"_s + noTexts.left(10) +
                                  u"\nVani: [    1    1] [1] [1]"_s + noTexts.left(16) +
                                  u"\nVariabili: [ ] [ ] [ ] [ ] [ ] [ ] [ ]\nZELTO: [2009] -"_s);
    }

    /// Jobs that are out there have their tables in these texts. When they change, object_check.cpp
    /// must go on knowing the former ones.
    void textsOfTables()
    {
        QCryptographicHash hash(QCryptographicHash::Sha256);
        for (const TableDef& table : jobTables())
            hash.addData(createTableSql(table).toUtf8());
        QCOMPARE(hash.result().toHex().left(16), "e52c39a545a73c71");
    }

    void formatMarker()
    {
        // The number of an error; 0 for a job that is accepted, 1 for one that is refused.
        const auto verdict = [this](const QByteArray& change) {
            const QString changed = changedJob(change);
            const QByteArray before = bytesOf(changed);
            ScriptedUser user;
            QString path = changed;
            const int error = errorOf([&] { VerificaFormato(path, user); });
            const QString said = user.said();
            if (bytesOf(changed) != before || (path == changed) != said.isEmpty())
                return -1;
            const QString refusal = u"message: Formato non compatibile, eseguire la conversione "
                                    "dell'archivio"_s;
            return path.isEmpty() && said == refusal ? 1 : error;
        };
        QCOMPARE(verdict("SELECT 1"), 0);
        QCOMPARE(verdict("UPDATE ZELTO SET Versione=' 2009.0 rev. 3'"), 0);
        QCOMPARE(verdict("UPDATE ZELTO SET Versione='2009.00001'"), 0); // equal as single
        QCOMPARE(verdict("INSERT INTO ZELTO VALUES ('1997', NULL)"), 0);
        QCOMPARE(verdict("UPDATE ZELTO SET Versione='2009.0001'"), 1);
        QCOMPARE(verdict("UPDATE ZELTO SET Versione='2008'"), 1);
        QCOMPARE(verdict("UPDATE ZELTO SET Versione='x2009'"), 1);
        QCOMPARE(verdict("ALTER TABLE ZELTO RENAME TO z; ALTER TABLE z RENAME TO Zelto"), 1);
        QCOMPARE(verdict("DROP TABLE ZELTO"), 1);
        QCOMPARE(verdict("UPDATE ZELTO SET Versione=NULL"), 3421);
        QCOMPARE(verdict("UPDATE ZELTO SET Versione=''"), 3421);
        QCOMPARE(verdict("DELETE FROM ZELTO"), 3021);
    }

    /// Coefficient groups come to jobs that lack them, and stay as they are in all others.
    void version()
    {
        const auto groupsOf = [this](const QByteArray& change) {
            const QString path = changedJob(change);
            Database job = Database::open(path);
            ControllaVersione(job);
            const QByteArray once = bytesOf(path);
            ControllaVersione(job);
            Query groups = job.records(TabellaVariabili);
            return bytesOf(path) == once ? dumpOf(groups).join(u'/') : u"changed again"_s;
        };
        const QString blanks = u"[ ] [ ] [ ] [ ] [ ] [ ] [ ]"_s;
        QCOMPARE(groupsOf("DROP TABLE Variabili"), blanks);
        QCOMPARE(groupsOf("DELETE FROM Variabili"), blanks);
        QCOMPARE(groupsOf("UPDATE Variabili SET Var0='x', Var1=NULL"),
                 u"[x] - [ ] [ ] [ ] [ ] [ ]"_s);
        QCOMPARE(groupsOf("ALTER TABLE Variabili RENAME TO v; ALTER TABLE v RENAME TO VARIABILI"),
                 blanks);
    }

    void tables()
    {
        const auto errorAfter = [this](const QByteArray& change) {
            Database job = Database::open(changedJob(change));
            return errorOf([&] { ControllaTabelle(job); });
        };
        QCOMPARE(errorAfter("SELECT 1"), 0);
        QCOMPARE(errorAfter("DROP TABLE Variabili"), 0); // as in an earlier edition
        QCOMPARE(errorAfter("DROP TABLE Vani"), 3078);
        const QByteArray loose = "PRAGMA ignore_check_constraints=ON; UPDATE Vani SET ";
        QCOMPARE(errorAfter(loose + "Chiave = ''"), 3315);
        QCOMPARE(errorAfter(loose + "Posizione = 40000"), 3421);
        QCOMPARE(errorAfter("UPDATE Variabili SET Var0 = hex(zeroblob(600000))"), 3163);
        const QByteArray tooMany =
            "WITH n(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n LIMIT 32767) INSERT INTO ";
        QCOMPARE(errorAfter(tooMany + "[Unità immobiliari] (Chiave) SELECT i FROM n"), 3049);
        QCOMPARE(errorAfter(tooMany + "Vani (Chiave, [Riferimento unità]) SELECT i, 1 FROM n"),
                 3049);
    }

private:
    [[nodiscard]] QString changedJob(const QByteArray& change)
    {
        const QString path = m_folder.newJob(u"%1.ZLT"_s.arg(++m_number));
        RawFile(path).run(change);
        return path;
    }

    JobFolder m_folder;
    int m_number = 0;
};

ZELTO_TEST(TestJob)
#include "tst_job.moc"

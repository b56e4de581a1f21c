// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/format_check.h"
#include "store_fixture.h"
#include "support/columns.h"
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
    void init() { m_path = m_folder.newJob(u"%1.ZLT"_s.arg(++m_number)); }

    void newJob()
    {
        Database job = Database::open(m_path);
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

    void formatMarker_data()
    {
        // What becomes of it: accepted, refused with the message or the number of an error.
        const Columns<QByteArray, int> row("change", "error");
        constexpr int Accepted = 0;
        constexpr int Refused = -1;
        row("new job", "SELECT 1", Accepted);
        row("followed by text", "UPDATE ZELTO SET Versione=' 2009.0 rev. 3'", Accepted);
        row("equal as single", "UPDATE ZELTO SET Versione='2009.00001'", Accepted);
        row("second record", "INSERT INTO ZELTO VALUES ('1997', NULL)", Accepted);
        row("above as single", "UPDATE ZELTO SET Versione='2009.0001'", Refused);
        row("other version", "UPDATE ZELTO SET Versione='2008'", Refused);
        row("no number", "UPDATE ZELTO SET Versione='x2009'", Refused);
        row("other letter case", "ALTER TABLE ZELTO RENAME TO z; ALTER TABLE z RENAME TO Zelto",
            Refused);
        row("no table", "DROP TABLE ZELTO", Refused);
        row("Null", "UPDATE ZELTO SET Versione=NULL", 3421);
        row("empty", "UPDATE ZELTO SET Versione=''", 3421);
        row("no record", "DELETE FROM ZELTO", 3021);
    }

    void formatMarker()
    {
        QFETCH(QByteArray, change);
        QFETCH(int, error);
        RawFile(m_path).run(change);
        const QByteArray before = bytesOf(m_path);
        ScriptedUser user;
        QString path = m_path;
        const bool refused = error == -1;
        QCOMPARE(errorOf([&] { VerificaFormato(path, user); }), refused ? 0 : error);
        QCOMPARE(path, refused ? QString() : m_path);
        QCOMPARE(user.said(), refused
                                  ? u"message: Formato non compatibile, eseguire la conversione "
                                    "dell'archivio"_s
                                  : QString());
        QCOMPARE(bytesOf(m_path), before);
    }

    void version_data()
    {
        const Columns<QByteArray, QString> row("change", "record");
        const QString blanks = u"[ ] [ ] [ ] [ ] [ ] [ ] [ ]"_s;
        row("no table", "DROP TABLE Variabili", blanks);
        row("no record", "DELETE FROM Variabili", blanks);
        row("current", "UPDATE Variabili SET Var0='x', Var1=NULL", u"[x] - [ ] [ ] [ ] [ ] [ ]"_s);
        row("other letter case",
            "ALTER TABLE Variabili RENAME TO v; ALTER TABLE v RENAME TO VARIABILI", blanks);
    }

    void version()
    {
        QFETCH(QByteArray, change);
        QFETCH(QString, record);
        RawFile(m_path).run(change);
        Database job = Database::open(m_path);
        ControllaVersione(job);
        Query groups = job.records(TabellaVariabili);
        QCOMPARE(dumpOf(groups), QStringList(record));
        const QByteArray before = bytesOf(m_path);
        ControllaVersione(job);
        QCOMPARE(bytesOf(m_path), before);
    }

    void tables_data()
    {
        const Columns<int, QByteArray> row("error", "change");
        const QByteArray loose = "PRAGMA ignore_check_constraints=ON; UPDATE Vani SET ";
        row("new job", 0, "SELECT 1");
        row("earlier edition", 0, "DROP TABLE Variabili");
        row("missing table", 3078, "DROP TABLE Vani");
        row("empty key", 3315, loose + "Chiave = ''");
        row("large number", 3421, loose + "Posizione = 40000");
        row("long memo", 3163, "UPDATE Variabili SET Var0 = hex(zeroblob(600000))");
        const QByteArray numbers =
            "WITH n(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n LIMIT 32767) ";
        row("too many units", 3049,
            numbers + "INSERT INTO [Unità immobiliari] (Chiave) SELECT i FROM n");
        row("too many rooms of a unit", 3049,
            numbers + "INSERT INTO Vani (Chiave, [Riferimento unità]) SELECT i, 1 FROM n");
    }

    void tables()
    {
        QFETCH(QByteArray, change);
        RawFile(m_path).run(change);
        Database job = Database::open(m_path);
        QTEST(errorOf([&] { ControllaTabelle(job); }), "error");
    }

private:
    JobFolder m_folder;
    QString m_path;
    int m_number = 0;
};

ZELTO_TEST(TestJob)
#include "tst_job.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/format_check.h"
#include "store/schema_check.h"
#include "store/user_interface.h"
#include "store_fixture.h"
#include "support/dump.h"
#include "support/runner.h"

#include <QCryptographicHash>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

namespace {

class Listener : public Messages
{
public:
    void showMessage(const QString& text) override { messages += text; }
    void ReportError(const std::exception&) override {}

    QStringList messages;
};

} // namespace

class TestJob : public QObject
{
    Q_OBJECT

private slots:
    void init() { m_path = m_folder.newJob(u"%1.ZLT"_s.arg(++m_number)); }
    void newJob_data();
    void newJob();
    void creationIsAllOrNothing();
    void textsOfTables();
    void keys();
    void formatMarker_data();
    void formatMarker();
    void formatOfWhatIsNoJob();
    void version_data();
    void version();
    void tables_data();
    void tables();

private:
    JobFolder m_folder;
    QString m_path;
    int m_number = 0;
};

void TestJob::newJob_data()
{
    QTest::addColumn<QString>("fields");
    QTest::addColumn<QString>("record");
    QTest::newRow("ZELTO") << u"Versione|Utente"_s << u"[2009] -"_s;
    QTest::newRow("Dati Generali")
        << u"Chiave|Descrizione|Descrizionee|Note|Data|Relazione|Tabella 1|Tabella 2|Tabella 3|"
           "Tabella 4|Tabella 5|Tabella 6|Tabella 7|Tabella 8|Tabella 9|Tabella 10|Tabella Codici"_s
        << u"[1]"_s + u" -"_s.repeated(16);
    QTest::newRow("Unità immobiliari")
        << u"Chiave|Riferimento unità|Riferimento|Livello|Codice scala|H piano|Flag tabelle"_s
        << u"[    1] [1] - - - - -"_s;
    QTest::newRow("Vani") << u"Chiave|Riferimento unità|Posizione|Ambiente|Consistenza reale|"
                             "Destinazione|Orientamento|Prospetto|Luminosità|Funzionalità|"
                             "Piano riduttore"_s
                          << u"[    1    1] [1] [1] - - - - - - - -"_s;
    QTest::newRow("Variabili") << u"Var0|Var1|Var2|Var3|Var4|Var5|Var6"_s
                               << u"[ ] [ ] [ ] [ ] [ ] [ ] [ ]"_s;
}

void TestJob::newJob()
{
    QFETCH(QString, fields);
    QFETCH(QString, record);
    Database job = Database::open(m_path);
    QCOMPARE(job.tableNames(), QStringList({u"ZELTO"_s, u"Dati Generali"_s, u"Unità immobiliari"_s,
                                            u"Vani"_s, u"Variabili"_s}));
    Query records = job.records(QString::fromUtf8(QTest::currentDataTag()));
    QCOMPARE(dumpOf(records), QStringList(record));
    QStringList names;
    for (int i = 0; i < records.fieldCount(); ++i)
        names << records.fieldName(i);
    QCOMPARE(names.join(u'|'), fields);
}

void TestJob::creationIsAllOrNothing()
{
    Database job = Database::create(m_folder.file(u"occupied.ZLT"_s));
    job.Execute(u"CREATE TABLE variabili (x)"_s);
    QCOMPARE(errorOf([&] { CreaTabelleBase(job); }), 3010);
    QCOMPARE(job.tableNames(), QStringList(u"variabili"_s));
}

/// Jobs that are out there have their tables in these texts. When they change, object_check.cpp
/// must go on knowing the former ones.
void TestJob::textsOfTables()
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (const TableDef& table : jobTables())
        hash.addData(createTableSql(table).toUtf8());
    QCOMPARE(hash.result().toHex().left(16), "e52c39a545a73c71");
}

void TestJob::keys()
{
    QCOMPARE(unitKey(27), u"   27"_s);
    QCOMPARE(unitKey(32767), u"32767"_s);
    QCOMPARE(roomKey(1, 10), u"    1   10"_s);
}

void TestJob::formatMarker_data()
{
    QTest::addColumn<QByteArray>("change");
    QTest::addColumn<bool>("accepted");
    QTest::addColumn<int>("error");
    const auto row = [](const char* name, const QByteArray& change, bool accepted, int error = 0) {
        QTest::newRow(name) << change << accepted << error;
    };
    row("new job", "SELECT 1", true);
    row("followed by text", "UPDATE ZELTO SET Versione=' 2009.0 rev. 3'", true);
    row("equal as single", "UPDATE ZELTO SET Versione='2009.00001'", true);
    row("second record", "INSERT INTO ZELTO VALUES ('1997', NULL)", true);
    row("above as single", "UPDATE ZELTO SET Versione='2009.0001'", false);
    row("other version", "UPDATE ZELTO SET Versione='2008'", false);
    row("no number", "UPDATE ZELTO SET Versione='x2009'", false);
    row("other letter case", "ALTER TABLE ZELTO RENAME TO z; ALTER TABLE z RENAME TO Zelto", false);
    row("no table", "DROP TABLE ZELTO", false);
    row("Null", "UPDATE ZELTO SET Versione=NULL", false, 3421);
    row("empty", "UPDATE ZELTO SET Versione=''", false, 3421);
    row("no record", "DELETE FROM ZELTO", false, 3021);
}

void TestJob::formatMarker()
{
    QFETCH(QByteArray, change);
    QFETCH(bool, accepted);
    QFETCH(int, error);
    RawFile(m_path).run(change);
    const QByteArray before = bytesOf(m_path);
    Listener user;
    QString path = m_path;
    QCOMPARE(errorOf([&] { VerificaFormato(path, user); }), error);
    const bool refused = !accepted && error == 0;
    QCOMPARE(path, refused ? QString() : m_path);
    const QString message = u"Formato non compatibile, eseguire la conversione dell'archivio"_s;
    QCOMPARE(user.messages, refused ? QStringList(message) : QStringList());
    QCOMPARE(bytesOf(m_path), before);
}

void TestJob::formatOfWhatIsNoJob()
{
    Listener user;
    QString path = m_folder.file(u"testo.ZLT"_s);
    QCOMPARE(errorOf([&] { VerificaFormato(path, user); }), 3024);
    writeBytes(path, "no database");
    QCOMPARE(errorOf([&] { VerificaFormato(path, user); }), 3343);
    QVERIFY(user.messages.isEmpty());
}

void TestJob::version_data()
{
    QTest::addColumn<QByteArray>("change");
    QTest::addColumn<QString>("record");
    const QString blanks = u"[ ] [ ] [ ] [ ] [ ] [ ] [ ]"_s;
    QTest::newRow("no table") << QByteArray("DROP TABLE Variabili") << blanks;
    QTest::newRow("no record") << QByteArray("DELETE FROM Variabili") << blanks;
    QTest::newRow("current") << QByteArray("UPDATE Variabili SET Var0='x', Var1=NULL")
                             << u"[x] - [ ] [ ] [ ] [ ] [ ]"_s;
    QTest::newRow("other letter case")
        << QByteArray("ALTER TABLE Variabili RENAME TO v; ALTER TABLE v RENAME TO VARIABILI")
        << blanks;
}

void TestJob::version()
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

void TestJob::tables_data()
{
    QTest::addColumn<QByteArray>("change");
    QTest::addColumn<int>("error");
    const auto row = [](const char* name, int error, const QByteArray& change) {
        QTest::newRow(name) << change << error;
    };
    const QByteArray loose = "PRAGMA ignore_check_constraints=ON; UPDATE Vani SET ";
    row("new job", 0, "SELECT 1");
    row("earlier edition", 0, "DROP TABLE Variabili");
    row("missing table", 3078, "DROP TABLE Vani");
    row("number in a text", 3421, loose + "Ambiente = x'05'");
    row("NUL in a text", 3421, loose + "Ambiente = 'a' || char(0)");
    row("long text", 3163, loose + "Ambiente = 'sedici caratteri'");
    row("empty key", 3315, loose + "Chiave = ''");
    row("text in a number", 3421, loose + "Posizione = 'uno'");
    row("large number", 3421, loose + "Posizione = 40000");
    row("long memo", 3163, "UPDATE Variabili SET Var0 = hex(zeroblob(600000))");
    const QByteArray numbers = "WITH n(i) AS (SELECT 2 UNION ALL SELECT i + 1 FROM n LIMIT 32767) ";
    row("too many units", 3049,
        numbers + "INSERT INTO [Unità immobiliari] (Chiave) SELECT i FROM n");
    row("too many rooms of a unit", 3049,
        numbers + "INSERT INTO Vani (Chiave, [Riferimento unità]) SELECT i, 1 FROM n");
}

void TestJob::tables()
{
    QFETCH(QByteArray, change);
    RawFile(m_path).run(change);
    Database job = Database::open(m_path);
    QTEST(errorOf([&] { ControllaTabelle(job); }), "error");
}

ZELTO_TEST(TestJob)
#include "tst_job.moc"

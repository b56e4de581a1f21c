// SPDX-License-Identifier: GPL-3.0-or-later
#include "store_fixture.h"
#include "support/runner.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

using Comparison = TableRecordset::Comparison;

class TestRecordset : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void keyOrder();
    void seek_data();
    void seek();
    void moves();
    void addAndEdit();
    void editFollowsItsKey();
    void fieldAccess();
    void unfitContents_data();
    void unfitContents();
    void unfitNames();
    void outlivesItsDatabase();

private:
    [[nodiscard]] TableRecordset units() { return m_job->openTable(TabellaUnita); }
    [[nodiscard]] QStringList keys(TableRecordset records) const
    {
        QStringList all;
        for (; !records.EndOfFile(); records.MoveNext())
            all += records.text(0).trimmed();
        return all;
    }

    std::unique_ptr<JobFolder> m_folder;
    std::unique_ptr<Database> m_job;
};

/// A job with units 1, 12, 3 and, out of the order of numbers, the key "b".
void TestRecordset::init()
{
    m_folder = std::make_unique<JobFolder>();
    m_job = std::make_unique<Database>(Database::open(m_folder->newJob()));
    TableRecordset records = units();
    for (const QString& key : {unitKey(12), u"b"_s, unitKey(3)}) {
        records.AddNew();
        records.setField(u"CHIAVE", key);
        records.Update();
    }
}

void TestRecordset::keyOrder()
{
    TableRecordset records = units();
    QCOMPARE(records.RecordCount(), 4);
    records.setIndex(u"Primarykey");
    QCOMPARE(keys(std::move(records)), QStringList({u"1"_s, u"3"_s, u"12"_s, u"b"_s}));

    QCOMPARE(errorOf([&] { units().setIndex(u"Altro"); }), 3015);
    QCOMPARE(errorOf([&] { m_job->openTable(TabellaVariabili).setIndex(IndicePrimario); }), 3015);
    QCOMPARE(errorOf([&] { (void)m_job->openTable(u"Nessuna"); }), 3078);
}

void TestRecordset::seek_data()
{
    QTest::addColumn<int>("comparison");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QStringList>("found");
    const int equal = static_cast<int>(Comparison::Equal);
    const int greaterOrEqual = static_cast<int>(Comparison::GreaterOrEqual);
    QTest::newRow("equal") << equal << unitKey(3) << QStringList({u"3"_s, u"12"_s, u"b"_s});
    QTest::newRow("other letter case") << equal << u"B"_s << QStringList(u"b"_s);
    QTest::newRow("not there") << equal << unitKey(2) << QStringList();
    QTest::newRow("next above") << greaterOrEqual << unitKey(4) << QStringList({u"12"_s, u"b"_s});
    QTest::newRow("from the start")
        << greaterOrEqual << QString() << QStringList({u"1"_s, u"3"_s, u"12"_s, u"b"_s});
    QTest::newRow("behind the last") << greaterOrEqual << u"c"_s << QStringList();
}

void TestRecordset::seek()
{
    QFETCH(int, comparison);
    QFETCH(QString, key);
    QFETCH(QStringList, found);
    TableRecordset records = units();
    QCOMPARE(errorOf([&] { records.Seek(Comparison::Equal, key); }), 3019);
    records.setIndex(IndicePrimario);
    records.Seek(static_cast<Comparison>(comparison), key);
    QCOMPARE(records.NoMatch(), found.isEmpty());
    QCOMPARE(keys(std::move(records)), found);
}

void TestRecordset::moves()
{
    TableRecordset records = units();
    records.setIndex(IndicePrimario);
    records.MoveLast();
    QCOMPARE(records.text(0), u"b"_s);
    records.MoveNext();
    QVERIFY(records.EndOfFile());
    QCOMPARE(errorOf([&] { records.MoveNext(); }), 3021);
    records.MoveFirst();
    QCOMPARE(records.text(0), unitKey(1));
    records.Close();
    QCOMPARE(errorOf([&] { (void)records.text(0); }), 3021);

    QueryRecordset query = m_job->OpenRecordset(u"SELECT Chiave FROM Vani"_s);
    query.MoveNext();
    QVERIFY(query.EndOfFile());
    query.MoveFirst();
    QCOMPARE(query.text(0), roomKey(1, 1));

    m_job->Execute(u"DELETE FROM Variabili"_s);
    TableRecordset empty = m_job->openTable(TabellaVariabili);
    QVERIFY(empty.EndOfFile());
    QCOMPARE(errorOf([&] { empty.MoveFirst(); }), 3021);
    QCOMPARE(errorOf([&] { empty.MoveLast(); }), 3021);
    QCOMPARE(errorOf([&] { empty.Edit(); }), 3021);
}

void TestRecordset::addAndEdit()
{
    TableRecordset records = units();
    records.setIndex(IndicePrimario);
    QCOMPARE(errorOf([&] { records.setField(2, u"x"_s); }), 3020);
    QCOMPARE(errorOf([&] { records.Update(); }), 3020);

    records.AddNew();
    records.setField(0, unitKey(7));
    QCOMPARE(errorOf([&] { records.setField(7, 1); }), 3265);
    records.Update();
    QCOMPARE(records.text(0), unitKey(1));
    QVERIFY(!keys(units()).contains(u"0"_s) && keys(units()).contains(u"7"_s));

    records.Seek(Comparison::Equal, unitKey(7));
    QVERIFY(records.isNull(2));
    records.Edit();
    records.setField(1, u"7"_s);
    records.setField(2, QString());
    records.setField(u"livello", u"già"_s);
    records.Update();
    QCOMPARE(records.field(1), Value(7));
    QCOMPARE(records.field(2), Value(QString()));
    QCOMPARE(records.utf8(3), "già");

    // A move drops what was not stored.
    records.Edit();
    records.setField(2, u"perso"_s);
    records.MoveNext();
    QCOMPARE(errorOf([&] { records.Update(); }), 3020);

    records.Edit();
    records.setField(2, u"x"_s);
    m_job->Execute(u"DELETE FROM [Unità immobiliari]"_s);
    QCOMPARE(errorOf([&] { records.Update(); }), 3167);
}

void TestRecordset::editFollowsItsKey()
{
    TableRecordset records = units();
    records.setIndex(IndicePrimario);
    records.Edit();
    records.setField(0, unitKey(5));
    records.Update();
    QCOMPARE(records.text(0), unitKey(5));
    records.MoveNext();
    QCOMPARE(records.text(0), unitKey(12));

    records.Edit();
    records.setField(0, u"B"_s);
    QCOMPARE(errorOf([&] { records.Update(); }), 3022);
    QCOMPARE(records.text(0), unitKey(12));
    QCOMPARE(keys(units()), QStringList({u"3"_s, u"5"_s, u"12"_s, u"b"_s}));
}

void TestRecordset::fieldAccess()
{
    TableRecordset records = units();
    QCOMPARE(records.field(u"riferimento UNITÀ"), Value(1));
    QCOMPARE(records.integer(1), 1);
    QCOMPARE(records.integer(0), 1);
    QCOMPARE(records.integer(2), 0);
    QCOMPARE(records.text(1), u"1"_s);
    QCOMPARE(records.text(2), QString());
    QVERIFY(records.utf8(2).empty());
    for (const int ordinal : {-1, records.fieldCount()})
        QCOMPARE(errorOf([&] { (void)records.utf8(ordinal); }), 3265);
    QCOMPARE(errorOf([&] { (void)records.field(u"Nessuno"); }), 3265);
    QCOMPARE(errorOf([] { (void)Value(u"1 2"_s).integer(); }), 3421);
}

void TestRecordset::unfitContents_data()
{
    QTest::addColumn<QByteArray>("value");
    QTest::newRow("NUL in a text") << QByteArray("'a' || char(0) || 'b'");
    QTest::newRow("invalid UTF-8") << QByteArray("CAST(x'61FF62' AS TEXT)");
    QTest::newRow("UTF-8 cut short") << QByteArray("CAST(x'61C3' AS TEXT)");
    QTest::newRow("bytes") << QByteArray("x'4142'");
    QTest::newRow("fraction") << QByteArray("1.5");
}

void TestRecordset::unfitContents()
{
    QFETCH(QByteArray, value);
    const QString path = m_folder->file(u"a.db"_s);
    RawFile(path).run("CREATE TABLE t (a); INSERT INTO t VALUES (" + value + ")");
    Database database = Database::open(path);
    const TableRecordset records = database.openTable(u"t");
    QCOMPARE(errorOf([&] { (void)records.field(0); }), 3421);
    QCOMPARE(errorOf([&] { (void)records.text(0); }), 3421);
    QCOMPARE(errorOf([&] { (void)records.integer(0); }), 3421);
    QVERIFY(!records.utf8(0).empty());
}

void TestRecordset::unfitNames()
{
    const QString path = m_folder->file(u"a.db"_s);
    RawFile(path).run("CREATE TABLE fields ([a\xff])");
    QCOMPARE(errorOf([&] { (void)Database::open(path).openTable(u"fields"); }), 3049);
    RawFile(path).run("CREATE TABLE [t\xff] (a)");
    QCOMPARE(errorOf([&] { (void)Database::open(path).tableNames(); }), 3049);
}

void TestRecordset::outlivesItsDatabase()
{
    TableRecordset records = units();
    m_job.reset();
    records.MoveNext();
    QCOMPARE(records.text(0), unitKey(3));
}

ZELTO_TEST(TestRecordset)
#include "tst_recordset.moc"

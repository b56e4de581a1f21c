// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/job_queries.h"
#include "store_fixture.h"
#include "support/dump.h"
#include "support/runner.h"

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

class TestRecords : public QObject
{
    Q_OBJECT

private slots:
    /// A job with units 1, 12, 3 and, out of the order of numbers, the key "b".
    void init()
    {
        m_folder = std::make_unique<JobFolder>();
        m_job = std::make_unique<Database>(Database::open(m_folder->newJob()));
        RecordWriter units = m_job->writer(jobTable(TabellaUnita));
        for (const auto& [key, level] : {std::pair(unitKey(12), u"Terra"_s), {u"b"_s, {}}})
            units.add(Record{key, {}, {}, Value::nullIfEmpty(level)});
        units.add(Record{unitKey(3), {}, {}, u"TERRA"_s, u"A"_s});
    }

    void found()
    {
        const auto found = [this](const std::vector<Database::Condition>& conditions,
                                  QStringView order) {
            return keysOf(m_job->records(TabellaUnita, conditions, order));
        };
        QCOMPARE(found({}, {}), u"1 3 12 b"_s);
        QCOMPARE(found({}, u"CODICE SCALA"), u"1 12 b 3"_s);
        QCOMPARE(found({{u"livello", u"terra"_s}}, u"Chiave"), u"3 12"_s);
        QCOMPARE(found({{u"Livello", Value()}}, u"Chiave"), u"1 b"_s);
        QCOMPARE(found({{u"Livello", u"Terra"_s}, {u"Codice scala", u"A"_s}}, {}), u"3"_s);
        QCOMPARE(found({{u"Livello", QString()}}, {}), QString());
    }

    void roomsOfAUnit()
    {
        RecordWriter rooms = m_job->writer(jobTable(TabellaVani));
        for (const QString& key : {roomKey(9, 1), roomKey(10, 2), roomKey(10, 1), roomKey(11, 1)})
            rooms.add(Record{key});
        Query found = roomsByKey(*m_job);
        QVERIFY(found.atEnd());
        found.restart(roomKeysOf(10));
        QCOMPARE(keysOf(found), u"10    1 10    2"_s);
        found.restart(roomKeysOf(9));
        QCOMPARE(keysOf(found), u"9    1"_s);
    }

    void walk()
    {
        Query units = m_job->records(TabellaUnita, {}, CampoChiave);
        units.next();
        QCOMPARE(units.text(0), unitKey(3));
        QCOMPARE(units.records().size(), 3U);
        QVERIFY(units.atEnd());
        QCOMPARE(errorOf([&] { units.next(); }), 3021);
        QCOMPARE(errorOf([&] { (void)units.field(0); }), 3021);
        QCOMPARE(errorOf([&] { (void)m_job->records(u"Nessuna"); }), 3078);
        QCOMPARE(m_job->count(TabellaUnita), 4);
    }

    /// Of a record that changes, what does not change stays as another program made it.
    void writing()
    {
        RecordWriter units = m_job->writer(jobTable(TabellaUnita));
        const Record before = m_job->records(TabellaUnita, {{CampoChiave, unitKey(12)}}).record();
        m_job->Execute(u"UPDATE [Unità immobiliari] SET [H piano] = '3' WHERE Chiave = '   12'"_s);
        Record after = before;
        after[0] = unitKey(5);
        after[2] = QString();
        after[3] = {};
        units.change(before, after);
        Query changed = m_job->records(TabellaUnita, {{CampoChiave, unitKey(5)}});
        QCOMPARE(dumpOf(changed), QStringList(u"[    5] - [] - - [3] -"_s));
        units.remove(u"B"_s);
        QCOMPARE(keys(), u"1 3 5"_s);

        m_job->writer(jobTable(TabellaVariabili)).add(Record{u"due"_s});
        setField(*m_job, TabellaVariabili, 1, u"uno"_s);
        Query groups = m_job->records(TabellaVariabili);
        QCOMPARE(dumpOf(groups),
                 QStringList({u"[ ] [uno] [ ] [ ] [ ] [ ] [ ]"_s, u"[due] - - - - - -"_s}));
    }

    void refusedWriting()
    {
        RecordWriter units = m_job->writer(jobTable(TabellaUnita));
        QCOMPARE(errorOf([&] { units.add(Record{unitKey(3)}); }), 3022);
        const Record before = m_job->records(TabellaUnita, {{CampoChiave, u"b"_s}}).record();
        Record after = before;
        after[0] = unitKey(3);
        QCOMPARE(errorOf([&] { units.change(before, after); }), 3022);
        QCOMPARE(keys(), u"1 3 12 b"_s);
        // A refusal does not end the writer.
        units.add(Record{unitKey(4)});
        QCOMPARE(keys(), u"1 3 4 12 b"_s);
    }

    void fieldAccess()
    {
        const Query records = m_job->records(TabellaUnita);
        QCOMPARE(records.integer(0), 1);
        QCOMPARE(records.integer(2), 0);
        QCOMPARE(records.text(1), u"1"_s);
        QCOMPARE(records.text(2), QString());
        QVERIFY(records.utf8(2).empty());
        for (const int ordinal : {-1, records.fieldCount()})
            QCOMPARE(errorOf([&] { (void)records.utf8(ordinal); }), 3265);
    }

    /// What only another program can have stored: NUL, invalid and cut UTF-8, bytes, a fraction.
    void unfitContents()
    {
        const QString path = m_folder->file(u"a.db"_s);
        RawFile(path).run("CREATE TABLE t (a); INSERT INTO t VALUES ('a' || char(0) || 'b'), "
                          "(CAST(x'61FF62' AS TEXT)), (CAST(x'61C3' AS TEXT)), (x'4142'), (1.5)");
        Query records = Database::open(path).records(u"t");
        for (; !records.atEnd(); records.next()) {
            QCOMPARE(errorOf([&] { (void)records.text(0); }), 3421);
            QCOMPARE(errorOf([&] { (void)records.integer(0); }), 3421);
            QVERIFY(!records.utf8(0).empty());
        }
        RawFile(path).run("CREATE TABLE [t\xff] (a)");
        QCOMPARE(errorOf([&] { (void)Database::open(path).tableNames(); }), 3049);
    }

    void outlivesItsDatabase()
    {
        Query records = m_job->records(TabellaUnita);
        m_job.reset();
        records.next();
        QCOMPARE(records.text(0), unitKey(3));
    }

    void transactions()
    {
        for (const bool committed : {false, true}) {
            {
                Database::Transaction transaction(*m_job);
                m_job->Execute(u"DELETE FROM Vani"_s);
                QCOMPARE(errorOf([&] { Database::Transaction inner(*m_job); }), 3146);
                QCOMPARE(m_job->count(TabellaVani), 0);
                if (committed)
                    transaction.commit();
            }
            QCOMPARE(m_job->count(TabellaVani), committed ? 0 : 1);
        }
    }

    void statements()
    {
        const std::array<Value, 2> values{u"x"_s, 1};
        const QString update = u"UPDATE Vani SET Ambiente = :1 WHERE [Riferimento unità] = :2"_s;
        QCOMPARE(m_job->Execute(update, values), 1);
        // The number counts, not the place in the statement.
        const Query room = m_job->query(
            u"SELECT Ambiente FROM Vani WHERE Posizione = :2 AND Ambiente = :1"_s, values);
        QCOMPARE(room.text(0), u"x"_s);
        QCOMPARE(errorOf([&] { m_job->Execute(update, std::span(values).first(1)); }), 3146);
        QCOMPARE(errorOf([&] { m_job->Execute(u"UPDATE nulla SET x = 1"_s); }), 3078);
        QCOMPARE(errorOf([&] { m_job->Execute(u"UPDATE Vani SET Ambiente = \"x\""_s); }), 3146);
        QCOMPARE(errorOf([&] { m_job->appendTable({.name = u"vani"_s}); }), 3010);
        QCOMPARE(errorOf([&] {
                     (void)m_job->query(u"WITH n(i) AS (SELECT 1 UNION ALL SELECT i FROM n) "
                                        "SELECT count(*) FROM n"_s);
                 }),
                 3049);
    }

    /// A disk that is full, and a text that only another program can have stored.
    void outOfBounds()
    {
        (void)m_job->query(u"PRAGMA max_page_count = 1"_s);
        QCOMPARE(errorOf([&] { setField(*m_job, TabellaVariabili, 0, QString(100'000, u'x')); }),
                 3026);
        QCOMPARE(m_job->records(TabellaVariabili).text(0), u" "_s);
        RawFile(m_job->path()).run("UPDATE Variabili SET Var0 = hex(zeroblob(10000000))");
        QCOMPARE(errorOf([&] { (void)m_job->records(TabellaVariabili); }), 3163);
    }

private:
    [[nodiscard]] QString keys() const { return keysOf(m_job->records(TabellaUnita)); }

    std::unique_ptr<JobFolder> m_folder;
    std::unique_ptr<Database> m_job;
};

ZELTO_TEST(TestRecords)
#include "tst_records.moc"

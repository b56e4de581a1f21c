// SPDX-License-Identifier: GPL-3.0-or-later
#include "store_fixture.h"
#include "support/runner.h"

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

class TestFieldRules : public QObject
{
    Q_OBJECT

private slots:
    void stores()
    {
        const QString longest = QString(16, u'è') + u"%1'\"\t\r\U0001D11E"_s;
        QCOMPARE(store(TabellaUnita, u"Riferimento", longest), 0);
        QCOMPARE(store(TabellaUnita, u"Riferimento", longest + u'x'), 3163);
        QCOMPARE(store(TabellaUnita, u"Riferimento", u"a\0b"_s), 3421);
        QCOMPARE(store(TabellaUnita, u"Chiave", u""_s), 3315);
        QCOMPARE(store(TabellaUnita, u"Chiave", {}), 3058);
        QCOMPARE(store(TabellaVani, u"Posizione", 32767), 0);
        QCOMPARE(store(TabellaVani, u"Posizione", -32768), 0);
        QCOMPARE(store(TabellaVani, u"Posizione", 32768), 3421);
        QCOMPARE(store(TabellaVani, u"Posizione", -32769), 3421);
        QCOMPARE(store(TabellaVani, u"Posizione", u"1.5"_s), 3421);
        QCOMPARE(store(TabellaDatiGenerali, u"Relazione", QString(1 << 20, u'x')), 0);
        QCOMPARE(store(TabellaDatiGenerali, u"Relazione", QString((1 << 20) + 1, u'x')), 3163);
        QCOMPARE(store(TabellaDatiGenerali, u"Data", u"2024-02-29"_s), 0);
        QCOMPARE(store(TabellaDatiGenerali, u"Data", u"2023-02-29"_s), 3421);
        QCOMPARE(store(TabellaDatiGenerali, u"Data", u"2024-02-29 10:00"_s), 3421);
        QCOMPARE(store(TabellaDatiGenerali, u"Data", u"now"_s), 3421);
        QCOMPARE(store(TabellaDatiGenerali, u"Data", {}), 0);
        QCOMPARE(store(TabellaDatiGenerali, u"Chiave", 1LL << 31), 3421);
        QCOMPARE(store(TabellaVariabili, u"Var6", u""_s), 0);
        QCOMPARE(store(TabellaVariabili, u"Var6", u"\0"_s), 3421);
    }

    /// What no value of ours is but another program may have: bytes, a fraction, a number for a
    /// date. numbers.
    void fileKeepsTheRules()
    {
        for (const QString& change :
             {u"UPDATE Vani SET Ambiente = x'41'"_s, u"UPDATE Vani SET Posizione = 1.5"_s,
              u"UPDATE [Dati Generali] SET Data = 20240229"_s,
              u"INSERT INTO Vani (Chiave) VALUES (x'')"_s})
            QVERIFY2(errorOf([&] { m_job.Execute(change); }) != 0, qPrintable(change));
    }

private:
    /// The error of changing the field of the first record, -1 should it then hold something else
    /// than the value, or than before if that was refused.
    [[nodiscard]] int store(QStringView table, QStringView field, const Value& value)
    {
        const auto& fields = jobTable(table).fields;
        const auto ordinal =
            static_cast<int>(std::ranges::find(fields, field, &FieldDef::name) - fields.begin());
        const auto stored = [&] { return m_job.records(table).field(ordinal); };
        const Value before = stored();
        const int error = errorOf([&] { setField(m_job, table, ordinal, value); });
        return stored() == (error == 0 ? value : before) ? error : -1;
    }

    JobFolder m_folder;
    Database m_job = Database::open(m_folder.newJob());
};

ZELTO_TEST(TestFieldRules)
#include "tst_field_rules.moc"

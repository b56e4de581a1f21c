// SPDX-License-Identifier: GPL-3.0-or-later
#include "store_fixture.h"
#include "support/runner.h"

#include <QTest>

#include <rapidcheck.h>

using namespace Qt::StringLiterals;
using namespace zelto::store;
using namespace zelto::test;

Q_DECLARE_METATYPE(Value)

class TestFieldRules : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { m_job = std::make_unique<Database>(Database::open(m_folder.newJob())); }

    void stores_data()
    {
        QTest::addColumn<QString>("table");
        QTest::addColumn<QString>("field");
        QTest::addColumn<Value>("value");
        QTest::addColumn<int>("error");
        const auto row = [](const char* name, QStringView table, QStringView field,
                            const Value& value, int error = 0) {
            QTest::newRow(name) << table.toString() << field.toString() << value << error;
        };
        const QString accents(23, u'è');
        row("text at its length", TabellaUnita, u"Riferimento", accents);
        row("text too long", TabellaUnita, u"Riferimento", accents + u'x', 3163);
        row("text with NUL", TabellaUnita, u"Riferimento", u"a\0b"_s, 3421);
        row("empty key", TabellaUnita, u"Chiave", u""_s, 3315);
        row("Null key", TabellaUnita, u"Chiave", {}, 3058);
        row("long memo", TabellaDatiGenerali, u"Relazione", QString(1 << 20, u'x'));
        row("memo too long", TabellaDatiGenerali, u"Relazione", QString((1 << 20) + 1, u'x'), 3163);
        row("empty memo", TabellaVariabili, u"Var6", u""_s);
        row("memo with NUL", TabellaVariabili, u"Var6", u"\0"_s, 3421);
        row("integer", TabellaVani, u"Posizione", 32767);
        row("integer, lowest", TabellaVani, u"Posizione", -32768);
        row("integer too large", TabellaVani, u"Posizione", 32768, 3421);
        row("integer too low", TabellaVani, u"Posizione", -32769, 3421);
        row("integer no number", TabellaVani, u"Posizione", u"1.5"_s, 3421);
        row("date", TabellaDatiGenerali, u"Data", u"2024-02-29"_s);
        row("date not there", TabellaDatiGenerali, u"Data", u"2023-02-29"_s, 3421);
        row("date with time", TabellaDatiGenerali, u"Data", u"2024-02-29 10:00"_s, 3421);
        row("date today", TabellaDatiGenerali, u"Data", u"now"_s, 3421);
        row("date Null", TabellaDatiGenerali, u"Data", {});
        row("auto-number too large", TabellaDatiGenerali, u"Chiave", 1LL << 31, 3421);
    }

    void stores()
    {
        QFETCH(QString, table);
        QFETCH(QString, field);
        QFETCH(Value, value);
        QFETCH(int, error);
        const Value before = stored(table, field);
        QCOMPARE(store(table, field, value), error);
        QCOMPARE(stored(table, field), error == 0 ? value : before);
    }

    /// Another program that writes the file is held to the same rules.
    void fileKeepsTheRules()
    {
        for (const QString& change :
             {u"UPDATE Vani SET Ambiente = x'41'"_s,
              u"UPDATE Vani SET Ambiente = 'sedici caratteri'"_s,
              u"UPDATE Vani SET Posizione = 1.5"_s, u"UPDATE Vani SET Chiave = ''"_s,
              u"UPDATE [Dati Generali] SET Data = 20240229"_s,
              u"INSERT INTO Vani (Chiave) VALUES (NULL)"_s,
              u"INSERT INTO Vani (Chiave) VALUES (x'')"_s})
            QVERIFY2(errorOf([&] { m_job->Execute(change); }) != 0, qPrintable(change));
    }

    void anyTextStoredOrRefused()
    {
        QVERIFY(rc::check(
            "a text is stored unchanged when it fits and refused when it does not", [this] {
                const auto content = *rc::gen::container<std::u32string>(
                    rc::gen::elementOf(std::u32string(U"aÀ€\U0001D11E'\"%1\t\r\n\0 ", 13)));
                const QString text = QString::fromStdU32String(content);
                const bool fits = content.size() <= 15 && !text.contains(QChar(u'\0'));
                RC_ASSERT((store(TabellaVani, u"Ambiente", text) == 0) == fits);
                RC_ASSERT(!fits || stored(TabellaVani, u"Ambiente") == Value(text));
            }));
    }

private:
    /// The error of changing the field of the first record.
    [[nodiscard]] int store(QStringView table, QStringView field, const Value& value)
    {
        return errorOf([&] { setField(*m_job, table, ordinalOf(table, field), value); });
    }
    [[nodiscard]] Value stored(QStringView table, QStringView field)
    {
        return m_job->records(table).field(ordinalOf(table, field));
    }
    static int ordinalOf(QStringView table, QStringView field)
    {
        const auto& fields = jobTable(table).fields;
        return static_cast<int>(std::ranges::find(fields, field, &FieldDef::name) - fields.begin());
    }

    JobFolder m_folder;
    std::unique_ptr<Database> m_job;
};

ZELTO_TEST(TestFieldRules)
#include "tst_field_rules.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register_lists.h"
#include "register_fixture.h"
#include "support/runner.h"

using namespace Qt::StringLiterals;
using namespace zelto::registro;
using zelto::store::Database;

namespace {

QString numbersOf(const std::vector<Record>& units)
{
    QString numbers;
    for (const Record& unit : units)
        numbers += textOf(unit, UnitNumber);
    return numbers;
}

} // namespace

class TestRegisterLists : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        zelto::test::RawFile file(m_folder.newJob());
        file.run("DELETE FROM [Unità immobiliari]; DELETE FROM Vani;"
                 "INSERT INTO [Unità immobiliari] VALUES"
                 " ('    1', 1, 'Uno', 'Terra', 'A', '0', 'X x'), ('    2', 2, NULL, 'PRIMO', 'b', "
                 "NULL, NULL),"
                 " ('    4', 4, 'Quattro', 'Primo', NULL, NULL, NULL), ('    3', 3, 'Tre', "
                 "'D''angolo', 'Z', NULL, NULL);"
                 "INSERT INTO Vani (Chiave, [Riferimento unità], Posizione, Ambiente) VALUES"
                 " ('    1    2', 1, 2, NULL), ('    1    1', 1, 1, 'Sala');"
                 "UPDATE [Dati Generali] SET [Tabella 2] = ' Ascensore ', [Tabella 3] = '  ',"
                 " [Tabella Codici] = 'A' || char(9) || 'Scala A' || char(13, 10, 13, 10) || 'B';"
                 "UPDATE Variabili SET Var1 = '1.0' || char(9) || 'N' || char(13, 10) || '0.9' || "
                 "char(13, 10),"
                 " Var6 = NULL");
    }

    void filters()
    {
        const auto units = [this](const QString& scala, const QString& livello) {
            return numbersOf(readUnits(job(), {.scala = scala, .livello = livello}));
        };
        QCOMPARE(units({}, {}), u"1234"_s);
        QCOMPARE(units(u" "_s, u" "_s), u"1234"_s);
        QCOMPARE(units({}, u"primo"_s), u"24"_s);
        QCOMPARE(units(u"B"_s, {}), u"2"_s);
        QCOMPARE(units(u"a"_s, u"Primo"_s), QString());
        QCOMPARE(units({}, u"D'angolo"_s), u"3"_s);
    }

    void pickers()
    {
        const RegisterLists lists = LeggiDatiGenerali(job());
        QCOMPARE(lists.scale, QStringList({u"A"_s, u"B"_s}));
        QCOMPARE(lists.livelli.size(), 3); // one of the two spellings of "Primo"
        QCOMPARE(lists.tabelle[1], u"Ascensore"_s);
        QCOMPARE(lists.tabelle[2], QString());
        QCOMPARE(lists.coefficienti[0].size(), 2);
        QCOMPARE(lists.coefficienti[0][0].text(), u"[N] 1.0"_s);
        QCOMPARE(lists.coefficienti[0][1].text(), u"0.9"_s);
        QVERIFY(lists.coefficienti[5].empty());
    }

private:
    Database& job()
    {
        if (!m_database)
            m_database.emplace(Database::open(m_folder.file(u"LAVORO.ZLT"_s)));
        return *m_database;
    }

    zelto::test::JobFolder m_folder;
    std::optional<Database> m_database;
};

ZELTO_TEST(TestRegisterLists)
#include "tst_register_lists.moc"

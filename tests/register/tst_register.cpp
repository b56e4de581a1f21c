// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/register.h"
#include "register/register_lists.h"
#include "store/store_fixture.h"
#include "support/dump.h"
#include "support/runner.h"

#include <map>

using namespace Qt::StringLiterals;
using namespace zelto::registro;
using zelto::store::Database;
using zelto::test::dumpOf;
using zelto::test::errorOf;

namespace {

/// Units and rooms as "1 Int. 1: 1 Camera, 2; 2: 1", by unit number and position.
QString registerText(Database& lavoro)
{
    QStringList units;
    auto unit = lavoro.query(
        u"SELECT [Riferimento unità], Riferimento FROM [Unità immobiliari] ORDER BY Chiave"_s);
    for (; !unit.atEnd(); unit.next()) {
        QStringList rooms;
        auto room =
            lavoro.query(u"SELECT Posizione, Ambiente FROM Vani WHERE [Riferimento unità] = :1 "
                         u"ORDER BY Chiave"_s,
                         std::array{unit.field(0)});
        for (; !room.atEnd(); room.next())
            rooms << (room.text(0) + u' ' + room.text(1)).trimmed();
        units << (unit.text(0) + u' ' + unit.text(1)).trimmed() + u": "_s + rooms.join(u", "_s);
    }
    return units.join(u"; "_s);
}

/// Runs one command of a test: "UI", "V 1", "-UI 1 2", "-V 1: 2 3", "+UI 1", "+V 1: 2",
/// "u 1 Riferimento", "v 1: 2 Ambiente", "undo", "redo".
void run(Register& registro, const QString& command)
{
    const QStringList words = QString(command).remove(u':').split(u' ');
    const auto number = [&](int word) { return words.value(word).toInt(); };
    const auto numbers = [&](int first) {
        QList<int> all;
        for (int word = first; word < words.size(); ++word)
            all << number(word);
        return all;
    };
    const std::map<QString, std::function<RegisterChange()>> commands{
        {u"UI"_s, [&] { return registro.AggiungiUI(); }},
        {u"V"_s, [&] { return registro.AggiungiVano(number(1)); }},
        {u"-UI"_s, [&] { return registro.EliminaUI(numbers(1)); }},
        {u"-V"_s, [&] { return registro.EliminaVano(number(1), numbers(2)); }},
        {u"+UI"_s, [&] { return registro.DuplicaUI(numbers(1)); }},
        {u"+V"_s, [&] { return registro.DuplicaVano(number(1), numbers(2)); }},
        {u"u"_s,
         [&] {
             return registro.MemorizzaUI({{number(1), UnitRiferimento, words.value(2)}});
         }},
        {u"v"_s,
         [&] {
             return registro.MemorizzaVano(number(1), {{number(2), RoomAmbiente, words.value(3)}});
         }},
        {u"undo"_s, [&] { return registro.undo(); }},
        {u"redo"_s, [&] { return registro.redo(); }}};
    commands.at(words.front())();
}

} // namespace

class TestRegister : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        m_job.emplace(Database::open(m_folder.newJob(u"%1.ZLT"_s.arg(++m_jobs))));
        m_register.emplace(*m_job);
    }

    /// From a new job, whose unit 1 has room 1.
    void operations_data()
    {
        QTest::addColumn<QString>("commands");
        QTest::addColumn<QString>("content");
        const auto row = [](const char* name, const QString& commands, const QString& content) {
            QTest::addRow("%s", name) << commands << content;
        };
        row("new unit", u"UI"_s, u"1: 1; 2: 1"_s);
        row("highest number again", u"UI|-UI 2|UI"_s, u"1: 1; 2: 1"_s);
        row("a gap in the numbers stays", u"UI|UI|-UI 2|UI"_s, u"1: 1; 3: 1; 4: 1"_s);
        row("first unit", u"-UI 1|UI|u 1 A"_s, u"1 A: 1"_s);
        row("a gap in the rooms stays", u"V 1|V 1|-V 1: 2|V 1"_s, u"1: 1, 3, 4"_s);
        row("range of rooms", u"V 1|V 1|V 1|-V 1: 4 3 2"_s, u"1: 1"_s);
        row("copy of a unit keeps positions", u"V 1|V 1|-V 1: 2|v 1: 3 Cucina|u 1 A|+UI 1"_s,
            u"1 A: 1, 3 Cucina; 2 A: 1, 3 Cucina"_s);
        row("copy of a unit without rooms", u"-V 1: 1|+UI 1"_s, u"1: ; 2: 1"_s);
        row("copies of a range", u"UI|u 1 A|u 2 B|+UI 1 2"_s, u"1 A: 1; 2 B: 1; 3 A: 1; 4 B: 1"_s);
        row("copy of a room", u"v 1: 1 Sala|V 1|+V 1: 1"_s, u"1: 1 Sala, 2, 3 Sala"_s);
        row("copy of the empty row", u"-V 1: 1|+V 1: 0"_s, u"1: 1"_s);
        row("what does not exist", u"-UI 7|+UI 7|-V 1: 9|u 7 A|v 1: 9 A"_s, u"1: 1"_s);
        row("all at once", u"UI|UI|+UI 2|-V 3: 1|V 2|+V 2: 1 2|v 2: 3 Sala|-UI 1|u 2 A"_s,
            u"2 A: 1, 2, 3 Sala, 4; 3: ; 4: 1"_s);
        row("undo and redo", u"u 1 A|u 1 B|V 1|undo|undo|redo"_s, u"1 B: 1"_s);
        row("a change after undo", u"u 1 A|undo|u 1 C|redo"_s, u"1 C: 1"_s);
        row("nothing left to undo", u"undo|redo|u 1 A|undo|undo"_s, u"1: 1"_s);
    }
    void operations()
    {
        QFETCH(QString, commands);
        const QString start = dumpOf(*m_job);
        for (const QString& command : commands.split(u'|'))
            run(*m_register, command);
        QTEST(registerText(*m_job), "content");
        while (!m_register->redoCaption().isEmpty())
            m_register->redo();
        const QString end = dumpOf(*m_job);
        while (!m_register->undoCaption().isEmpty())
            m_register->undo();
        QCOMPARE(dumpOf(*m_job), start);
        while (!m_register->redoCaption().isEmpty())
            m_register->redo();
        QCOMPARE(dumpOf(*m_job), end);
    }

    void keysAndNull()
    {
        for (const QString& command : u"UI|V 2|v 2: 2 Sala|v 2: 2|+UI 2"_s.split(u'|'))
            run(*m_register, command);
        const QString dump = dumpOf(*m_job);
        QVERIFY(dump.contains(u"Unità immobiliari: [    3] [3] - - - - -"));
        QVERIFY(dump.contains(u"Vani: [    3    2] [3] [2] - - - - - - - -"));
    }

    void flagsAndSeveralCells()
    {
        const QString before = dumpOf(*m_job);
        const RegisterChange change = m_register->MemorizzaUI(
            {{1, UnitFlags, u"X         "_s}, {1, UnitLivello, u"Terra"_s}});
        QCOMPARE(change.units(), QList{1});
        QVERIFY(dumpOf(*m_job).contains(u"- [Terra] - - [X         ]"));
        QCOMPARE(m_register->undoCaption(), u"2 celle di U.I. 1"_s);
        m_register->undo();
        QCOMPARE(dumpOf(*m_job), before);
        QVERIFY(m_register->undoCaption().isEmpty());
    }

    /// One refused text, and nothing of its operation is stored or can be undone.
    void refusals()
    {
        run(*m_register, u"V 1"_s);
        const QString before = dumpOf(*m_job);
        QCOMPARE(errorOf([&] {
                     m_register->MemorizzaVano(
                         1, {{1, RoomAmbiente, u"Sala"_s}, {2, RoomAmbiente, QString(16, u'x')}});
                 }),
                 3163);
        QCOMPARE(dumpOf(*m_job), before);
        QCOMPARE(m_register->undoCaption(), u"aggiunta di un vano di U.I. 1"_s);
    }

    /// Another program's change in between is never overwritten by an undo.
    void undoAfterAForeignChange()
    {
        run(*m_register, u"u 1 A"_s);
        run(*m_register, u"V 1"_s);
        m_job->Execute(u"UPDATE [Unità immobiliari] SET Riferimento = 'altro'"_s);
        m_register->undo();
        const QString before = dumpOf(*m_job);
        QVERIFY_THROWS_EXCEPTION(zelto::store::DatabaseError, m_register->undo());
        QCOMPARE(dumpOf(*m_job), before);
        QVERIFY(m_register->undoCaption().isEmpty() && m_register->redoCaption().isEmpty());
    }

    /// What is taken back after a rename refers to the codes by their new names.
    void undoAfterARename()
    {
        constexpr int Destinazione = 5;
        m_job->Execute(u"UPDATE Variabili SET Var1 = '1' || char(9) || 'VAN' || char(13, 10) || "
                       "'2' || char(9) || 'BAL'"_s);
        m_job->Execute(u"UPDATE Vani SET Destinazione = '[VAN]' WHERE Chiave = '    1    1'"_s);
        m_register->MemorizzaVano(1, {{1, Destinazione, u"[BAL]"_s}});
        m_register->EliminaVano(1, {1});
        const auto texts = zelto::coefficients::renameCodes(
            *m_job, std::vector<zelto::coefficients::CodeRename>{{1, 1, u"VAN"_s, u"ABIT"_s},
                                                                 {1, 2, u"BAL"_s, u"VAN"_s}});
        m_register->followTexts(texts);
        const auto room = [&] { return textOf(readRooms(*m_job, 1).at(0), Destinazione); };
        m_register->undo();
        QCOMPARE(room(), u"[VAN]"_s);
        m_register->undo();
        QCOMPARE(room(), u"[ABIT]"_s);
        m_register->redo();
        QCOMPARE(room(), u"[VAN]"_s);
    }

    void filters()
    {
        for (const QString& values :
             {u"'    2', 2, NULL, 'PRIMO', 'b'"_s, u"'    4', 4, 'Quattro', 'Primo', NULL"_s,
              u"'    3', 3, 'Tre', 'D''angolo', 'Z'"_s})
            m_job->Execute(
                u"INSERT INTO [Unità immobiliari] VALUES (%1, NULL, NULL)"_s.arg(values));
        const auto units = [this](const QString& scala, const QString& livello) {
            QString numbers;
            for (const Record& unit : readUnits(*m_job, {.scala = scala, .livello = livello}))
                numbers += textOf(unit, UnitNumber);
            return numbers;
        };
        QCOMPARE(units({}, {}), u"1234"_s);
        QCOMPARE(units(u" "_s, u" "_s), u"1234"_s);
        QCOMPARE(units({}, u"primo"_s), u"24"_s);
        QCOMPARE(units(u"B"_s, {}), u"2"_s);
        QCOMPARE(units(u"a"_s, u"Primo"_s), QString());
        QCOMPARE(units({}, u"D'angolo"_s), u"3"_s);
        QCOMPARE(LeggiDatiGenerali(*m_job).livelli.size(), 2); // one of two spellings
    }

    void lists()
    {
        m_job->Execute(
            u"UPDATE [Dati Generali] SET [Tabella 2] = ' Ascensore ', [Tabella 3] = '  ',"
            " [Tabella Codici] = 'A' || char(9) || 'Scala A' || char(13, 10, 13, 10) || "
            "'B'"_s);
        m_job->Execute(u"UPDATE Variabili SET Var1 = '1.0' || char(9) || 'N' || char(13, 10) || "
                       "'0.9' || char(13, 10), Var6 = NULL"_s);
        const RegisterLists lists = LeggiDatiGenerali(*m_job);
        QCOMPARE(lists.scale, QStringList({u"A"_s, u"B"_s}));
        QCOMPARE(lists.tabelle[1], u"Ascensore"_s);
        QCOMPARE(lists.tabelle[2], QString());
        QCOMPARE(lists.coefficienti[0].size(), 2);
        QCOMPARE(lists.coefficienti[0][0].text(), u"[N] 1.0"_s);
        QCOMPARE(lists.coefficienti[0][1].text(), u"0.9"_s);
        QVERIFY(lists.coefficienti[5].empty());
    }

    void coefficientEntries()
    {
        QCOMPARE(chosenCoefficient({u"A"_s, u"1.05"_s, {}}, u"x"_s), u"[A]"_s);
        QCOMPARE(chosenCoefficient({{}, u" 1.05 "_s, {}}, u"x"_s), u"1.05"_s);
        QCOMPARE(chosenCoefficient({{}, u"[A 1.05"_s, {}}, u"x"_s), u"x"_s);
        QCOMPARE(chosenCoefficient({}, u"x"_s), QString());
    }

private:
    zelto::test::JobFolder m_folder;
    std::optional<Database> m_job;
    std::optional<Register> m_register;
    int m_jobs = 0;
};

ZELTO_TEST(TestRegister)
#include "tst_register.moc"

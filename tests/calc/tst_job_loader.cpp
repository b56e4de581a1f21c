// SPDX-License-Identifier: GPL-3.0-or-later
#include "calc/job_check.h"
#include "calc/job_loader.h"
#include "store/store_fixture.h"
#include "support/runner.h"

using namespace zelto::calc;
using namespace zelto::store;
using namespace zelto::test;

namespace {

/// A job whose records a test sets field by field.
struct Job
{
    ModelloLavoro load() { return CaricaLavoro(database); }

    void set(QStringView table, int ordinal, const Value& value)
    {
        setField(database, table, ordinal, value);
    }

    void addUnit(int number, const QString& riferimento = {})
    {
        database.writer(jobTable(TabellaUnita))
            .add(Record{unitKey(number), number, Value::nullIfEmpty(riferimento)});
    }

    /// Fields from "Ambiente" on, separated by "|"; an empty one stays Null.
    void addRoom(int unit, int position, const QString& fields)
    {
        Record record{roomKey(unit, position), unit, position};
        for (const QString& field : fields.split(u'|'))
            record.push_back(Value::nullIfEmpty(field));
        database.writer(jobTable(TabellaVani)).add(record);
    }

    JobFolder folder;
    Database database = Database::open(folder.newJob());
};

QString refusal(Job& job)
{
    try {
        job.load();
    } catch (const CalcError& error) {
        return QString::fromUtf8(error.what());
    }
    return {};
}

QStringList said(const std::vector<Osservazione>& osservazioni)
{
    QStringList lines;
    for (const Osservazione& osservazione : osservazioni)
        lines << testo(osservazione);
    return lines;
}

} // namespace

class TestJobLoader : public QObject
{
    Q_OBJECT

private slots:
    void newAndEmptyJobs()
    {
        Job job;
        const ModelloLavoro modello = job.load();
        QCOMPARE(modello.NumUI(), 1);
        QCOMPARE(modello.NumTabelle(), 0);
        QCOMPARE(modello.datiGenerali, (QMap<QString, QString>{{u"Chiave"_s, u"1"_s}}));
        QCOMPARE(modello.unita.front().vani, std::vector<Vano>(1));
        for (const auto& table : {u"Dati Generali"_s, u"Variabili"_s, u"Unità immobiliari"_s})
            job.database.Execute(u"DELETE FROM \"%1\""_s.arg(table));
        QCOMPARE(job.load().NumUI(), 0);
    }

    void generalData()
    {
        Job job;
        const auto table = TabellaDatiGenerali;
        job.set(table, 1, u"Condominio"_s);
        job.set(table, 2, u"Via Roma 1"_s);
        job.set(table, 4, u"2024-03-09"_s);
        job.set(table, 7, u"Ascensore"_s); // "Tabella 2": the names are packed, the flags are not
        job.set(table, 15, u"Acqua"_s);
        job.set(table, 16, u"a\tScala A\t30\r\n\t\t\r\nB\t\t12,5\r\nA\tseconda\t99\r\n"_s);
        job.set(TabellaUnita, 4, u"b"_s);
        job.set(TabellaUnita, 5, u"1.20 m"_s);
        job.set(TabellaUnita, 6, u" X"_s);

        const ModelloLavoro modello = job.load();
        QCOMPARE(modello.datiGenerali[u"Descrizionee"_s], u"Via Roma 1"_s);
        QCOMPARE(modello.datiGenerali[u"Data"_s], u"09.03.2024"_s);
        QCOMPARE(modello.NomeTabella, (std::vector<QString>{u"Ascensore"_s, u"Acqua"_s}));
        QVERIFY(!modello.unita[0].isInTable(1));
        QVERIFY(modello.unita[0].isInTable(2));
        QCOMPARE(modello.unita[0].CodScala, u"B"_s);
        QCOMPARE(modello.unita[0].HPiano, 1.2F);
        QCOMPARE(modello.codiceScala(u"A"_s)->titolo, u"Scala A"_s);
        QCOMPARE(modello.codiceScala(u"B"_s)->percentuale, 12.5);
        QCOMPARE(modello.codiceScala(u"C"_s), nullptr);
    }

    void coefficients()
    {
        const auto room = [](const QString& list, const QString& prospetto) {
            Job job;
            job.set(TabellaVariabili, 3, list); // list 3 resolves "Prospetto"
            job.addRoom(1, 2, u"Sala|10|2|1|%1|1|1|0.5"_s.arg(prospetto));
            return job.load().unita[0].vani[1];
        };
        const QString list =
            u"1.10\tCamera\tx\r\n0.9\tAB\t\r\n0.8\tA\t\r\n0.7\t\t\r\n0.6\tAB\t\r\n"_s;
        const Vano camera = room(list, u"[Camera]"_s);
        QCOMPARE(camera.CP, 1.1F);
        QCOMPARE(camera.CF, 20.0F);
        QCOMPARE(camera.CT, 10 * 1.1F);
        QCOMPARE(room(list, u"[AB]"_s).CP, 0.9F); // the first of two
        QCOMPARE(room(list, u"[A]"_s).CP, 0.8F);  // the prefix of another name
        QCOMPARE(room(list, u"[Cam"_s).CP, 1.1F); // an open bracket matches what it begins
        QCOMPARE(room(list, u"[camera]"_s).CP, 0.0F);
        QCOMPARE(room(list, u"[X]"_s).CP, 0.0F);
        QCOMPARE(room(list, u"1.5"_s).CP, 1.5F);
        QCOMPARE(room(list, u"1,5"_s).CP, 1.0F);
        QCOMPARE(room(list, {}).CP, 0.0F);
        QCOMPARE(room(u" "_s, u"[C]"_s).CP, 0.0F);
        // A list ends where a value is missing, and with entry 200.
        QCOMPARE(room(u"1\tA\t\r\n\tB\t\r\n2\tC\t\r\n"_s, u"[C]"_s).CP, 0.0F);
        const auto after = [](int entries) {
            return u"1\tA\t\r\n"_s.repeated(entries) + u"2\tC\t\r\n"_s;
        };
        QCOMPARE(room(after(199), u"[C]"_s).CP, 2.0F);
        QCOMPARE(room(after(200), u"[C]"_s).CP, 0.0F);
    }

    void unitsAndRoomsInKeyOrder()
    {
        Job job;
        job.addUnit(10);
        job.addUnit(2);
        job.addRoom(10, 10, u"c|1"_s);
        job.addRoom(10, 9, u"b|1"_s);
        job.addRoom(2, 1, u"a|1"_s);
        job.addRoom(3, 1, u"orphan|1"_s);
        QStringList order;
        for (const UnitaImmobiliare& unita : job.load().unita)
            for (const Vano& vano : unita.vani)
                order << QString::number(unita.RifUI) + vano.Ambiente;
        QCOMPARE(order.join(u' '), u"1 2a 10b 10c"_s);
    }

    /// After any change of one unit, or none, model and check are as if the job were read anew.
    void oneUnitAtATime()
    {
        const QString rekeyed =
            u"UPDATE [Unità immobiliari] SET Chiave = '%1' WHERE [Riferimento unità] = 3"_s;
        for (const QString& change :
             {u"UPDATE Vani SET Posizione = 2 WHERE Chiave = '    3    2'"_s,
              u"UPDATE Vani SET [Consistenza reale] = '7.5' WHERE Chiave = '    3    2'"_s,
              u"INSERT INTO Vani (Chiave, [Riferimento unità], Posizione) "
              "VALUES ('    3    9', 3, 9)"_s,
              u"DELETE FROM [Unità immobiliari] WHERE Chiave = '    3'"_s, rekeyed.arg(u"    6"_s),
              rekeyed.arg(u"   99"_s),
              u"INSERT INTO [Unità immobiliari] (Chiave, [Riferimento unità]) "
              "VALUES ('    5', 3)"_s}) {
            Job job;
            for (const int unit : {2, 3, 4, 7, 8}) {
                job.addUnit(unit, u"Int. %1"_s.arg(unit));
                job.addRoom(unit, 2, u"Camera|12.5|1|1.1|1|1|1|1"_s);
            }
            ModelloLavoro modello = job.load();
            ControlloLavoro controllo(LeggiLavoroScritto(job.database));
            QCOMPARE(job.database.Execute(change), 1);
            RicaricaUnita(job.database, modello, 3);
            QVERIFY2(modello == job.load(), qPrintable(change));
            controllo.rileggiUnita(job.database, 3);
            QVERIFY2(said(controllo.osservazioni()) ==
                         said(controlla(LeggiLavoroScritto(job.database))),
                     qPrintable(change));
        }
    }

    void refusesMoreThanTheModelHolds()
    {
        Job units;
        for (int n = 2; n <= MostUnits; ++n)
            units.addUnit(n);
        QCOMPARE(units.load().NumUI(), MostUnits);
        units.addUnit(MostUnits + 1);
        QCOMPARE(
            refusal(units),
            u"La tabella «Unità immobiliari» contiene più di 300 unità, il massimo di un lavoro."_s);

        Job rooms;
        rooms.addUnit(7, u"%2 Rossi"_s);
        for (int r = 1; r <= MostRooms; ++r)
            rooms.addRoom(7, r, u"Sala"_s);
        QCOMPARE(rooms.load().unita[1].vani.size(), static_cast<std::size_t>(MostRooms));
        rooms.addRoom(7, MostRooms + 1, u"Sala"_s);
        QCOMPARE(refusal(rooms),
                 u"L'unità 7 (%2 Rossi) ha più di 50 vani, il massimo di un'unità."_s);
    }

    void refusesSizesBeyondNumbers()
    {
        Job job;
        job.addRoom(1, 2, u"Sala|9E37|9E9|1|1|1|1|1"_s);
        QVERIFY(refusal(job).contains(u"nel vano 2"));
        Job height;
        height.set(TabellaUnita, 5, u"1E99"_s);
        QVERIFY(refusal(height).contains(u"L'unità 1 "));
    }

    void missingTablesAreErrors()
    {
        Job job;
        job.database.Execute(u"DROP TABLE Variabili"_s);
        QCOMPARE(errorOf([&] { job.load(); }), static_cast<int>(ErrorNumber::TableNotFound));
    }
};

ZELTO_TEST(TestJobLoader)
#include "tst_job_loader.moc"

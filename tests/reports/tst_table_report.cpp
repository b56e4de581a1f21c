// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/allocation_section.h"
#include "reports/tables.h"
#include "support/building.h"
#include "support/runner.h"

#include <QRegularExpression>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace zelto::reports;
using zelto::calc::ModelloLavoro;

namespace {

/// Two flats on staircase A, a shop without staircase, one flat on staircase B at height 0.
ModelloLavoro sample()
{
    ModelloLavoro modello =
        zelto::test::building({{.size = 60, .scala = u"A"_s, .HPiano = 1.2F, .flags = u"X"_s},
                               {.size = 40, .scala = u"A"_s, .HPiano = 0},
                               {.size = 50, .flags = u"X"_s},
                               {.size = 50, .scala = u"B"_s, .HPiano = 2}});
    modello.NomeTabella = {u"Ascensore"_s, u"Acqua"_s};
    return modello;
}

TableReport staircase(const ModelloLavoro& modello, const QString& codice)
{
    return tabellaScala(
        modello, zelto::calc::calcolaScala(modello, zelto::calc::calcolaConsistenze(modello),
                                           codice, zelto::calc::IndicePiano::PerConsistenza));
}

} // namespace

class TestTableReport : public QObject
{
    Q_OBJECT

private slots:
    void tables_data()
    {
        QTest::addColumn<QString>("title");
        QTest::addColumn<QString>("rows"); // units joined by ";"
        QTest::addColumn<QString>("totals");
        QTest::addColumn<int>("kind");
        QTest::addRow("general")
            << u"DETERMINAZIONE MILLESIMI GENERALI"_s
            << u"Int. 1|Piano 1| 60.0000| 300.000;Int. 2|Piano 2| 40.0000| 200.000;"
               "Int. 3|Piano 3| 50.0000| 250.000;Int. 4|Piano 4| 50.0000| 250.000"_s
            << u"|||1000.000"_s << 0;
        QTest::addRow("special")
            << u"  DETERMINAZIONE MILLESIMI Ascensore"_s
            << u"Int. 1|Piano 1| 60.0000| 545.455;Int. 2|Piano 2| ------ | ------ ;"
               "Int. 3|Piano 3| 50.0000| 454.545;Int. 4|Piano 4| ------ | ------ "_s
            << u"|||1000.000"_s << 1;
        QTest::addRow("nobody takes part")
            << u"  DETERMINAZIONE MILLESIMI Acqua"_s
            << u"Int. 1|Piano 1| ------ | ------ ;Int. 2|Piano 2| ------ | ------ ;"
               "Int. 3|Piano 3| ------ | ------ ;Int. 4|Piano 4| ------ | ------ "_s
            << u"|||1000.000"_s << 2;
        QTest::addRow("staircase")
            << u"  DETERMINAZIONE MILLESIMI SCALA A"_s
            << u"Int. 1|Piano 1| 60.0000| 600.000| 1.2000| 1000.000| 800.000;"
               "Int. 2|Piano 2| 40.0000| 400.000| ------ | ------ | 200.000;"
               "Int. 3|Piano 3| ------ | ------ | ------ | ------ | ------ ;"
               "Int. 4|Piano 4| ------ | ------ | ------ | ------ | ------ "_s
            << u"|||1000.000||1000.000|1000.000"_s << 3;
    }

    void tables()
    {
        QFETCH(int, kind);
        const ModelloLavoro modello = sample();
        const TableReport table = kind == 0   ? tabellaGenerale(modello)
                                  : kind == 3 ? staircase(modello, u"A"_s)
                                              : tabellaSpeciale(modello, kind);
        QTEST(table.title, "title");
        QStringList rows;
        for (const QStringList& row : table.rows)
            rows << row.join(u'|').replace(QRegularExpression(u" +"_s), u" "_s);
        QTEST(rows.join(u';'), "rows");
        QTEST(table.totals.join(u'|'), "totals");
    }

    void staircaseTitles_data()
    {
        QTest::addColumn<QString>("codice");
        QTest::addColumn<QString>("titolo");
        QTest::addColumn<QString>("title");
        QTest::addRow("titled") << u"a"_s << u"Scala A"_s
                                << u"  DETERMINAZIONE MILLESIMI Scala A"_s;
        QTest::addRow("blank title") << u"A"_s << u" "_s << u"  DETERMINAZIONE MILLESIMI SCALA A"_s;
        QTest::addRow("not listed")
            << u"B"_s << u"Scala B"_s << u"  DETERMINAZIONE MILLESIMI SCALA A"_s;
    }

    void staircaseTitles()
    {
        QFETCH(QString, codice);
        QFETCH(QString, titolo);
        ModelloLavoro modello;
        modello.tabellaCodici = {{.codice = codice, .titolo = titolo}};
        QTEST(titoloScala(modello, u"A"_s), "title");
    }

    void allocation_data()
    {
        QTest::addColumn<QString>("importo");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("parts"); // of the four units and the total
        QTest::addRow("general") << u"1234,5"_s << 0 << u"370,35|246,90|308,62|308,62|1 234,50"_s;
        QTest::addRow("half hundredths to even") << u"0.01"_s << 0 << u"||||0,01"_s;
        QTest::addRow("special") << u"100"_s << 1 << u"54,55||45,45||100,00"_s;
        QTest::addRow("staircase") << u"-1 000.00"_s << 3 << u"- 800,00|- 200,00|||-1 000,00"_s;
        QTest::addRow("nothing") << u""_s << 0 << u"||||"_s;
    }

    void allocation()
    {
        QFETCH(QString, importo);
        QFETCH(int, kind);
        OpzioniRiparto opzioni{.importo = importo, .quote = MillesimiGenerali{}};
        if (kind == 1)
            opzioni.quote = TabellaSpecifica{1};
        if (kind == 3)
            opzioni.quote = MillesimiScala{.codice = u"A"_s};
        const TableReport table = tabellaRiparto(sample(), opzioni);
        QStringList parts;
        for (const QStringList& row : table.rows) {
            QCOMPARE(row.size(), static_cast<qsizetype>(table.columns.size()));
            parts << row.last();
        }
        parts << table.totals.last();
        QTEST(parts.join(u'|'), "parts");
    }

    void asText()
    {
        ModelloLavoro modello = zelto::test::building({{.size = 50, .scala = u"B"_s, .HPiano = 2}});
        const QStringList lines = tableAsText(staircase(modello, u"B"_s)).split(u'\n');
        QCOMPARE(lines.size(), 8);
        QCOMPARE(lines[0], u"DETERMINAZIONE MILLESIMI SCALA B"_s);
        QCOMPARE(
            lines[2],
            u"RIFERIMENTO  LIVELLO  CONS.VIRT.  MILL.PROP.  IND.H.P.  MILL.PIANO  MILL.SCALA"_s);
        QCOMPARE(
            lines[4],
            u"Int. 1       Piano 1     50.0000    1000.000    2.0000    1000.000    1000.000"_s);
        QCOMPARE(
            lines[6],
            u"                                    1000.000              1000.000    1000.000"_s);
        for (const int rule : {1, 3, 5})
            QCOMPARE(lines[rule], QString(lines[2].size(), u'-'));
    }
};

ZELTO_TEST(TestTableReport)
#include "tst_table_report.moc"

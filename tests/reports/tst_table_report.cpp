// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/allocation_table.h"
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

/// The table of a kind, by its place, and its key.
TableReport tableOf(const ModelloLavoro& modello, std::size_t kind, const QString& key)
{
    const TableKind& chosen = tableKinds()[kind];
    for (const TableChoice& choice : chosen.choices(modello))
        if (choice.key == key)
            return chosen.table(SizedJob(modello), choice,
                                zelto::calc::IndicePiano::PerConsistenza);
    return {};
}

QString rowText(const std::vector<Cell>& cells)
{
    QStringList texts;
    for (const Cell& cell : cells)
        texts << cell.text;
    return texts.join(u'|').replace(QRegularExpression(u" +"_s), u" "_s);
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
        QTest::addColumn<QString>("key");
        QTest::addRow("general")
            << u"DETERMINAZIONE MILLESIMI GENERALI"_s
            << u"Int. 1|Piano 1| 60.0000| 300.000;Int. 2|Piano 2| 40.0000| 200.000;"
               "Int. 3|Piano 3| 50.0000| 250.000;Int. 4|Piano 4| 50.0000| 250.000"_s
            << u"|||1000.000"_s << 0 << QString();
        QTest::addRow("special")
            << u"  DETERMINAZIONE MILLESIMI Ascensore"_s
            << u"Int. 1|Piano 1| 60.0000| 545.455;Int. 2|Piano 2| ------ | ------ ;"
               "Int. 3|Piano 3| 50.0000| 454.545;Int. 4|Piano 4| ------ | ------ "_s
            << u"|||1000.000"_s << 1 << u"1"_s;
        QTest::addRow("staircase")
            << u"  DETERMINAZIONE MILLESIMI SCALA A"_s
            << u"Int. 1|Piano 1| 60.0000| 600.000| 1.2000| 1000.000| 800.000;"
               "Int. 2|Piano 2| 40.0000| 400.000| ------ | ------ | 200.000;"
               "Int. 3|Piano 3| ------ | ------ | ------ | ------ | ------ ;"
               "Int. 4|Piano 4| ------ | ------ | ------ | ------ | ------ "_s
            << u"|||1000.000||1000.000|1000.000"_s << 2 << u"A"_s;
    }

    void tables()
    {
        QFETCH(int, kind);
        QFETCH(QString, key);
        const TableReport table = tableOf(sample(), static_cast<std::size_t>(kind), key);
        QTEST(table.title, "title");
        QStringList rows;
        for (const TableRow& row : table.rows) {
            rows << rowText(row.cells);
            for (const Cell& cell : row.cells)
                QCOMPARE(cell.value.value_or(0), cell.text.trimmed().toDouble());
        }
        QTEST(rows.join(u';'), "rows");
        QTEST(rowText(table.totals), "totals");
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
        ModelloLavoro modello = sample();
        modello.tabellaCodici = {{.codice = codice, .titolo = titolo}};
        QTEST(tableOf(modello, 2, u"A"_s).title, "title");
    }

    void allocation_data()
    {
        QTest::addColumn<QString>("importo");
        QTest::addColumn<int>("kind");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("parts"); // of the four units and the total
        QTest::addRow("general") << u"1234,5"_s << 0 << QString()
                                 << u"370,35|246,90|308,62|308,62|1 234,50"_s;
        QTest::addRow("half hundredths to even") << u"0.01"_s << 0 << QString() << u"||||0,01"_s;
        QTest::addRow("special") << u"100"_s << 1 << u"1"_s << u"54,55||45,45||100,00"_s;
        QTest::addRow("staircase")
            << u"-1 000.00"_s << 2 << u"A"_s << u"- 800,00|- 200,00|||-1 000,00"_s;
        QTest::addRow("nothing") << u""_s << 0 << QString() << u"||||"_s;
    }

    void allocation()
    {
        QFETCH(QString, importo);
        QFETCH(int, kind);
        QFETCH(QString, key);
        const ModelloLavoro modello = sample();
        const TableKind& shares = tableKinds()[static_cast<std::size_t>(kind)];
        const TableReport table = tabellaRiparto(
            SizedJob(modello), {.importo = importo, .quote = {.kind = &shares, .key = key}});
        QStringList parts;
        for (const TableRow& row : table.rows) {
            QCOMPARE(row.cells.size(), table.columns.size());
            parts << row.cells.back().text;
        }
        parts << table.totals.back().text;
        QTEST(parts.join(u'|'), "parts");
    }

    void asText()
    {
        ModelloLavoro modello = zelto::test::building({{.size = 50, .scala = u"B"_s, .HPiano = 2}});
        const QStringList lines = tableAsText(tableOf(modello, 2, u"B"_s)).split(u'\n');
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

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
    void tables()
    {
        const auto table = [](std::size_t kind, const QString& key) {
            const TableReport table = tableOf(sample(), kind, key);
            QStringList rows{table.title};
            for (const TableRow& row : table.rows) {
                rows << rowText(row.cells);
                for (const Cell& cell : row.cells)
                    if (cell.value.value_or(0) != cell.text.trimmed().toDouble())
                        rows << u"another value than "_s + cell.text;
            }
            return rows << rowText(table.totals);
        };
        QCOMPARE(table(0, {}),
                 (QStringList{
                     u"DETERMINAZIONE MILLESIMI GENERALI"_s, u"Int. 1|Piano 1| 60.0000| 300.000"_s,
                     u"Int. 2|Piano 2| 40.0000| 200.000"_s, u"Int. 3|Piano 3| 50.0000| 250.000"_s,
                     u"Int. 4|Piano 4| 50.0000| 250.000"_s, u"|||1000.000"_s}));
        QCOMPARE(table(1, u"1"_s),
                 (QStringList{u"  DETERMINAZIONE MILLESIMI Ascensore"_s,
                              u"Int. 1|Piano 1| 60.0000| 545.455"_s,
                              u"Int. 2|Piano 2| ------ | ------ "_s,
                              u"Int. 3|Piano 3| 50.0000| 454.545"_s,
                              u"Int. 4|Piano 4| ------ | ------ "_s, u"|||1000.000"_s}));
        QCOMPARE(table(2, u"A"_s),
                 (QStringList{u"  DETERMINAZIONE MILLESIMI SCALA A"_s,
                              u"Int. 1|Piano 1| 60.0000| 600.000| 1.2000| 1000.000| 800.000"_s,
                              u"Int. 2|Piano 2| 40.0000| 400.000| ------ | ------ | 200.000"_s,
                              u"Int. 3|Piano 3| ------ | ------ | ------ | ------ | ------ "_s,
                              u"Int. 4|Piano 4| ------ | ------ | ------ | ------ | ------ "_s,
                              u"|||1000.000||1000.000|1000.000"_s}));
    }

    void staircaseTitles()
    {
        const auto title = [](const QString& codice, const QString& titolo) {
            ModelloLavoro modello = sample();
            modello.tabellaCodici = {{.codice = codice, .titolo = titolo}};
            return tableOf(modello, 2, u"A"_s).title;
        };
        QCOMPARE(title(u"a"_s, u"Scala A"_s), u"  DETERMINAZIONE MILLESIMI Scala A"_s);
        QCOMPARE(title(u"A"_s, u" "_s), u"  DETERMINAZIONE MILLESIMI SCALA A"_s);
        QCOMPARE(title(u"B"_s, u"Scala B"_s), u"  DETERMINAZIONE MILLESIMI SCALA A"_s);
    }

    /// The parts of the four units, and the amount.
    void allocation()
    {
        const auto parts = [](const QString& amount, std::size_t kind, const QString& key) {
            const ModelloLavoro modello = sample();
            const TableReport table = tabellaRiparto(
                SizedJob(modello),
                {.importo = amount, .quote = {.kind = &tableKinds()[kind], .key = key}});
            QStringList parts;
            for (const TableRow& row : table.rows)
                parts << row.cells.at(table.columns.size() - 1).text;
            return (parts << table.totals.back().text).join(u'|');
        };
        QCOMPARE(parts(u"1234,5"_s, 0, {}), u"370,35|246,90|308,62|308,62|1 234,50"_s);
        QCOMPARE(parts(u"0.01"_s, 0, {}), u"||||0,01"_s); // half hundredths go to even
        QCOMPARE(parts(u"100"_s, 1, u"1"_s), u"54,55||45,45||100,00"_s);
        QCOMPARE(parts(u"-1 000.00"_s, 2, u"A"_s), u"- 800,00|- 200,00|||-1 000,00"_s);
        QCOMPARE(parts(u""_s, 0, {}), u"||||"_s);
    }

    /// Every figure differs, so that each is seen to stand in its own column.
    void asText()
    {
        const ModelloLavoro modello =
            zelto::test::building({{.size = 60, .scala = u"B"_s, .HPiano = 3},
                                   {.size = 40, .scala = u"B"_s, .HPiano = 1}});
        const QString rule(78, u'-');
        const QStringList expected{
            u"DETERMINAZIONE MILLESIMI SCALA B"_s,
            rule,
            u"RIFERIMENTO  LIVELLO  CONS.VIRT.  MILL.PROP.  IND.H.P.  MILL.PIANO  MILL.SCALA"_s,
            rule,
            u"Int. 1       Piano 1     60.0000     600.000    3.0000     818.182     709.091"_s,
            u"Int. 2       Piano 2     40.0000     400.000    1.0000     181.818     290.909"_s,
            rule,
            u"                                    1000.000              1000.000    1000.000"_s,
            QString()};
        QCOMPARE(tableAsText(tableOf(modello, 2, u"B"_s)).split(u'\n'), expected);
    }
};

ZELTO_TEST(TestTableReport)
#include "tst_table_report.moc"

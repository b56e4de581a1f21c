// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/runner.h"
#include "text/table_text.h"

#include <QTest>

#include <rapidcheck.h>

using namespace Qt::StringLiterals;
using namespace zelto::text;

class TestTableText : public QObject
{
    Q_OBJECT

private slots:
    /// As a table of 2 × 3 cells, rows joined by "/", cells by "|".
    void reading()
    {
        const auto cells = [](QStringView text) {
            const CellTable table = TextToTable(text, 2, 3);
            QStringList rows;
            for (int row = 1; row <= 2; ++row)
                rows << QStringList{table.at(row, 1), table.at(row, 2), table.at(row, 3)}.join(
                    u'|');
            return rows.join(u'/');
        };
        QCOMPARE(cells(u"1\tA\tUno\r\n2\tB\tDue\r\n"), u"1|A|Uno/2|B|Due"_s);
        QCOMPARE(cells(u"1\tA\tUno\r\n2"), u"1|A|Uno/2||"_s);
        QCOMPARE(cells(u" \r\n2\tB\r\n"), u"||/2|B|"_s); // a blank line keeps its row
        QCOMPARE(cells(u"1\tA\tUno\tx\ty\r\n"), u"1|A|Uno/||"_s);
        QCOMPARE(cells(u"1\r\n2\r\n3\r\n"), u"1||/2||"_s);
        QCOMPARE(cells(u"  1 \t  A \t  U d  \r\n"), u"  1 |A |U d/||"_s);
        QCOMPARE(cells(u" "), u"||/||"_s);
        QCOMPARE(cells(u"1\n2\tA"), u"1\n2|A|/||"_s); // a line feed alone is text
        QCOMPARE(cells(u""), u"||/||"_s);
    }

    void cellsNotReachedKeepTheirText()
    {
        CellTable table(3, 3);
        table.at(0, 1) = u"head"_s;
        table.at(1, 2) = u"kept"_s;
        TextToGrid(u"1\r\n", table, {1, 2, 1, 2});
        QCOMPARE(GridToText(table, {0, 2, 0, 2}), u"\thead\t\r\n\t1\tkept\r\n\t\t\r\n"_s);
    }

    void countsRows()
    {
        QCOMPARE(rowCount(QString()), 1);
        QCOMPARE(rowCount(u" "_s), 1);
        QCOMPARE(rowCount(u"a\r\nb\r\n"_s), 2);
        QCOMPARE(rowCount(u"a\r\nb"_s), 2);
    }

    void everyTableReadsBack()
    {
        const auto cell =
            rc::gen::container<std::string>(rc::gen::element('a', '1', '.', '[', ']', '%'));
        QVERIFY(rc::check("text of a table gives the table", [&] {
            const CellRange range{1, *rc::gen::inRange(1, 6), 1, *rc::gen::inRange(1, 5)};
            CellTable table(range.lastRow + 1, range.lastColumn + 1);
            for (int row = 1; row <= range.lastRow; ++row)
                for (int column = 1; column <= range.lastColumn; ++column)
                    table.at(row, column) = QString::fromStdString(*cell);
            const QString text = GridToText(table, range);
            const CellTable back = TextToTable(text, range.lastRow, range.lastColumn);
            RC_ASSERT(GridToText(back, range) == text);
            RC_ASSERT(rowCount(text) == range.lastRow);
        }));
    }
};

ZELTO_TEST(TestTableText)
#include "tst_table_text.moc"

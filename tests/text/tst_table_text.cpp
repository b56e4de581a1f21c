// SPDX-License-Identifier: GPL-3.0-or-later
#include "support/runner.h"
#include "text/literals.h"
#include "text/table_text.h"

#include <QTest>

#include <rapidcheck.h>

using namespace Qt::StringLiterals;
using namespace zelto::text;

class TestTableText : public QObject
{
    Q_OBJECT

private slots:
    void reading_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("cells"); // of a 2 × 3 table, rows joined by "/", cells by "|"
        QTest::addRow("whole") << u"1\tA\tUno\r\n2\tB\tDue\r\n"_s << u"1|A|Uno/2|B|Due"_s;
        QTest::addRow("last line open") << u"1\tA\tUno\r\n2"_s << u"1|A|Uno/2||"_s;
        QTest::addRow("blank line keeps its row") << u" \r\n2\tB\r\n"_s << u"||/2|B|"_s;
        QTest::addRow("surplus cells dropped") << u"1\tA\tUno\tx\ty\r\n"_s << u"1|A|Uno/||"_s;
        QTest::addRow("surplus rows dropped") << u"1\r\n2\r\n3\r\n"_s << u"1||/2||"_s;
        QTest::addRow("blanks") << u"  1 \t  A \t  U d  \r\n"_s << u"  1 |A |U d/||"_s;
        QTest::addRow("single blank") << u" "_s << u"||/||"_s;
        QTest::addRow("line feed alone is text") << u"1\n2\tA"_s << u"1\n2|A|/||"_s;
        QTest::addRow("empty") << u""_s << u"||/||"_s;
    }

    void reading()
    {
        QFETCH(QString, text);
        const CellTable table = TextToTable(text, 2, 3);
        QStringList rows;
        for (int row = 1; row <= 2; ++row)
            rows << QStringList{table.at(row, 1), table.at(row, 2), table.at(row, 3)}.join(u'|');
        QTEST(rows.join(u'/'), "cells");
    }

    void cellsNotReachedKeepTheirText()
    {
        CellTable table(3, 3);
        table.at(0, 1) = u"head"_s;
        table.at(1, 2) = u"kept"_s;
        TextToGrid(u"1\r\n", table,
                   {.firstRow = 1, .lastRow = 2, .firstColumn = 1, .lastColumn = 2});
        QCOMPARE(table.at(1, 1), u"1"_s);
        QCOMPARE(table.at(1, 2), u"kept"_s);
        QCOMPARE(table.at(0, 1), u"head"_s);
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

// SPDX-License-Identifier: GPL-3.0-or-later
// What is selected in a grid, and blocks of cells to and from the clipboard.
#include "grid_desk.h"
#include "support/runner.h"

#include <QAbstractButton>
#include <QClipboard>
#include <QHeaderView>

using namespace Qt::StringLiterals;
using namespace zelto::widgets;
using Desk = zelto::test::GridDesk;
using zelto::test::press;

namespace {

/// The content after a paste at the place, or why nothing was pasted.
QString pasted(const QString& clipboard, int row, int column,
               Grid::AtEnd atEnd = Grid::AtEnd::Stays)
{
    Desk desk(atEnd);
    QSignalSpy refusals(&desk.grid, &Grid::pasteRefused);
    desk.grid.setMostRows([] { return 4; });
    QApplication::clipboard()->setText(clipboard);
    desk.grid.setCurrentCell(row, column);
    press(u"<Ctrl+V>"_s);
    if (refusals.isEmpty())
        return desk.changes.size() == 1 ? desk.content() : u"(wrong)"_s;
    const bool same = desk.changes.isEmpty() && desk.content() == u"uno|1.5|A/due|2|B/tre|3|C/";
    return same ? refusals[0][0].toString().section(u": "_s, 1) : u"(wrong)"_s;
}

} // namespace

class TestGridBlocks : public QObject
{
    Q_OBJECT

private slots:
    void pasting()
    {
        QCOMPARE(pasted(u"x"_s, 1, 0), u"uno|1.5|A/x|2|B/tre|3|C/"_s);
        QCOMPARE(pasted(u"a\t7\r\nb\t8\r\n"_s, 1, 0), u"uno|1.5|A/a|7|B/b|8|C/"_s);
        QCOMPARE(pasted(u"1,25"_s, 0, 1), u"uno|1.25|A/due|2|B/tre|3|C/"_s);
        QCOMPARE(pasted(u"\"a\"\"b\"\t5"_s, 0, 0), u"a\"b|5|A/due|2|B/tre|3|C/"_s);
        QCOMPARE(pasted(u"\"a\"b\t5"_s, 0, 0), u"\"a\"b|5|A/due|2|B/tre|3|C/"_s);
        QCOMPARE(pasted(u"a\nb\n"_s, 2, 0, Grid::AtEnd::AppendsRow),
                 u"uno|1.5|A/due|2|B/a|3|C/b||/"_s);
        QVERIFY(pasted(u"a\nb\nc\n"_s, 2, 0).contains(u"righe sono 3 e qui ce ne stanno solo 2"));
        QVERIFY(pasted(u"a\tb"_s, 0, 2).contains(u"2 celle e qui ci sono solo 1 colonne"));
        QVERIFY(pasted(u"a\t7\nb\tx7"_s, 0, 0).contains(u"riga 2 il testo «x7»"));
        QVERIFY(pasted(u"seicar"_s, 0, 0).contains(u"«Nome», che prende 5 caratteri"));
        QVERIFY(pasted(u"\"a\nb\"\t1"_s, 0, 0).contains(u"«Nome»"));
    }

    /// One rectangle that holds the current cell, whatever keys are held.
    void selection()
    {
        const auto selected = [](const QString& keys) {
            Desk desk;
            press(keys);
            const auto all = desk.grid.selectionModel()->selectedIndexes();
            QSet<int> rows;
            QSet<int> columns;
            for (const QModelIndex& cell : all) {
                rows.insert(cell.row());
                columns.insert(cell.column());
            }
            const bool whole = all.size() == rows.size() * columns.size() &&
                               all.contains(desk.grid.currentIndex());
            return whole ? u"%1x%2 at %3"_s.arg(rows.size()).arg(columns.size()).arg(desk.place())
                         : u"(wrong)"_s;
        };
        QCOMPARE(selected(u"<Ctrl+Down>"_s), u"1x1 at 1,0"_s);
        QCOMPARE(selected(u"<Shift+Down><Shift+Right>"_s), u"2x2 at 1,1"_s);
        QCOMPARE(selected(u"<Ctrl+End><Shift+Up>"_s), u"2x1 at 1,2"_s);
        QCOMPARE(selected(u"<Ctrl+Shift+End>"_s), u"3x3 at 2,2"_s);
        QCOMPARE(selected(u"<Ctrl+Shift+End><Ctrl+Left>"_s), u"1x1 at 2,1"_s);
        QCOMPARE(selected(u"<Ctrl+A>"_s), u"3x3 at 0,0"_s);
    }

    /// With the mouse: Ctrl begins anew, Shift and dragging stretch, headers do nothing.
    void selectionByMouse()
    {
        Desk desk;
        const auto rows = [&] {
            const auto [first, last] = desk.grid.selectedRows();
            return u"%1-%2"_s.arg(first).arg(last);
        };
        desk.click(0, 0);
        desk.click(2, 0, Qt::ControlModifier);
        QCOMPARE(rows(), u"2-2"_s);
        desk.click(1, 0, Qt::ShiftModifier);
        QCOMPARE(rows(), u"1-2"_s);
        desk.click(2, 0, {}, Qt::RightButton); // the menu is about both
        QCOMPARE(rows(), u"1-2"_s);
        desk.click(0, 0, {}, Qt::RightButton);
        QCOMPARE(rows(), u"0-0"_s);
        QTest::mouseClick(desk.grid.horizontalHeader()->viewport(), Qt::LeftButton, {}, {20, 5});
        QTest::mouseClick(desk.grid.verticalHeader()->viewport(), Qt::LeftButton, {}, {5, 30});
        QTest::mouseClick(desk.grid.findChild<QAbstractButton*>(), Qt::LeftButton);
        QCOMPARE(rows(), u"0-0"_s);
    }

    void blocksOfTheSelection()
    {
        Desk desk;
        press(u"<Shift+Down><Shift+Right><Ctrl+C>"_s);
        QCOMPARE(QApplication::clipboard()->text(), u"uno\t1.5\ndue\t2\n"_s);
        press(u"<Del>"_s);
        QCOMPARE(desk.content(), u"||A/||B/tre|3|C/"_s);
        QCOMPARE(desk.changes.size(), 1);
        QApplication::clipboard()->setText(u"z"_s);
        press(u"<Ctrl+Home><Shift+Down><Shift+Down><Ctrl+V>"_s);
        QCOMPARE(desk.content(), u"z||A/z||B/z|3|C/"_s);
        press(u"<Ctrl+V>"_s);
        QCOMPARE(desk.changes.size(), 2); // the same again is no change
        // Rows behind the last one are the owner's to add.
        QApplication::clipboard()->setText(u"p\nq\nr\ns\n"_s);
        press(u"<Ctrl+V>"_s);
        QCOMPARE(desk.changes.last()[0].value<QList<CellChange>>().last().row, 3);
        QCOMPARE(desk.content(), u"p||A/q||B/r|3|C/"_s);
    }
};

ZELTO_TEST(TestGridBlocks)
#include "tst_grid_blocks.moc"

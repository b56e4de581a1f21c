// SPDX-License-Identifier: GPL-3.0-or-later
// What is selected in a grid, and blocks of cells to and from the clipboard.
#include "grid_desk.h"
#include "support/runner.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QSignalSpy>

using namespace Qt::StringLiterals;
using namespace zelto::widgets;
using Desk = zelto::test::GridDesk;

class TestGridBlocks : public QObject
{
    Q_OBJECT

private slots:
    void pasting_data()
    {
        QTest::addColumn<QString>("clipboard");
        QTest::addColumn<QString>("place");
        QTest::addColumn<bool>("appends");
        QTest::addColumn<QString>("content");
        QTest::addColumn<QString>("refusal");
        const QString same = u"uno|1.5|A/due|2|B/tre|3|C/"_s;
        QTest::addRow("a cell") << u"x"_s << u"1,0"_s << false << u"uno|1.5|A/x|2|B/tre|3|C/"_s
                                << QString();
        QTest::addRow("a block, Windows line ends") << u"a\t7\r\nb\t8\r\n"_s << u"1,0"_s << false
                                                    << u"uno|1.5|A/a|7|B/b|8|C/"_s << QString();
        QTest::addRow("decimal comma")
            << u"1,25"_s << u"0,1"_s << false << u"uno|1.25|A/due|2|B/tre|3|C/"_s << QString();
        QTest::addRow("quoted") << u"\"a\"\"b\"\t5"_s << u"0,0"_s << false
                                << u"a\"b|5|A/due|2|B/tre|3|C/"_s << QString();
        QTest::addRow("rows added")
            << u"a\nb\n"_s << u"2,0"_s << true << u"uno|1.5|A/due|2|B/a|3|C/b||/"_s << QString();
        QTest::addRow("too many rows")
            << u"a\nb\nc\n"_s << u"2,0"_s << false << same << u"righe sono 3"_s;
        QTest::addRow("too wide") << u"a\tb"_s << u"0,2"_s << false << same << u"colonne"_s;
        QTest::addRow("no number")
            << u"a\t7\nb\tx7"_s << u"0,0"_s << false << same << u"riga 2 il testo «x7»"_s;
        QTest::addRow("too long") << u"seicar"_s << u"0,0"_s << false << same
                                  << u"prende 5 caratteri"_s;
        QTest::addRow("line break") << u"\"a\nb\"\t1"_s << u"0,0"_s << false << same << u"Nome"_s;
        QTest::addRow("thousands") << u"1.234,5"_s << u"0,1"_s << false << same << u"Misura"_s;
    }
    void pasting()
    {
        QFETCH(QString, clipboard);
        QFETCH(QString, place);
        QFETCH(bool, appends);
        QFETCH(QString, refusal);
        Desk desk(appends ? Grid::AtEnd::AppendsRow : Grid::AtEnd::Stays);
        QSignalSpy refusals(&desk.grid, &Grid::pasteRefused);
        QSignalSpy changes(&desk.grid, &Grid::cellsChanged);
        desk.grid.setMostRows([] { return 4; });
        QApplication::clipboard()->setText(clipboard);
        desk.grid.setCurrentCell(place.left(1).toInt(), place.mid(2).toInt());
        QTest::keyClick(&desk.grid, Qt::Key_V, Qt::ControlModifier);
        QTEST(desk.content(), "content");
        QCOMPARE(refusals.size(), refusal.isEmpty() ? 0 : 1);
        QCOMPARE(changes.size(), refusal.isEmpty() ? 1 : 0);
        if (!refusal.isEmpty())
            QVERIFY2(refusals[0][0].toString().contains(refusal),
                     qPrintable(refusals[0][0].toString()));
    }

    /// One rectangle that holds the current cell, whatever keys are held; "rows x columns at
    /// current".
    void selection_data()
    {
        QTest::addColumn<QList<QKeyCombination>>("keys");
        QTest::addColumn<QString>("selected");
        const auto row = [](const char* name, const QString& selected,
                            const QList<QKeyCombination>& keys) {
            QTest::addRow("%s", name) << keys << selected;
        };
        row("Ctrl+End", u"1x1 at 2,2"_s, {Qt::CTRL | Qt::Key_End});
        row("Ctrl+Down", u"1x1 at 1,0"_s, {Qt::CTRL | Qt::Key_Down});
        row("Shift", u"2x2 at 1,1"_s, {Qt::SHIFT | Qt::Key_Down, Qt::SHIFT | Qt::Key_Right});
        row("Shift from where Ctrl led", u"2x1 at 1,2"_s,
            {Qt::CTRL | Qt::Key_End, Qt::SHIFT | Qt::Key_Up});
        row("to the end", u"3x3 at 2,2"_s, {Qt::CTRL | Qt::SHIFT | Qt::Key_End});
        row("and away", u"1x1 at 2,1"_s,
            {Qt::CTRL | Qt::SHIFT | Qt::Key_End, Qt::CTRL | Qt::Key_Left});
        row("all", u"3x3 at 0,0"_s, {Qt::CTRL | Qt::Key_A});
    }
    void selection()
    {
        QFETCH(QList<QKeyCombination>, keys);
        Desk desk;
        for (const QKeyCombination key : std::as_const(keys))
            QTest::keyClick(&desk.grid, key.key(), key.keyboardModifiers());
        const auto all = desk.grid.selectionModel()->selectedIndexes();
        QSet<int> rows;
        QSet<int> columns;
        for (const QModelIndex& cell : all) {
            rows.insert(cell.row());
            columns.insert(cell.column());
        }
        QCOMPARE(all.size(), rows.size() * columns.size());
        QVERIFY(all.contains(desk.grid.currentIndex()));
        QTEST(u"%1x%2 at %3"_s.arg(rows.size()).arg(columns.size()).arg(desk.place()), "selected");
    }

    /// With the mouse: Ctrl begins anew, Shift and dragging stretch, headers do nothing.
    void selectionByMouse()
    {
        Desk desk;
        const auto click = [&](int row, int column, Qt::KeyboardModifiers modifiers,
                               Qt::MouseButton button = Qt::LeftButton) {
            QTest::mouseClick(desk.grid.viewport(), button, modifiers, desk.cell(row, column));
        };
        const auto rows = [&] {
            const auto [first, last] = desk.grid.selectedRows();
            return u"%1-%2"_s.arg(first).arg(last);
        };
        click(0, 0, {});
        click(2, 0, Qt::ControlModifier);
        QCOMPARE(rows(), u"2-2"_s);
        click(1, 0, Qt::ShiftModifier);
        QCOMPARE(rows(), u"1-2"_s);
        click(2, 0, {}, Qt::RightButton); // the menu is about both
        QCOMPARE(rows(), u"1-2"_s);
        click(0, 0, {}, Qt::RightButton);
        QCOMPARE(rows(), u"0-0"_s);
        QTest::mouseClick(desk.grid.horizontalHeader()->viewport(), Qt::LeftButton, {}, {20, 5});
        QTest::mouseClick(desk.grid.verticalHeader()->viewport(), Qt::LeftButton, {}, {5, 30});
        QTest::mouseClick(desk.grid.findChild<QAbstractButton*>(), Qt::LeftButton);
        QCOMPARE(rows(), u"0-0"_s);
        QTest::keyClick(&desk.grid, Qt::Key_Delete);
        QCOMPARE(desk.content(), u"|1.5|A/due|2|B/tre|3|C/"_s);
        desk.grid.leaveCells();
        desk.other.setFocus();
        desk.grid.setFocus(Qt::TabFocusReason);
        QTest::keyClick(&desk.grid, Qt::Key_Delete);
        QTest::keyClicks(&desk.grid, u"x"_s);
        QCOMPARE(desk.place(), u"-1,-1"_s);
    }

    void blocksOfTheSelection()
    {
        Desk desk;
        const auto select = [&](int downs, int rights) {
            desk.grid.setCurrentCell(0, 0);
            for (int i = 0; i < downs; ++i)
                QTest::keyClick(&desk.grid, Qt::Key_Down, Qt::ShiftModifier);
            for (int i = 0; i < rights; ++i)
                QTest::keyClick(&desk.grid, Qt::Key_Right, Qt::ShiftModifier);
        };
        select(1, 1);
        QTest::keyClick(&desk.grid, Qt::Key_C, Qt::ControlModifier);
        QCOMPARE(QApplication::clipboard()->text(), u"uno\t1.5\ndue\t2\n"_s);
        QSignalSpy changes(&desk.grid, &Grid::cellsChanged);
        QTest::keyClick(&desk.grid, Qt::Key_Delete);
        QCOMPARE(desk.content(), u"||A/||B/tre|3|C/"_s);
        QCOMPARE(changes.size(), 1);
        select(2, 0);
        QApplication::clipboard()->setText(u"z"_s);
        QTest::keyClick(&desk.grid, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(desk.content(), u"z||A/z||B/z|3|C/"_s);
        QTest::keyClick(&desk.grid, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(changes.size(), 2); // the same again is no change
        // Rows behind the last one are the owner's to add.
        QApplication::clipboard()->setText(u"p\nq\nr\ns\n"_s);
        QTest::keyClick(&desk.grid, Qt::Key_V, Qt::ControlModifier);
        QCOMPARE(changes.last()[0].value<QList<CellChange>>().last().row, 3);
        QCOMPARE(desk.content(), u"p||A/q||B/r|3|C/"_s);
    }
};

ZELTO_TEST(TestGridBlocks)
#include "tst_grid_blocks.moc"

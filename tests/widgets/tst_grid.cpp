// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/settings.h"
#include "widgets/column_widths.h"
#include "widgets/grid.h"
#include "widgets/grid_delegate.h"
#include "widgets/typed_line.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QHeaderView>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace zelto::widgets;

namespace {

/// Three columns over a field, in a window of their own: text of five characters, a number, and
/// one that its screen edits.
class Desk : public QWidget
{
public:
    explicit Desk(const QString& rows, Grid::AtEnd atEnd = Grid::AtEnd::Stays)
        : grid(u"n."_s,
               {{.header = u"Nome"_s, .maxLength = 5},
                {.header = u"Misura"_s, .tag = u"SOL"_s, .maxLength = 6},
                {.header = u"Scelta"_s, .editing = GridColumn::Editing::ByScreen}},
               atEnd)
    {
        const int count = zelto::text::rowCount(rows);
        zelto::text::CellTable table(count + 1, 4);
        const zelto::text::CellRange range{.lastRow = count, .lastColumn = 3};
        zelto::text::TextToGrid(rows, table, range);
        grid.cells().setRows(table, range);
        auto* layout = new QVBoxLayout(this);
        layout->addWidget(&grid);
        layout->addWidget(&other);
        show();
        if (!QTest::qWaitForWindowActive(this))
            qFatal("the window does not become active");
        grid.setFocus();
        grid.setCurrentCell(0, 0);
    }

    [[nodiscard]] TypedLine& editor() { return *grid.findChild<TypedLine*>(); }
    [[nodiscard]] QPoint cell(int row, int column)
    {
        return grid.visualRect(grid.cells().index(row, column)).center();
    }
    /// The cells with "|" between them and "/" between rows.
    [[nodiscard]] QString content() const
    {
        return grid.cells().tableText().replace(u"\r\n"_s, u"/"_s).replace(u'\t', u'|');
    }
    [[nodiscard]] QString place() const
    {
        return u"%1,%2"_s.arg(grid.currentRow()).arg(grid.currentColumn());
    }

    Grid grid;
    QLineEdit other;
};

const QString Rows = u"uno\t1.5\tA\r\ndue\t2\tB\r\ntre\t3\tC\r\n"_s;

} // namespace

class TestGrid : public QObject
{
    Q_OBJECT

private slots:
    void opening_data()
    {
        QTest::addColumn<int>("column");
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("opened");
        QTest::addRow("letter, text") << 0 << Qt::Key_X << u"x"_s << u"x"_s;
        QTest::addRow("blank, text") << 0 << Qt::Key_Space << u" "_s << u"uno"_s;
        QTest::addRow("F2, text") << 0 << Qt::Key_F2 << QString() << u"uno"_s;
        QTest::addRow("Backspace") << 0 << Qt::Key_Backspace << u"\b"_s << u"uno"_s;
        QTest::addRow("accented") << 0 << Qt::Key_Egrave << u"è"_s << u"è"_s;
        QTest::addRow("digit, number") << 1 << Qt::Key_7 << u"7"_s << u"7"_s;
        QTest::addRow("minus, number") << 1 << Qt::Key_Minus << u"-"_s << u"-"_s;
        QTest::addRow("letter, number") << 1 << Qt::Key_X << u"x"_s << u"1.5"_s;
        QTest::addRow("F2, number") << 1 << Qt::Key_F2 << QString() << u"1.5"_s;
        QTest::addRow("function key") << 0 << Qt::Key_F5 << QString() << QString();
        QTest::addRow("Esc") << 0 << Qt::Key_Escape << u"\x1b"_s << QString();
        QTest::addRow("by the screen") << 2 << Qt::Key_X << u"x"_s << QString();
    }
    void opening()
    {
        QFETCH(int, column);
        QFETCH(Qt::Key, key);
        QFETCH(QString, text);
        QFETCH(QString, opened);
        Desk desk(Rows);
        QSignalSpy requests(&desk.grid, &Grid::cellRequested);
        desk.grid.setCurrentCell(0, column);
        QTest::sendKeyEvent(QTest::Click, &desk.grid, key, text, Qt::NoModifier);
        QCOMPARE(desk.grid.isEditing(), !opened.isEmpty());
        QCOMPARE(requests.size(), column == 2 ? 1 : 0);
        if (opened.isEmpty())
            return;
        QCOMPARE(desk.editor().text(), opened);
        QCOMPARE(desk.editor().cursorPosition(), opened.size());
        QVERIFY(desk.editor().hasFocus());
        QCOMPARE(desk.editor().geometry(),
                 desk.grid.visualRect(desk.grid.cells().index(0, column)));
        QCOMPARE(desk.content(), u"uno|1.5|A/due|2|B/tre|3|C/"_s);
    }

    void doubleClickOpensWithTheCellsText()
    {
        Desk desk(Rows);
        QSignalSpy opened(&desk.grid, &Grid::editorOpened);
        QTest::mouseDClick(desk.grid.viewport(), Qt::LeftButton, {}, desk.cell(1, 1));
        QCOMPARE(desk.editor().text(), u"2"_s);
        QCOMPARE(opened.size(), 1);
        QCOMPARE(opened[0][0].toBool(), false);
    }

    /// From row 1, column 0, with "x" typed there.
    void leaving_data()
    {
        QTest::addColumn<Qt::Key>("key");
        QTest::addColumn<QString>("content");
        QTest::addColumn<QString>("place");
        const QString stored = u"uno|1.5|A/x|2|B/tre|3|C/"_s;
        QTest::addRow("Enter") << Qt::Key_Return << stored << u"1,0"_s;
        QTest::addRow("Up") << Qt::Key_Up << stored << u"0,0"_s;
        QTest::addRow("Down") << Qt::Key_Down << stored << u"2,0"_s;
        QTest::addRow("Tab") << Qt::Key_Tab << stored << u"1,1"_s;
        QTest::addRow("Shift+Tab") << Qt::Key_Backtab << stored << u"0,2"_s;
        QTest::addRow("Esc") << Qt::Key_Escape << u"uno|1.5|A/due|2|B/tre|3|C/"_s << u"1,0"_s;
    }
    void leaving()
    {
        QFETCH(Qt::Key, key);
        Desk desk(Rows);
        QSignalSpy changes(&desk.grid, &Grid::cellsChanged);
        desk.grid.setCurrentCell(1, 0);
        QTest::keyClick(&desk.grid, Qt::Key_X);
        QTest::keyClick(&desk.editor(), key);
        QVERIFY(!desk.grid.isEditing() && desk.editor().isHidden());
        QTEST(desk.content(), "content");
        QTEST(desk.place(), "place");
        QVERIFY(desk.grid.hasFocus());
        QCOMPARE(changes.size(), key == Qt::Key_Escape ? 0 : 1);
        desk.grid.commitEditor();
        QTEST(desk.content(), "content");
    }

    void clickingElsewhereStores()
    {
        Desk desk(Rows);
        QTest::keyClick(&desk.grid, Qt::Key_X);
        QTest::mouseClick(desk.grid.viewport(), Qt::LeftButton, {}, desk.cell(2, 1));
        QCOMPARE(desk.content(), u"x|1.5|A/due|2|B/tre|3|C/"_s);
        QCOMPARE(desk.place(), u"2,1"_s);
        QTest::keyClick(&desk.grid, Qt::Key_9);
        desk.other.setFocus();
        QCOMPARE(desk.content(), u"x|1.5|A/due|2|B/tre|9|C/"_s);
    }

    void enterMoves()
    {
        Desk desk(Rows, Grid::AtEnd::AppendsRow);
        QSignalSpy appended(&desk.grid, &Grid::rowAppended);
        QStringList places;
        for (int i = 0; i < 9; ++i) {
            QTest::keyClick(&desk.grid, Qt::Key_Return);
            places << desk.place();
        }
        QCOMPARE(places.join(u' '), u"0,1 0,2 1,0 1,1 1,2 2,0 2,1 2,2 3,0"_s);
        QCOMPARE(appended.size(), 1);
        const GridModel& cells = desk.grid.cells();
        QCOMPARE(cells.number(3), u"4"_s);
        QVERIFY(cells.data(cells.index(1, 0), GridModel::ShadedRole).toBool());
        QVERIFY(!cells.data(cells.index(3, 0), GridModel::ShadedRole).toBool());

        Desk closed(Rows);
        closed.grid.setCurrentCell(2, 2);
        QTest::keyClick(&closed.grid, Qt::Key_Enter);
        QCOMPARE(closed.place(), u"2,0"_s);
    }

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
        Desk desk(Rows, appends ? Grid::AtEnd::AppendsRow : Grid::AtEnd::Stays);
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
        Desk desk(Rows);
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
        Desk desk(Rows);
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

    /// A text that nobody changed stays as it is, longer than its column or not.
    void untouchedEditor()
    {
        Desk desk(u"uno\t1234.5678901\tA\r\n"_s);
        QSignalSpy changes(&desk.grid, &Grid::cellsChanged);
        desk.grid.setCurrentCell(0, 1);
        QTest::keyClick(&desk.grid, Qt::Key_F2);
        QCOMPARE(desk.editor().text(), u"1234.5678901"_s);
        QTest::keyClick(&desk.editor(), Qt::Key_Return);
        QCOMPARE(changes.size(), 0);
        QTest::sendKeyEvent(QTest::Click, &desk.grid, Qt::Key_Comma, u","_s, Qt::NoModifier);
        QTest::sendKeyEvent(QTest::Click, &desk.editor(), Qt::Key_5, u"5"_s, Qt::NoModifier);
        QTest::sendKeyEvent(QTest::Click, &desk.editor(), Qt::Key_A, u"a"_s, Qt::AltModifier);
        QTest::keyClick(&desk.editor(), Qt::Key_Return);
        QCOMPARE(desk.content(), u"uno|.5|A/"_s);
        QTest::sendKeyEvent(QTest::Click, &desk.grid, Qt::Key_A, u"a"_s, Qt::AltModifier);
        QTest::sendKeyEvent(QTest::Click, &desk.grid, Qt::Key_A, u"a"_s, Qt::MetaModifier);
        QVERIFY(!desk.grid.isEditing());
    }

    void blocksOfTheSelection()
    {
        Desk desk(Rows);
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

    void widths()
    {
        const QTemporaryDir folder;
        zelto::store::Settings settings(folder.filePath(u"Zelto.ini"_s));
        settings.ScriviIni(u"Prova"_s, u"Colonna2"_s, u"3000"_s);
        Desk desk(Rows);
        const int before = desk.grid.columnWidth(0);
        restoreColumnWidths(desk.grid, settings, u"Prova"_s, u"Colonna"_s);
        QCOMPARE(desk.grid.columnWidth(1), qRound(3000.0 * desk.grid.logicalDpiX() / 1440));
        QCOMPARE(desk.grid.columnWidth(0), before);
        const auto restored = [&](const QString& value) {
            settings.ScriviIni(u"Prova"_s, u"Colonna1"_s, value);
            restoreColumnWidths(desk.grid, settings, u"Prova"_s, u"Colonna"_s);
            return qRound(desk.grid.columnWidth(0) * 1440.0 / desk.grid.logicalDpiX());
        };
        QVERIFY(restored(u"2000000000"_s) <= 28'800);
        const int largest = desk.grid.columnWidth(0);
        QVERIFY(restored(u"largo"_s) > 0);
        QCOMPARE(desk.grid.columnWidth(0), largest);
        QVERIFY(restored(u"-2000000000"_s) > 0);
        desk.grid.setWidthInTwips(1, 30);
        saveColumnWidths(desk.grid, settings, u"Prova"_s, u"Colonna"_s, 50);
        QCOMPARE(settings.LeggiIni(u"Prova"_s, u"Colonna1"_s), u"50"_s);
        QCOMPARE(settings.LeggiIni(u"Prova"_s, u"Colonna2"_s), u"3000"_s);
        QVERIFY(settings.LeggiIni(u"Prova"_s, u"Colonna0"_s).toInt() > 0);
    }

    /// The shade is the one of old in a light theme, and leaves light text legible in a dark one.
    void shade()
    {
        QCOMPARE(shadeColour(QPalette(Qt::lightGray)), QColor(255, 255, 128));
        QPalette dark(Qt::black);
        dark.setColor(QPalette::Base, QColor(35, 38, 41));
        QVERIFY(shadeColour(dark).lightness() < 110);
    }
};

QTEST_MAIN(TestGrid)
#include "tst_grid.moc"

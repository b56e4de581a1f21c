// SPDX-License-Identifier: GPL-3.0-or-later
#include "grid_desk.h"
#include "store/settings.h"
#include "support/runner.h"
#include "widgets/column_widths.h"
#include "widgets/grid_delegate.h"

#include <QScrollBar>
#include <QTemporaryDir>
#include <QWheelEvent>

using namespace Qt::StringLiterals;
using namespace zelto::widgets;
using Desk = zelto::test::GridDesk;
using zelto::test::press;

namespace {

/// The text of the editor that a key opens in the first row; "(closed)" for none, and what the
/// screen is asked to edit by.
QString openedBy(int column, const QString& key)
{
    Desk desk;
    QSignalSpy requests(&desk.grid, &Grid::cellRequested);
    desk.grid.setCurrentCell(0, column);
    press(key);
    if (!requests.isEmpty())
        return u"(asked by %1)"_s.arg(requests[0][2].toString());
    if (!desk.grid.isEditing())
        return u"(closed)"_s;
    const TypedLine& editor = desk.editor();
    const bool ready =
        editor.hasFocus() && editor.cursorPosition() == editor.text().size() &&
        editor.geometry() == desk.grid.visualRect(desk.grid.cells().index(0, column)) &&
        desk.content() == u"uno|1.5|A/due|2|B/tre|3|C/";
    return ready ? editor.text() : u"(wrong)"_s;
}

/// Content and current cell when the key ends the editor in row 1, column 0, with "x" typed there.
QString leftBy(const QString& key)
{
    Desk desk;
    desk.grid.setCurrentCell(1, 0);
    press(u"x"_s + key);
    const bool left = !desk.grid.isEditing() && desk.editor().isHidden() && desk.grid.hasFocus() &&
                      desk.changes.size() == (key == u"<Esc>" ? 0 : 1);
    desk.grid.commitEditor();
    return left ? desk.grid.cells().text(1, 0) + u' ' + desk.place() : u"(wrong)"_s;
}

} // namespace

class TestGrid : public QObject
{
    Q_OBJECT

private slots:
    void opening()
    {
        QCOMPARE(openedBy(0, u"x"_s), u"x"_s);
        for (const QString& key : {u" "_s, u"<F2>"_s, u"<Backspace>"_s})
            QCOMPARE(openedBy(0, key), u"uno"_s);
        QCOMPARE(openedBy(0, u"è"_s), u"è"_s);
        QCOMPARE(openedBy(1, u"7"_s), u"7"_s);
        QCOMPARE(openedBy(1, u"-"_s), u"-"_s);
        QCOMPARE(openedBy(1, u"x"_s), u"1.5"_s);
        QCOMPARE(openedBy(0, u"<F5>"_s), u"(closed)"_s);
        QCOMPARE(openedBy(0, u"<Esc>"_s), u"(closed)"_s);
        QCOMPARE(openedBy(2, u"x"_s), u"(asked by x)"_s);
    }

    void leaving()
    {
        QCOMPARE(leftBy(u"<Return>"_s), u"x 1,0"_s);
        QCOMPARE(leftBy(u"<Up>"_s), u"x 0,0"_s);
        QCOMPARE(leftBy(u"<Down>"_s), u"x 2,0"_s);
        QCOMPARE(leftBy(u"<Tab>"_s), u"x 1,1"_s);
        QCOMPARE(leftBy(u"<Shift+Tab>"_s), u"x 0,2"_s);
        QCOMPARE(leftBy(u"<Esc>"_s), u"due 1,0"_s);
    }

    void mouse()
    {
        Desk desk;
        QTest::mouseDClick(desk.grid.viewport(), Qt::LeftButton, {}, desk.cell(1, 1));
        QVERIFY(desk.grid.isEditing());
        QCOMPARE(desk.editor().text(), u"2"_s);
        desk.click(0, 0);
        press(u"x"_s);
        desk.click(2, 1); // stores what is typed elsewhere
        QCOMPARE(desk.content(), u"x|1.5|A/due|2|B/tre|3|C/"_s);
        QCOMPARE(desk.place(), u"2,1"_s);
        press(u"9"_s);
        desk.other.setFocus();
        QCOMPARE(desk.content(), u"x|1.5|A/due|2|B/tre|9|C/"_s);
    }

    void enterMoves()
    {
        Desk desk(Grid::AtEnd::AppendsRow);
        QSignalSpy appended(&desk.grid, &Grid::rowAppended);
        QStringList places;
        for (int i = 0; i < 9; ++i) {
            press(u"<Return>"_s);
            places << desk.place();
        }
        QCOMPARE(places.join(u' '), u"0,1 0,2 1,0 1,1 1,2 2,0 2,1 2,2 3,0"_s);
        QCOMPARE(appended.size(), 1);
        const GridModel& cells = desk.grid.cells();
        QCOMPARE(cells.number(3), u"4"_s);
        QVERIFY(cells.data(cells.index(1, 0), GridModel::ShadedRole).toBool());
        QVERIFY(!cells.data(cells.index(3, 0), GridModel::ShadedRole).toBool());

        Desk closed;
        closed.grid.setCurrentCell(2, 2);
        press(u"<Enter>"_s);
        QCOMPARE(closed.place(), u"2,0"_s);
    }

    /// A text that nobody changed stays as it is, longer than its column or not.
    void untouchedEditor()
    {
        Desk desk(Grid::AtEnd::Stays, u"uno\t1234.5678901\tA\r\n"_s);
        desk.grid.setCurrentCell(0, 1);
        press(u"<F2>"_s);
        QCOMPARE(desk.editor().text(), u"1234.5678901"_s);
        press(u"<Return>"_s);
        QCOMPARE(desk.changes.size(), 0);
        press(u",5<Ctrl+Return>"_s);
        QVERIFY(desk.grid.isEditing()); // that is the screen's
        press(u"<Return>"_s);
        QCOMPARE(desk.content(), u"uno|.5|A/"_s);
        press(u"<Meta+A>"_s);
        QVERIFY(!desk.grid.isEditing());
    }

    void widths()
    {
        const QTemporaryDir folder;
        zelto::store::Settings settings(folder.filePath(u"Zelto.ini"_s));
        Desk desk;
        const auto restored = [&](const QString& value) {
            settings.ScriviIni(u"Prova"_s, u"Colonna2"_s, value);
            restoreColumnWidths(desk.grid, settings, u"Prova"_s, u"Colonna"_s);
            return desk.grid.widthInTwips(2);
        };
        const int before = desk.grid.columnWidth(0);
        QCOMPARE(restored(u"3000"_s), 3000);
        QCOMPARE(desk.grid.columnWidth(1), qRound(3000.0 * desk.grid.logicalDpiX() / 1440));
        QCOMPARE(restored(u"largo"_s), 3000);
        QCOMPARE(restored(u"2000000000"_s), 28'800);
        QVERIFY(restored(u"-2000000000"_s) > 0);
        QCOMPARE(desk.grid.columnWidth(0), before);
        desk.grid.setWidthInTwips(1, 30);
        saveColumnWidths(desk.grid, settings, u"Prova"_s, u"Colonna"_s);
        QCOMPARE(settings.LeggiIni(u"Prova"_s, u"Colonna1"_s), u"50"_s);
        QVERIFY(settings.LeggiIni(u"Prova"_s, u"Colonna0"_s).toInt() > 0);
    }

    void wheel()
    {
        Desk desk(Grid::AtEnd::Stays, u"\r\n"_s.repeated(100));
        const auto turned = [&](int start, const QList<int>& turns) { // in eighths of a degree
            desk.grid.verticalScrollBar()->setValue(start);
            const QPointF place = desk.grid.viewport()->rect().center();
            for (const int turn : turns) {
                QWheelEvent event(place, desk.grid.viewport()->mapToGlobal(place), {}, {0, turn},
                                  Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
                QCoreApplication::sendEvent(desk.grid.viewport(), &event);
            }
            return desk.grid.rowAt(0);
        };
        QCOMPARE(turned(0, {-120}), 3);
        QCOMPARE(turned(50, {240}), 44);
        QCOMPARE(turned(10, {-30, -30, -30, -30}), 13);
        QCOMPARE(turned(2, {120}), 0);
        QCOMPARE(turned(10, {-39}), 10); // less than a row
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

ZELTO_TEST(TestGrid)
#include "tst_grid.moc"

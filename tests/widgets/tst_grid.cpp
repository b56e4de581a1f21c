// SPDX-License-Identifier: GPL-3.0-or-later
#include "grid_desk.h"
#include "store/settings.h"
#include "support/runner.h"
#include "widgets/column_widths.h"
#include "widgets/grid_delegate.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWheelEvent>

using namespace Qt::StringLiterals;
using namespace zelto::widgets;
using Desk = zelto::test::GridDesk;

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
        Desk desk;
        QSignalSpy requests(&desk.grid, &Grid::cellRequested);
        desk.grid.setCurrentCell(0, column);
        QTest::sendKeyEvent(QTest::Click, &desk.grid, key, text, Qt::NoModifier);
        QCOMPARE(desk.grid.isEditing(), !opened.isEmpty());
        QCOMPARE(requests.isEmpty() ? QString() : requests[0][2].toString(),
                 column == 2 ? text : QString());
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
        Desk desk;
        QTest::mouseDClick(desk.grid.viewport(), Qt::LeftButton, {}, desk.cell(1, 1));
        QVERIFY(desk.grid.isEditing());
        QCOMPARE(desk.editor().text(), u"2"_s);
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
        Desk desk;
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
        Desk desk;
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
        Desk desk(Grid::AtEnd::AppendsRow);
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

        Desk closed;
        closed.grid.setCurrentCell(2, 2);
        QTest::keyClick(&closed.grid, Qt::Key_Enter);
        QCOMPARE(closed.place(), u"2,0"_s);
    }

    /// A text that nobody changed stays as it is, longer than its column or not.
    void untouchedEditor()
    {
        Desk desk(Grid::AtEnd::Stays, u"uno\t1234.5678901\tA\r\n"_s);
        QSignalSpy changes(&desk.grid, &Grid::cellsChanged);
        desk.grid.setCurrentCell(0, 1);
        QTest::keyClick(&desk.grid, Qt::Key_F2);
        QCOMPARE(desk.editor().text(), u"1234.5678901"_s);
        QTest::keyClick(&desk.editor(), Qt::Key_Return);
        QCOMPARE(changes.size(), 0);
        QTest::sendKeyEvent(QTest::Click, &desk.grid, Qt::Key_Comma, u","_s, Qt::NoModifier);
        QTest::sendKeyEvent(QTest::Click, &desk.editor(), Qt::Key_5, u"5"_s, Qt::NoModifier);
        QTest::keyClick(&desk.editor(), Qt::Key_Return, Qt::ControlModifier);
        QVERIFY(desk.grid.isEditing()); // that is the screen's
        QTest::keyClick(&desk.editor(), Qt::Key_Return);
        QCOMPARE(desk.content(), u"uno|.5|A/"_s);
        QTest::sendKeyEvent(QTest::Click, &desk.grid, Qt::Key_A, u"a"_s, Qt::MetaModifier);
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

    void wheel_data()
    {
        QTest::addColumn<int>("start");
        QTest::addColumn<QList<int>>("turns"); // in eighths of a degree
        QTest::addColumn<int>("row");
        QTest::addRow("one notch down") << 0 << QList{-120} << 3;
        QTest::addRow("two notches up at once") << 50 << QList{240} << 44;
        QTest::addRow("fine-grained") << 10 << QList{-30, -30, -30, -30} << 13;
        QTest::addRow("less than a row") << 10 << QList{-39} << 10;
        QTest::addRow("at the top") << 2 << QList{120} << 0;
    }
    void wheel()
    {
        QFETCH(int, start);
        QFETCH(QList<int>, turns);
        Desk desk(Grid::AtEnd::Stays, u"\r\n"_s.repeated(100));
        desk.grid.verticalScrollBar()->setValue(start);
        const QPointF place = desk.grid.viewport()->rect().center();
        for (const int turn : std::as_const(turns)) {
            QWheelEvent event(place, desk.grid.viewport()->mapToGlobal(place), {}, {0, turn},
                              Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(desk.grid.viewport(), &event);
        }
        QTEST(desk.grid.rowAt(0), "row");
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

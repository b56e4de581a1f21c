// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/cell_picker.h"
#include "widgets/context_menu.h"
#include "widgets/wheel_scroller.h"

#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>

using namespace Qt::StringLiterals;
using namespace zelto::widgets;

namespace {

void turnWheel(QTableWidget& grid, int eighths)
{
    const QPointF place = grid.viewport()->rect().center();
    QWheelEvent event(place, grid.viewport()->mapToGlobal(place), {}, {0, eighths}, Qt::NoButton,
                      Qt::NoModifier, Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(grid.viewport(), &event);
}

} // namespace

class TestGridHelpers : public QObject
{
    Q_OBJECT

private slots:
    void wheel_data()
    {
        QTest::addColumn<int>("start");
        QTest::addColumn<QList<int>>("turns");
        QTest::addColumn<int>("row");
        QTest::addRow("one notch down") << 0 << QList{-120} << 3;
        QTest::addRow("one notch up") << 50 << QList{120} << 47;
        QTest::addRow("two notches at once") << 0 << QList{-240} << 6;
        QTest::addRow("fine-grained") << 10 << QList{-30, -30, -30, -30} << 13;
        QTest::addRow("less than a row") << 10 << QList{-39} << 10;
        QTest::addRow("at the top") << 2 << QList{120} << 0;
    }
    void wheel()
    {
        QFETCH(int, start);
        QFETCH(QList<int>, turns);
        QTableWidget grid(100, 2);
        new WheelScroller(&grid);
        grid.resize(300, 300);
        grid.show();
        QVERIFY(QTest::qWaitForWindowExposed(&grid));
        grid.verticalScrollBar()->setValue(start);
        for (const int turn : std::as_const(turns))
            turnWheel(grid, turn);
        QTEST(grid.rowAt(0), "row");

        grid.verticalScrollBar()->setValue(grid.verticalScrollBar()->maximum() - 1);
        turnWheel(grid, -120);
        QCOMPARE(grid.verticalScrollBar()->value(), grid.verticalScrollBar()->maximum());
    }

    void picker_data()
    {
        QTest::addColumn<CellPicker::Match>("match");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QList<Qt::Key>>("keys");
        QTest::addColumn<QString>("chosen");
        const QList enter{Qt::Key_Return};
        const QList next{Qt::Key_Down, Qt::Key_Enter};
        const auto whole = CellPicker::Match::Whole;
        const auto beginning = CellPicker::Match::Beginning;
        QTest::addRow("the cell's own") << beginning << u"[B]"_s << enter << u"[B] 0.9"_s;
        QTest::addRow("below it") << beginning << u"[B]"_s << next << u"1.2"_s;
        QTest::addRow("unknown text") << beginning << u"[C]"_s << enter << u"[A] 1"_s;
        QTest::addRow("whole text") << whole << u"1.2"_s << enter << u"1.2"_s;
        QTest::addRow("a part is no match") << whole << u"1"_s << enter << QString();
        QTest::addRow("typed") << whole << QString() << QList{Qt::Key_1, Qt::Key_Return}
                               << u"1.2"_s;
        QTest::addRow("typed code")
            << beginning << u"[A]"_s << QList{Qt::Key_B, Qt::Key_Return} << u"[B] 0.9"_s;
        QTest::addRow("typed value")
            << whole << u"1.2"_s << QList{Qt::Key_0, Qt::Key_Return} << u"[B] 0.9"_s;
        QTest::addRow("left") << beginning << u"[B]"_s << QList{Qt::Key_Escape} << QString();
        QTest::addRow("focus gone") << beginning << u"[B]"_s << QList{Qt::Key_Tab} << QString();
    }
    void picker()
    {
        QFETCH(CellPicker::Match, match);
        QFETCH(QString, text);
        QFETCH(QList<Qt::Key>, keys);
        QFETCH(QString, chosen);
        QWidget window;
        window.resize(300, 200);
        QLineEdit other(&window);
        CellPicker list(&window);
        QSignalSpy choices(&list, &CellPicker::chosen);
        QSignalSpy dismissals(&list, &CellPicker::dismissed);
        window.show();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        list.open({u"[A] 1"_s, u"[B] 0.9"_s, u"1.2"_s}, {10, 190, 80, 20}, text, match);
        QVERIFY(list.hasFocus());
        QVERIFY(window.rect().contains(list.geometry()));
        for (const Qt::Key key : std::as_const(keys))
            QTest::keyClick(&list, key);
        if (chosen.isEmpty() && list.isVisible()) // nothing was current that Enter could choose
            QTest::keyClick(&list, Qt::Key_Escape);
        QVERIFY(list.isHidden());
        QCOMPARE(choices.size() + dismissals.size(), 1);
        QCOMPARE(choices.value(0).value(0).toString(), chosen);
    }

    void contextMenu()
    {
        ContextMenu menu;
        menu.DxMouse(0).setText(u"Aggiungi"_s);
        menu.DxMouse(3).setText(u"Elimina"_s);
        menu.DxMouse(3).setVisible(true);
        QTimer user;
        user.setSingleShot(true);
        connect(&user, &QTimer::timeout, this, [&menu] {
            QTest::mouseClick(&menu, Qt::LeftButton, {},
                              menu.actionGeometry(&menu.DxMouse(3)).center());
        });
        user.start();
        QCOMPARE(menu.choose({}), u"3"_s);
        user.disconnect();
        connect(&user, &QTimer::timeout, this, [&menu] { QTest::keyClick(&menu, Qt::Key_Escape); });
        user.start();
        QCOMPARE(menu.choose({}), u"-1"_s);

        menu.DxMouse(3).setEnabled(false);
        menu.ResetContextMenu();
        for (int i = 0; i < ContextMenu::EntryCount; ++i) {
            QCOMPARE(menu.DxMouse(i).isVisible(), i == 0);
            QVERIFY(menu.DxMouse(i).text().isEmpty());
            QVERIFY(menu.DxMouse(i).isVisible() == false || menu.DxMouse(i).isEnabled());
        }
        menu.DxMouse(3).setVisible(true);
        QVERIFY(menu.DxMouse(3).isEnabled());
    }
};

QTEST_MAIN(TestGridHelpers)
#include "tst_grid_helpers.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/context_menu.h"
#include "widgets/wheel_scroller.h"

#include <QScrollBar>
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

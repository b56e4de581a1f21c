// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/preview_layout.h"
#include "support/runner.h"

#include <QTest>

using namespace zelto::print;

class TestPreviewLayout : public QObject
{
    Q_OBJECT

    static constexpr PageSize Page{.width = 10'000, .height = 15'000};

private slots:
    void sizes_data()
    {
        QTest::addColumn<QSize>("window");
        QTest::addColumn<double>("magnification");
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<QPoint>("home");
        QTest::addRow("as high as the window lets it")
            << QSize(1000, 800) << 1.0 << QSize(400, 600) << QPoint(290, 51);
        QTest::addRow("as wide") << QSize(500, 1050) << 1.0 << QSize(400, 600) << QPoint(40, 176);
        QTest::addRow("twice") << QSize(1000, 800) << 2.0 << QSize(800, 1200) << QPoint(90, -248);
        QTest::addRow("nothing left") << QSize(30, 40) << 1.0 << QSize(1, 1) << QPoint(4, -29);
    }

    /// The bar is 50 high, scroll bars 20; 400 twips are 27 pixels.
    void sizes()
    {
        QFETCH(QSize, window);
        QFETCH(double, magnification);
        const PreviewLayout layout(
            {.size = window, .barHeight = 50, .view = window - QSize(20, 70), .dotsPerInch = 96},
            Page, magnification);
        QTEST(layout.picture, "picture");
        QTEST(layout.home, "home");
        QCOMPARE(layout.place({}), layout.home);
    }

    void scrolling()
    {
        const PreviewLayout layout(
            {.size = {1000, 800}, .barHeight = 50, .view = {980, 730}, .dotsPerInch = 96}, Page, 2);
        QCOMPARE(layout.place({0, 500}) - layout.home, QPoint(400, 0));
        QCOMPARE(layout.place({1000, 250}) - layout.home, QPoint(-400, 300));
        const ScrollPosition position = layout.centredOn({200, 900});
        QCOMPARE(position, (ScrollPosition{.x = 250, .y = 750}));
        QCOMPARE(layout.middle(), QPoint(490, 352));
        QCOMPARE(layout.pointAt(layout.middle(), position).toPoint(), QPoint(200, 900));
        QCOMPARE(layout.centredOn({-50, 5000}), (ScrollPosition{.x = 0, .y = 1000}));
    }
};

ZELTO_TEST(TestPreviewLayout)
#include "tst_preview_layout.moc"

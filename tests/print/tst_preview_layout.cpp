// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/preview_layout.h"
#include "support/runner.h"

#include <QTest>

using namespace zelto::print;

class TestPreviewLayout : public QObject
{
    Q_OBJECT

    /// The bar is 50 high, scroll bars 20; 400 twips are 27 pixels.
    static PreviewLayout layoutIn(QSize window, double magnification)
    {
        return {
            {.size = window, .barHeight = 50, .view = window - QSize(20, 70), .dotsPerInch = 96},
            {.width = 10'000, .height = 15'000},
            magnification};
    }

private slots:
    void sizes()
    {
        const auto picture = [](QSize window, double magnification) {
            const PreviewLayout layout = layoutIn(window, magnification);
            return QRect(layout.home, layout.picture);
        };
        QCOMPARE(picture({1000, 800}, 1), QRect(290, 51, 400, 600)); // as high as the window
        QCOMPARE(picture({500, 1050}, 1), QRect(40, 176, 400, 600)); // as wide
        QCOMPARE(picture({1000, 800}, 2), QRect(90, -248, 800, 1200));
        QCOMPARE(picture({30, 40}, 1), QRect(4, -29, 1, 1)); // nothing left
    }

    void scrolling()
    {
        const PreviewLayout layout = layoutIn({1000, 800}, 2);
        QCOMPARE(layout.place({}), layout.home);
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

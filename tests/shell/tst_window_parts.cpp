// SPDX-License-Identifier: GPL-3.0-or-later
#include "shell/status_bar.h"
#include "support/runner.h"
#include "widgets/icons.h"

#include <QAccessible>
#include <QDirIterator>

#include <cmath>

using namespace zelto::shell;
using namespace zelto::test;

class TestWindowParts : public QObject
{
    Q_OBJECT

    /// How many opaque dots of a picture stand out from a background: a contrast of 3, as WCAG
    /// asks.
    static int legiblePixels(const QImage& picture, QColor background)
    {
        const auto luminance = [](QColor color) {
            const auto linear = [](double c) {
                return c <= 0.03928 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
            };
            return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
                   0.0722 * linear(color.blueF());
        };
        const double back = luminance(background) + 0.05;
        int pixels = 0;
        for (int y = 0; y < picture.height(); ++y)
            for (int x = 0; x < picture.width(); ++x) {
                const QColor color = picture.pixelColor(x, y);
                const double front = luminance(color) + 0.05;
                const double contrast = front > back ? front / back : back / front;
                pixels += color.alpha() == 255 && contrast >= 3 ? 1 : 0;
            }
        return pixels;
    }

private slots:
    /// A path that is too long keeps its beginning and its end.
    void jobPanel()
    {
        StatusBar bar;
        auto* panel = bar.findChild<ElidedLabel*>(u"Stato3"_s);
        bar.resize(1600, 30);
        bar.show();
        bar.showJob(u"/lavori/VERDI.ZLT"_s);
        QCOMPARE(panel->shownText(), u"Codice lavoro: /lavori/VERDI.ZLT"_s);
        bar.showJob(u'/' + u"cartella molto lunga/"_s.repeated(20) + u"VERDI.ZLT"_s);
        QVERIFY(panel->shownText().startsWith(u"Codice lavoro: /"));
        QVERIFY(panel->shownText().endsWith(u"VERDI.ZLT"));
        QVERIFY(panel->fontMetrics().horizontalAdvance(panel->shownText()) <= panel->width());
        QCOMPARE(bar.width(), 1600);
        bar.showJob({});
        QVERIFY(panel->text().isEmpty());
    }

    /// What stands on the panels is what assistive technology reads of them.
    void panelsAreRead()
    {
        StatusBar bar;
        bar.SetStatus(u"Lettura"_s, true);
        bar.showHint(u"Apre un lavoro"_s);
        bar.showJob(u"/A.ZLT"_s);
        QStringList read;
        for (ElidedLabel* panel : bar.findChildren<ElidedLabel*>())
            read << QAccessible::queryAccessibleInterface(panel)->text(QAccessible::Name);
        QCOMPARE(read, QStringList({u"Lettura, Prego attendere..."_s, u"Apre un lavoro"_s,
                                    u"Codice lavoro: /A.ZLT"_s}));
    }

    /// Every icon is drawn and its outline can be told from a light and a dark window.
    void iconsAreLegible()
    {
        QDirIterator icons(u":/zelto/icons"_s);
        QVERIFY(icons.hasNext());
        while (icons.hasNext()) {
            const QString name = QFileInfo(icons.next()).baseName();
            const QImage picture = zelto::widgets::icon(name).pixmap(32).toImage();
            QVERIFY2(!picture.isNull(), qPrintable(name));
            if (name == u"zelto")
                continue; // carries its own background
            for (const QColor background : {QColor(0xef, 0xf0, 0xf1), QColor(0x23, 0x26, 0x29)})
                QVERIFY2(legiblePixels(picture, background) >= 40, qPrintable(name));
        }
    }
};

ZELTO_TEST(TestWindowParts)
#include "tst_window_parts.moc"

// SPDX-License-Identifier: GPL-3.0-or-later
// zelto_render_icon ICON.SVG SIZE ICON.PNG: draws the icon as a square picture of that many pixels.
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

#include <cstdio>

int main(int argc, char* argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QGuiApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const int size = arguments.value(2).toInt();
    QSvgRenderer icon(arguments.value(1));
    if (arguments.size() != 4 || size <= 0 || !icon.isValid()) {
        std::fputs("Usage: zelto_render_icon ICON.SVG SIZE ICON.PNG\n", stderr);
        return 1;
    }
    QImage picture(size, size, QImage::Format_ARGB32);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    icon.render(&painter);
    painter.end();
    return picture.save(arguments[3]) ? 0 : 2;
}

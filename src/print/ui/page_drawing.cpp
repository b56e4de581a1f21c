// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/ui/page_drawing.h"

#include "print/painter_surface.h"
#include "print/print_engine.h"
#include "print/print_error.h"

#include <QGuiApplication>

namespace zelto::print {

namespace {

/// Below the upper edge, on a ground of its own.
void writeFault(DrawnPage& page)
{
    constexpr int Margin = 8;
    QPainter painter(&page.picture);
    painter.setFont(QGuiApplication::font());
    const QSize size = page.picture.deviceIndependentSize().toSize();
    const QRect all = QRect(QPoint(), size).adjusted(Margin, Margin, -Margin, -Margin);
    constexpr int Flags = Qt::AlignHCenter | Qt::TextWordWrap;
    const QRect text = painter.boundingRect(all, Flags, page.fault);
    painter.fillRect(text.adjusted(-Margin, -Margin, Margin, Margin), QColor(0xFF, 0xF0, 0xD0));
    painter.setPen(Qt::black);
    painter.drawText(all, Flags, page.fault);
}

} // namespace

DrawnPage drawPage(PrintEngine& engine, int page, QSize size, double pixelRatio)
{
    DrawnPage drawn{QImage(size * pixelRatio, QImage::Format_RGB32)};
    drawn.picture.setDevicePixelRatio(pixelRatio);
    drawn.picture.fill(Qt::white);
    try {
        PictureSurface surface(drawn.picture,
                               PictureSurface::zoomToFit(drawn.picture, engine.PageWidth()));
        const DrawingTarget target(engine, surface);
        engine.setPageNumber(page - 1);
        const PageCondition condition = engine.ReplayPage();
        surface.finish();
        if (condition == PageCondition::Empty)
            drawn.fault = u"La pagina %1 è vuota: il suo file non contiene nulla."_s.arg(page);
        else if (condition == PageCondition::Damaged)
            drawn.fault = u"La pagina %1 è danneggiata: ne manca almeno una parte."_s.arg(page);
    } catch (const PrintError& error) {
        drawn.fault = error.description();
    }
    if (!drawn.fault.isEmpty())
        writeFault(drawn);
    return drawn;
}

} // namespace zelto::print

// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/painter_surface.h"

#include "print/page_size.h"
#include "print/print_error.h"

#include <QPagedPaintDevice>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace zelto::print {

void PainterSurface::begin(QPaintDevice& device, double scaleX, double scaleY)
{
    if (!m_painter.begin(&device))
        throw PrintError(PrintErrorNumber::PrinterFailed, u"Impossibile avviare la stampa."_s);
    m_painter.scale(scaleX, scaleY);
    m_painter.setPen(m_colour);
}

void PainterSurface::drawText(QPointF topLeft, const QString& text, const FontMetrics& metrics)
{
    prepare();
    const QPointF baseline = topLeft + QPointF{0, metrics.ascent()};
    if (const auto glyphs = metrics.glyphRun(text))
        return m_painter.drawGlyphRun(baseline, *glyphs);
    m_painter.setFont(metrics.font());
    m_painter.drawText(baseline, printable(text));
}

void PainterSurface::drawLine(const QLineF& line, float penWidth)
{
    prepare();
    usePen(penWidth);
    m_painter.drawLine(line);
}

void PainterSurface::drawBox(const QRectF& box, float penWidth)
{
    prepare();
    usePen(penWidth);
    m_painter.drawRect(box);
}

void PainterSurface::drawPicture(const QRectF& area, const QImage& picture)
{
    prepare();
    m_painter.drawImage(area, picture);
}

void PainterSurface::setColour(QColor colour)
{
    m_colour = colour;
    if (m_painter.isActive())
        m_painter.setPen(m_colour);
}

/// As wide on every surface, in whole dots and never less than one.
void PainterSurface::usePen(float penWidth)
{
    constexpr double UnitsPerInch = 300;
    const double dots = m_painter.deviceTransform().m11(); // in a twip
    const double twips = std::clamp(penWidth, 0.0F, 1000.0F) * TwipsPerInch / UnitsPerInch;
    QPen used(m_colour, std::max(1.0, std::round(twips * dots)) / dots);
    used.setCapStyle(Qt::FlatCap);
    used.setJoinStyle(Qt::MiterJoin);
    m_painter.setPen(used);
}

void PagedSurface::finish()
{
    if (painter().isActive() && !painter().end())
        throw PrintError(PrintErrorNumber::PrinterFailed, u"Impossibile completare la stampa."_s);
}

void PagedSurface::prepare()
{
    if (!painter().isActive()) {
        begin(m_device, m_device.logicalDpiX() / static_cast<double>(TwipsPerInch),
              m_device.logicalDpiY() / static_cast<double>(TwipsPerInch));
        m_empty = false;
    }
    for (; m_pendingBreaks > 0; --m_pendingBreaks) {
        if (!m_device.newPage())
            throw PrintError(PrintErrorNumber::PrinterFailed,
                             u"Impossibile iniziare una nuova pagina di stampa."_s);
    }
}

PictureSurface::PictureSurface(QPaintDevice& device, double zoom)
    : m_zoom(std::clamp(zoom, 0.01, 100.0))
{
    begin(device, m_zoom * device.logicalDpiX() / TwipsPerInch,
          m_zoom * device.logicalDpiY() / TwipsPerInch);
    painter().setRenderHint(QPainter::SmoothPixmapTransform);
}

double PictureSurface::zoomToFit(const QPaintDevice& device, float pageWidth)
{
    const double dots = device.width() / device.devicePixelRatio();
    return dots * TwipsPerInch / device.logicalDpiX() / static_cast<double>(pageWidth);
}

} // namespace zelto::print

// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/painter_surface.h"

#include "print/page_size.h"
#include "print/print_error.h"

#include <QPagedPaintDevice>
#include <QPen>

#include <algorithm>

namespace zelto::print {

namespace {

/// One pen width unit on paper: a dot of a printer of 600 dots per inch.
constexpr double TwipsPerPenUnit = TwipsPerInch / 600.0;

} // namespace

void PainterSurface::begin(QPaintDevice& device, double scaleX, double scaleY)
{
    if (!m_painter.begin(&device))
        throw PrintError(PrintErrorNumber::PrinterFailed, u"Impossibile avviare la stampa."_s);
    m_painter.scale(scaleX, scaleY);
    m_painter.setBackground(m_fill);
    m_painter.setPen(m_fore);
    m_painter.setFont(m_font);
}

void PainterSurface::drawText(QPointF topLeft, const QString& text, const FontMetrics& metrics)
{
    prepare();
    if (!metrics.font().isCopyOf(m_font)) {
        m_font = metrics.font();
        m_painter.setFont(m_font);
    }
    m_painter.drawText(topLeft + QPointF{0, metrics.ascent()}, printable(text));
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

void PainterSurface::setColours(QColor fill, QColor fore)
{
    // Boxes are outlines and texts have no ground, so the fill colour waits for a shape to fill.
    m_fill = fill;
    m_fore = fore;
    if (!hasBegun())
        return;
    m_painter.setBackground(m_fill);
    m_painter.setPen(m_fore);
}

void PainterSurface::usePen(float penWidth)
{
    QPen used = pen(std::clamp(penWidth, 0.0F, 1000.0F));
    used.setColor(m_fore);
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
    if (!hasBegun()) {
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

QPen PagedSurface::pen(float penWidth) const
{
    QPen used;
    used.setWidthF(penWidth * TwipsPerPenUnit);
    return used;
}

} // namespace zelto::print

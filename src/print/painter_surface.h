// SPDX-License-Identifier: GPL-3.0-or-later
// Surfaces drawn by a painter whose unit is one twip.
#pragma once

#include "print/surface.h"

#include <QPainter>

class QPagedPaintDevice;

namespace zelto::print {

/// What pictures and paper have in common.
class PainterSurface : public Surface
{
public:
    PainterSurface(const PainterSurface&) = delete;
    PainterSurface& operator=(const PainterSurface&) = delete;

    void drawText(QPointF topLeft, const QString& text, const FontMetrics& metrics) override;
    void drawLine(const QLineF& line, float penWidth) override;
    void drawBox(const QRectF& box, float penWidth) override;
    void drawPicture(const QRectF& area, const QImage& picture) override;
    void setColour(QColor colour) override;

protected:
    PainterSurface() = default;

    /// Starts painting; throws PrintError when the device refuses.
    void begin(QPaintDevice& device, double scaleX, double scaleY);

    [[nodiscard]] QPainter& painter() { return m_painter; }

    /// Called before anything is drawn.
    virtual void prepare() {}

private:
    void usePen(float penWidth);

    QPainter m_painter;
    QColor m_colour = Qt::black;
};

/// The pages of a printer or of anything else with pages. The print job begins when something is
/// drawn, and a page break takes place when something is drawn after it: a document without content
/// is no job, and none ends in an empty page.
class PagedSurface : public PainterSurface
{
public:
    /// The device outlives the surface; it is in use until finish().
    explicit PagedSurface(QPagedPaintDevice& device) : m_device(device) {}

    /// Whether nothing has been drawn.
    [[nodiscard]] bool isEmpty() const { return m_empty; }

    void newPage() override { ++m_pendingBreaks; }
    void finish() override;

protected:
    void prepare() override;

private:
    QPagedPaintDevice& m_device;
    bool m_empty = true;
    int m_pendingBreaks = 0;
};

/// One page on a picture: an image, a pixmap or a widget.
class PictureSurface : public PainterSurface
{
public:
    /// The page is drawn over what the device shows, zoom times the size it has on paper at the
    /// device's resolution; the zoom is kept between 0.01 and 100. The device outlives the surface
    /// and is in use until finish().
    PictureSurface(QPaintDevice& device, double zoom);

    /// The zoom at which a page of the width (twips) fills the device's width.
    [[nodiscard]] static double zoomToFit(const QPaintDevice& device, float pageWidth);

    void newPage() override {}
    void finish() override { painter().end(); }
    [[nodiscard]] double zoom() const override { return m_zoom; }

private:
    double m_zoom;
};

} // namespace zelto::print

// SPDX-License-Identifier: GPL-3.0-or-later
// Surfaces drawn by a painter whose unit is one twip.
#pragma once

#include "print/surface.h"

#include <QFont>
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
    void setColours(QColor fill, QColor fore) override;

protected:
    PainterSurface() = default;

    /// Starts painting; throws PrintError when the device refuses.
    void begin(QPaintDevice& device, double scaleX, double scaleY);
    [[nodiscard]] bool hasBegun() const { return m_painter.isActive(); }

    [[nodiscard]] QPainter& painter() { return m_painter; }

    /// Called before anything is drawn.
    virtual void prepare() {}

    /// The pen of the width, without its colour.
    [[nodiscard]] virtual QPen pen(float penWidth) const = 0;

private:
    void usePen(float penWidth);

    QPainter m_painter;
    QFont m_font;
    QColor m_fill = Qt::white;
    QColor m_fore = Qt::black;
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
    [[nodiscard]] double zoom() const override { return 0; }

protected:
    void prepare() override;
    [[nodiscard]] QPen pen(float penWidth) const override;

private:
    QPagedPaintDevice& m_device;
    bool m_empty = true;
    int m_pendingBreaks = 0;
};

} // namespace zelto::print

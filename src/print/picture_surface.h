// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "print/painter_surface.h"

namespace zelto::print {

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

protected:
    [[nodiscard]] QPen pen(float penWidth) const override;

private:
    double m_zoom;
};

} // namespace zelto::print

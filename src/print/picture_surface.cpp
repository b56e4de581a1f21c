// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/picture_surface.h"

#include "print/page_size.h"

#include <QPaintDevice>
#include <QPen>

#include <algorithm>
#include <cmath>

namespace zelto::print {

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

QPen PictureSurface::pen(float penWidth) const
{
    QPen used;
    used.setCosmetic(true);
    used.setWidthF(std::max(1.0, std::round(penWidth * m_zoom)));
    return used;
}

} // namespace zelto::print

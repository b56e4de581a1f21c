// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/page_size.h"

#include <QBuffer>
#include <QPageSize>
#include <QPdfWriter>

namespace zelto::print {

PageSize pageSizeOf(const QPagedPaintDevice& device)
{
    const auto twips = [](int dots, int dotsPerInch) {
        return static_cast<float>(dots) * TwipsPerInch / static_cast<float>(dotsPerInch);
    };
    return {.width = twips(device.width(), device.logicalDpiX()),
            .height = twips(device.height(), device.logicalDpiY())};
}

QPageLayout standardPageLayout()
{
    constexpr double Margin = 5;
    return {QPageSize{QPageSize::A4}, QPageLayout::Portrait,
            QMarginsF{Margin, Margin, Margin, Margin}, QPageLayout::Millimeter};
}

PageSize standardPageSize()
{
    QBuffer nowhere;
    QPdfWriter device(&nowhere);
    device.setResolution(TwipsPerInch);
    device.setPageLayout(standardPageLayout());
    return pageSizeOf(device);
}

} // namespace zelto::print

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QPageLayout>

class QPagedPaintDevice;

namespace zelto::print {

/// Twips per inch: the unit of the page, and the resolution at which pages are laid out.
inline constexpr int TwipsPerInch = 1440;

/// The printable area of a page in twips.
struct PageSize
{
    float width = 0;
    float height = 0;
};

/// The printable area of the device: of a printer, or of a PDF file.
[[nodiscard]] PageSize pageSizeOf(const QPagedPaintDevice& device);

/// A4 upright with margins of 5 mm, for a machine without a printer.
[[nodiscard]] QPageLayout standardPageLayout();
[[nodiscard]] PageSize standardPageSize();

} // namespace zelto::print

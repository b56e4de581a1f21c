// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QImage>
#include <QSize>
#include <QString>

namespace zelto::print {

class PrintEngine;

/// A recorded page as a picture.
struct DrawnPage
{
    QImage picture;
    QString fault = {}; ///< why the page is not as it was recorded; it stands on the picture, too
};

/// The page, counted from 1, in so many device-independent pixels. Throws nothing: what cannot be
/// read is a fault.
[[nodiscard]] DrawnPage drawPage(PrintEngine& engine, int page, QSize size, double pixelRatio);

} // namespace zelto::print

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

namespace zelto::widgets {

inline constexpr int TwipsPerInch = 1440;

/// Pixels of the widget's screen as twips and back, to the nearest.
[[nodiscard]] inline int twipsOf(const QWidget& widget, int pixels)
{
    return qRound(static_cast<double>(pixels) * TwipsPerInch / widget.logicalDpiX());
}
[[nodiscard]] inline int pixelsOf(const QWidget& widget, int twips)
{
    return qRound(static_cast<double>(twips) * widget.logicalDpiX() / TwipsPerInch);
}

} // namespace zelto::widgets

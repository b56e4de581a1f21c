// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/preview_layout.h"

#include <algorithm>

namespace zelto::print {

namespace {

/// The part of the window that a whole page takes at most.
constexpr double UsedPart = 0.8;
/// The page stands a little above the middle.
constexpr int RaisedTwips = 400;

QSizeF fittingPicture(const PreviewWindow& window, const PageSize& page)
{
    const QSizeF available{UsedPart * window.size.width(),
                           UsedPart * (window.size.height() - window.barHeight)};
    const double ratio = static_cast<double>(page.height) / static_cast<double>(page.width);
    if (ratio * available.width() > available.height())
        return {available.height() / ratio, available.height()};
    return {available.width(), ratio * available.width()};
}

int scrolled(double point, int length)
{
    return std::clamp(qRound(point / length * ScrollPosition::Maximum), 0, ScrollPosition::Maximum);
}

double offset(int position, int length)
{
    return (0.5 - static_cast<double>(position) / ScrollPosition::Maximum) * length;
}

} // namespace

PreviewLayout::PreviewLayout(const PreviewWindow& window, const PageSize& page,
                             double magnification)
{
    const QSizeF exact = fittingPicture(window, page) * magnification;
    picture = exact.toSize().expandedTo({1, 1});
    const int raised = qRound(RaisedTwips * window.dotsPerInch / TwipsPerInch);
    home = {(window.view.width() - picture.width()) / 2,
            (window.view.height() - raised - picture.height()) / 2};
    scale = exact.width() * TwipsPerInch / window.dotsPerInch / static_cast<double>(page.width);
}

ScrollPosition PreviewLayout::atTop(int x) const
{
    constexpr int Margin = 8;
    return {.x = x, .y = scrolled(middle().y() - Margin, picture.height())};
}

QPoint PreviewLayout::place(const ScrollPosition& position) const
{
    return home + QPointF{offset(position.x, picture.width()), offset(position.y, picture.height())}
                      .toPoint();
}

ScrollPosition PreviewLayout::centredOn(QPointF point) const
{
    return {.x = scrolled(point.x(), picture.width()), .y = scrolled(point.y(), picture.height())};
}

} // namespace zelto::print

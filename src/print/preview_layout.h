// SPDX-License-Identifier: GPL-3.0-or-later
// Where the preview window shows the page, as figures.
#pragma once

#include "print/page_size.h"

#include <QPoint>
#include <QPointF>
#include <QSize>

namespace zelto::print {

/// How large a page is shown: 1 fits the window, 2 is twice that.
inline constexpr double WholePage = 1;
inline constexpr double EnlargedPage = 2;

/// The preview window in pixels.
struct PreviewWindow
{
    QSize size;        ///< within its frame
    int barHeight = 0; ///< of the bar along the top
    QSize view;        ///< what the page moves in: without the bars on all sides
    double dotsPerInch = 96;
};

/// Positions of the two scroll bars, from 0 to Maximum: the place of the page in the middle of the
/// view.
struct ScrollPosition
{
    static constexpr int Maximum = 1000;

    int x = Maximum / 2;
    int y = Maximum / 2;

    bool operator==(const ScrollPosition&) const = default;
};

/// The page picture in the window: its size, its home and where scrolling takes it.
struct PreviewLayout
{
    PreviewLayout() = default;

    /// The page that fits four fifths of the window, times the magnification.
    PreviewLayout(const PreviewWindow& window, const PageSize& page, double magnification);

    /// The place in the view around which the page moves.
    [[nodiscard]] QPoint middle() const
    {
        return home + QPoint{picture.width() / 2, picture.height() / 2};
    }

    /// Where the picture's top-left corner is at the scroll position: at home when it is in the
    /// middle.
    [[nodiscard]] QPoint place(const ScrollPosition& position) const;

    /// The scroll position at which the picture's upper edge is just below that of the view, at the
    /// place across.
    [[nodiscard]] ScrollPosition atTop(int x) const;

    /// The scroll position that brings the point of the picture (pixels) to middle().
    [[nodiscard]] ScrollPosition centredOn(QPointF point) const;

    /// The point of the picture that the scroll position puts at the place in the view.
    [[nodiscard]] QPointF pointAt(QPoint viewPlace, const ScrollPosition& position) const
    {
        return viewPlace - place(position);
    }

    QSize picture{1, 1}; ///< in pixels, at least one
    QPoint home;
    double scale = 1; ///< 1 is the size on paper
};

} // namespace zelto::print

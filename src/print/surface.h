// SPDX-License-Identifier: GPL-3.0-or-later
// Where pages are drawn.
#pragma once

#include "print/font_metrics.h"
#include "print/page_marks.h"

#include <QColor>
#include <QImage>
#include <QLineF>
#include <QRectF>
#include <QString>

namespace zelto::print {

/// A printer, a file or a picture that takes what the page operations draw, in twips from the
/// top-left corner of the printable area. Failures are thrown as PrintError.
class Surface
{
public:
    virtual ~Surface() = default;

    /// The text's top-left corner stands at the point.
    virtual void drawText(QPointF topLeft, const QString& text, const FontMetrics& metrics) = 0;

    /// Pen widths are in 1/300 inch of the printed page.
    virtual void drawLine(const QLineF& line, float penWidth) = 0;

    /// The outline of a rectangle.
    virtual void drawBox(const QRectF& box, float penWidth) = 0;

    virtual void drawPicture(const QRectF& area, const QImage& picture) = 0;

    /// Of texts, lines and boxes from now on.
    virtual void setColour(QColor colour) = 0;

    /// What is drawn from now on goes to the next page.
    virtual void newPage() = 0;

    /// What is known of the page that is drawn on, once more or anew. Only files pass it on.
    virtual void markPage(const PageMark& /*mark*/) {}

    /// Nothing more will be drawn.
    virtual void finish() = 0;

    /// Size of a picture in relation to the printed page; 0 for paper.
    [[nodiscard]] virtual double zoom() const { return 0; }
};

} // namespace zelto::print

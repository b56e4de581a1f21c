// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "print/surface.h"

#include <QFont>
#include <QImage>
#include <QLineF>
#include <QPointF>
#include <QString>

#include <functional>
#include <variant>
#include <vector>

class QPainter;

namespace zelto::bench {

/// Notes what the pages of a report draw, so that a painter can draw it again without any work of
/// ours in between. Takes what the reports draw: texts and lines.
class DrawingList : public print::Surface
{
public:
    void drawText(QPointF topLeft, const QString& text, const print::FontMetrics& metrics) override;
    void drawLine(const QLineF& line, float penWidth) override;
    void drawBox(const QRectF& box, float penWidth) override;
    void drawPicture(const QRectF& area, const QImage& picture) override;
    void setColour(QColor colour) override;
    void newPage() override { m_pageDue = true; }
    void finish() override {}

    /// Draws everything to a new PDF file of standard pages.
    void printPdf(const QString& fileName) const;

    /// Draws everything, one page over the other, on a white picture of the width that a page of
    /// the width (twips) fills.
    [[nodiscard]] QImage drawPicture(QSize size, float pageWidth) const;

private:
    struct Text
    {
        QPointF baseline;
        QString text;
        QFont font;
    };
    struct Line
    {
        QLineF line;
        double penWidth = 0;
    };
    struct PageBreak
    {};

    /// A break behind the last drawing would make an empty page.
    void turnPage();
    void draw(QPainter& painter, const std::function<void()>& newPage) const;

    std::vector<std::variant<Text, Line, PageBreak>> m_drawings;
    bool m_pageDue = false;
};

} // namespace zelto::bench

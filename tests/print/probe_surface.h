// SPDX-License-Identifier: GPL-3.0-or-later
// A surface that notes what it is asked to draw, one line each.
#pragma once

#include "print/surface.h"

#include <QStringList>

#include <cmath>

namespace zelto::test {

class ProbeSurface : public print::Surface
{
public:
    QStringList drawn;

    void drawText(QPointF topLeft, const QString& text, const print::FontMetrics& metrics) override
    {
        const QFont& font = metrics.font();
        QString style = u"%1 %2"_s.arg(font.family()).arg(font.pixelSize());
        style += font.bold() ? u" bold"_s : QString();
        style += font.italic() ? u" italic"_s : QString();
        style += font.underline() ? u" underline"_s : QString();
        note(u"text"_s, {topLeft.x(), topLeft.y()}, {style, text});
    }
    void drawLine(const QLineF& line, float penWidth) override
    {
        note(u"line"_s, {line.x1(), line.y1(), line.x2(), line.y2(), penWidth});
    }
    void drawBox(const QRectF& box, float penWidth) override
    {
        note(u"box"_s, {box.left(), box.top(), box.right(), box.bottom(), penWidth});
    }
    void drawPicture(const QRectF& area, const QImage& picture) override
    {
        note(u"picture"_s, {area.left(), area.top(), area.right(), area.bottom(),
                            static_cast<double>(picture.width())});
    }
    void setColour(QColor colour) override { drawn << u"colour "_s + colour.name(); }
    void newPage() override { drawn << u"page"_s; }
    void finish() override { drawn << u"finish"_s; }

    /// What was drawn since the last call.
    QStringList take() { return std::exchange(drawn, {}); }

private:
    void note(const QString& what, const std::vector<double>& twips, const QStringList& texts = {})
    {
        QStringList words{what};
        for (const double number : twips)
            words << QString::number(std::lround(number));
        drawn << (words + texts).join(u' ');
    }
};

} // namespace zelto::test

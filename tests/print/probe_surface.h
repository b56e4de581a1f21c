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
        QString style = QStringLiteral("%1 %2").arg(font.family()).arg(font.pixelSize());
        style += font.bold() ? QStringLiteral(" bold") : QString();
        style += font.italic() ? QStringLiteral(" italic") : QString();
        style += font.underline() ? QStringLiteral(" underline") : QString();
        note(QStringLiteral("text"), {topLeft.x(), topLeft.y()}, {style, text});
    }
    void drawLine(const QLineF& line, float penWidth) override
    {
        note(QStringLiteral("line"), {line.x1(), line.y1(), line.x2(), line.y2(), penWidth});
    }
    void drawBox(const QRectF& box, float penWidth) override
    {
        note(QStringLiteral("box"), {box.left(), box.top(), box.right(), box.bottom(), penWidth});
    }
    void drawPicture(const QRectF& area, const QImage& picture) override
    {
        note(QStringLiteral("picture"), {area.left(), area.top(), area.right(), area.bottom(),
                                         static_cast<double>(picture.width())});
    }
    void setColours(QColor fill, QColor fore) override
    {
        note(QStringLiteral("colours"), {}, {fill.name(), fore.name()});
    }
    void newPage() override { note(QStringLiteral("page")); }
    void finish() override { note(QStringLiteral("finish")); }
    [[nodiscard]] double zoom() const override { return 0; }

    /// What was drawn since the last call.
    QStringList take() { return std::exchange(drawn, {}); }

private:
    void note(const QString& what, const std::vector<double>& twips = {},
              const QStringList& texts = {})
    {
        QStringList words{what};
        for (const double number : twips)
            words << QString::number(std::lround(number));
        drawn << (words + texts).join(u' ');
    }
};

} // namespace zelto::test

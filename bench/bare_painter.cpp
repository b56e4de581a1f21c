// SPDX-License-Identifier: GPL-3.0-or-later
#include "bench/bare_painter.h"

#include "print/page_size.h"

#include <QPainter>
#include <QPdfWriter>

#include <stdexcept>

namespace zelto::bench {

namespace {

template <typename... Visitors>
struct Overloaded : Visitors...
{
    using Visitors::operator()...;
};
template <typename... Visitors>
Overloaded(Visitors...) -> Overloaded<Visitors...>;

[[noreturn]] void unexpected()
{
    throw std::logic_error("the report draws more than texts and lines");
}

} // namespace

void DrawingList::drawText(QPointF topLeft, const QString& text, const print::FontMetrics& metrics)
{
    turnPage();
    m_drawings.emplace_back(Text{.baseline = topLeft + QPointF{0, metrics.ascent()},
                                 .text = print::printable(text),
                                 .font = metrics.font()});
}

void DrawingList::drawLine(const QLineF& line, float penWidth)
{
    constexpr double TwipsPerPenUnit = print::TwipsPerInch / 600.0;
    turnPage();
    m_drawings.emplace_back(
        Line{.line = line, .penWidth = static_cast<double>(penWidth) * TwipsPerPenUnit});
}

void DrawingList::turnPage()
{
    if (m_pageDue)
        m_drawings.emplace_back(PageBreak{});
    m_pageDue = false;
}

void DrawingList::drawBox(const QRectF& /*box*/, float /*penWidth*/)
{
    unexpected();
}

void DrawingList::drawPicture(const QRectF& /*area*/, const QImage& /*picture*/)
{
    unexpected();
}

void DrawingList::setColour(QColor /*colour*/)
{
    unexpected();
}

void DrawingList::draw(QPainter& painter, const std::function<void()>& newPage) const
{
    const QFont* font = nullptr;
    const Overloaded draw{
        [&](const Text& text) {
            if (font == nullptr || !text.font.isCopyOf(*font))
                painter.setFont(text.font);
            font = &text.font;
            painter.drawText(text.baseline, text.text);
        },
        [&](const Line& line) {
            painter.setPen(QPen(Qt::black, line.penWidth, Qt::SolidLine, Qt::FlatCap));
            painter.drawLine(line.line);
        },
        [&](PageBreak) { newPage(); },
    };
    for (const auto& drawing : m_drawings)
        std::visit(draw, drawing);
}

void DrawingList::printPdf(const QString& fileName) const
{
    QPdfWriter writer(fileName);
    writer.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b); // as ours
    writer.setResolution(print::TwipsPerInch);
    writer.setPageLayout(print::standardPageLayout());
    QPainter painter(&writer);
    draw(painter, [&] { writer.newPage(); });
}

QImage DrawingList::drawPicture(QSize size, float pageWidth) const
{
    QImage picture(size, QImage::Format_RGB32);
    picture.fill(Qt::white);
    QPainter painter(&picture);
    const double scale = size.width() / static_cast<double>(pageWidth);
    painter.scale(scale, scale);
    draw(painter, [] {});
    return picture;
}

} // namespace zelto::bench

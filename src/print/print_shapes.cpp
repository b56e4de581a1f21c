// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/print_engine.h"

#include <QFileInfo>
#include <QImageReader>

namespace zelto::print {

void PrintEngine::DrawBox(float top, float left, float bottom, float right, float penWidth,
                          bool shadow)
{
    if (isRecording())
        return m_page.write(Opcode::Box, top, left, bottom, right, penWidth, shadow ? 1 : 0);
    if (m_surface != nullptr)
        m_surface->drawBox(QRectF{position(top, left), position(bottom, right)}.normalized(),
                           penWidth);
    if (shadow)
        drawShadow(top, left, bottom, right, 2 * penWidth);
}

void PrintEngine::drawShadow(float top, float left, float bottom, float right, float penWidth)
{
    constexpr float Distance = 0.1F;
    constexpr float IndentColumns = 0.35F;
    constexpr float IndentRows = 0.25F;
    const QPointF corner = position(bottom + Distance, right + Distance);
    drawLine(position(bottom + Distance, left + IndentColumns), corner, penWidth);
    drawLine(position(top + IndentRows, right + Distance), corner, penWidth);
}

void PrintEngine::DrawHLine(float row, float firstColumn, float lastColumn, float penWidth)
{
    if (isRecording())
        return m_page.write(Opcode::HLine, row, firstColumn, lastColumn, penWidth);
    drawLine(position(row, firstColumn), position(row, lastColumn), penWidth);
}

void PrintEngine::DrawVLine(float column, float firstRow, float lastRow, float penWidth)
{
    if (isRecording())
        return m_page.write(Opcode::VLine, column, firstRow, lastRow, penWidth);
    drawLine(position(firstRow, column), position(lastRow, column), penWidth);
}

void PrintEngine::drawLine(QPointF from, QPointF to, float penWidth)
{
    if (m_surface != nullptr)
        m_surface->drawLine({from, to}, penWidth);
}

void PrintEngine::DrawPicture(float row, float column, float width, float height,
                              const QString& fileName)
{
    if (isRecording())
        return m_page.write(Opcode::Picture, row, column, width, height, fileName);
    const QRectF area{position(row, column), position(row + height, column + width)};
    // A pipe or a device under the name could keep the reader for ever.
    if (m_surface == nullptr || !area.isValid() || !QFileInfo{fileName}.isFile())
        return;
    QImageReader reader(fileName);
    reader.setAutoTransform(true);
    const QImage picture = reader.read();
    if (!picture.isNull())
        m_surface->drawPicture(area, picture);
}

} // namespace zelto::print

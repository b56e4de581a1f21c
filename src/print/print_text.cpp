// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/grouped_number.h"
#include "print/print_engine.h"

namespace zelto::print {

namespace {

/// Bold, italic and underline, "1" for on.
QString flagDigits(const FieldStyle& style)
{
    QString digits(3, u'0');
    if (style.bold)
        digits[0] = u'1';
    if (style.italic)
        digits[1] = u'1';
    if (style.underline)
        digits[2] = u'1';
    return digits;
}

} // namespace

void PrintEngine::PrintText(float row, float column, float width, const QString& text)
{
    if (isRecording())
        return m_page.write(Opcode::Text, row, column, width, text);
    drawText(position(row, column), clipped(text, width, metrics()), metrics());
}

void PrintEngine::PrintRight(float row, float column, float reduction, const QString& text)
{
    if (isRecording())
        return m_page.write(Opcode::Right, row, column, reduction, text);
    const float reduced = (1 - reduction / 100) * column;
    drawAligned(position(row, reduced), text, Alignment::Right, metrics());
}

void PrintEngine::PrintCentred(float row, float column, float width, const QString& text)
{
    if (isRecording())
        return m_page.write(Opcode::Centred, row, column, width, text);
    drawAligned(position(row, column), clipped(text, width, metrics()), Alignment::Centred,
                metrics());
}

void PrintEngine::PrintNumber(float row, float column, const QString& number)
{
    if (isRecording())
        return m_page.write(Opcode::Number, row, column, number);
    drawAligned(position(row, column), groupedNumber(number), Alignment::Right, metrics());
}

void PrintEngine::PrintField(float row, float column, float width, const FieldStyle& style,
                             const QString& text)
{
    if (!isRecording())
        return drawField(row, column, width, style, text);
    m_page.write(Opcode::Field, row, column, width, style.size, static_cast<int>(style.alignment),
                 flagDigits(style), text);
}

void PrintEngine::drawField(float row, float column, float width, const FieldStyle& style,
                            const QString& text)
{
    const auto font = m_fonts.find({.name = m_font.name,
                                    .size = style.size > 0 ? style.size : m_font.size,
                                    .bold = style.bold,
                                    .underline = style.underline,
                                    .italic = style.italic});
    drawAligned(position(row, column), clipped(text, width, *font), style.alignment, *font);
}

QString PrintEngine::clipped(const QString& text, float width, const FontMetrics& metrics) const
{
    if (width == 0)
        return text;
    return text.left(
        metrics.fittingLength(text, static_cast<double>(width) * static_cast<double>(m_charWidth)));
}

/// The text's top edge at the point, which is its left end, its right end or its middle.
void PrintEngine::drawAligned(QPointF point, const QString& text, Alignment alignment,
                              const FontMetrics& metrics)
{
    if (alignment == Alignment::Right)
        point.rx() -= metrics.width(text);
    else if (alignment != Alignment::Left)
        point.rx() -= metrics.width(text) / 2;
    drawText(point, text, metrics);
}

void PrintEngine::drawText(QPointF topLeft, const QString& text, const FontMetrics& metrics)
{
    if (m_surface != nullptr && !text.isEmpty())
        m_surface->drawText(topLeft, text, metrics);
}

} // namespace zelto::print

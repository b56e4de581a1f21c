// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/print_engine.h"

namespace zelto::print {

namespace {

/// Bold, italic and underline, "1" for on.
QString flagDigits(const FieldStyle& style)
{
    QString digits;
    for (const bool on : {style.bold, style.italic, style.underline})
        digits += on ? u'1' : u'0';
    return digits;
}

/// "1234567,5" as "1 234 567.5"; empty when the text is blank or its value 0.
QString groupedNumber(const QString& number)
{
    QString grouped = text::ToPointDecimal(number);
    if (text::leadingNumber(QStringView{grouped}) == 0)
        return {};
    const qsizetype point = grouped.indexOf(u'.');
    for (qsizetype i = (point < 0 ? grouped.size() : point) - 3; i > 0; i -= 3)
        grouped.insert(i, u' ');
    return grouped;
}

} // namespace

void PrintEngine::PrintText(float row, float column, float width, const QString& text)
{
    if (isRecording())
        return m_page.write(Opcode::Text, row, column, width, text);
    drawText(position(row, column), clipped(text, width, metrics()), Alignment::Left, metrics());
}

void PrintEngine::PrintRight(float row, float column, float reduction, const QString& text)
{
    if (isRecording())
        return m_page.write(Opcode::Right, row, column, reduction, text);
    const float reduced = (1 - reduction / 100) * column;
    drawText(position(row, reduced), text, Alignment::Right, metrics());
}

void PrintEngine::PrintFigure(float row, float column, std::string_view figure)
{
    if (isRecording())
        return m_page.write(Opcode::Right, row, column, 0, figure);
    PrintRight(row, column, 0, QString::fromLatin1(QByteArrayView(figure)));
}

void PrintEngine::PrintCentred(float row, float column, float width, const QString& text)
{
    if (isRecording())
        return m_page.write(Opcode::Centred, row, column, width, text);
    drawText(position(row, column), clipped(text, width, metrics()), Alignment::Centred, metrics());
}

void PrintEngine::PrintNumber(float row, float column, const QString& number)
{
    if (isRecording())
        return m_page.write(Opcode::Number, row, column, number);
    drawText(position(row, column), groupedNumber(number), Alignment::Right, metrics());
}

void PrintEngine::PrintField(float row, float column, float width, const FieldStyle& style,
                             const QString& text)
{
    if (isRecording())
        return m_page.write(Opcode::Field, row, column, width, style.size,
                            static_cast<int>(style.alignment), flagDigits(style), text);
    const auto font = m_fonts.find({.name = m_font.name,
                                    .size = style.size > 0 ? style.size : m_font.size,
                                    .bold = style.bold,
                                    .underline = style.underline,
                                    .italic = style.italic});
    drawText(position(row, column), clipped(text, width, *font), style.alignment, *font);
}

QString PrintEngine::clipped(const QString& text, float width, const FontMetrics& metrics) const
{
    return width == 0 ? text : text.left(metrics.fittingLength(text, widthInTwips(width)));
}

/// The text's top edge at the point, which is its left end, its right end or its middle.
void PrintEngine::drawText(QPointF point, const QString& text, Alignment alignment,
                           const FontMetrics& metrics)
{
    if (m_surface == nullptr || text.isEmpty())
        return;
    if (alignment == Alignment::Right)
        point.rx() -= metrics.width(text);
    else if (alignment != Alignment::Left)
        point.rx() -= metrics.width(text) / 2;
    m_surface->drawText(point, text, metrics);
}

} // namespace zelto::print

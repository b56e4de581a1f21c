// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/font_metrics.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zelto::print {

namespace {

constexpr float TwipsPerPoint = 20;

QFont fontOf(const FontState& state)
{
    const float points = std::isfinite(state.size) ? std::clamp(state.size, 0.1F, 1000.0F) : 10;
    QFont font(state.name);
    font.setPixelSize(static_cast<int>(std::lround(points * TwipsPerPoint)));
    font.setBold(state.bold);
    font.setItalic(state.italic);
    font.setUnderline(state.underline);
    font.setKerning(false);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::PreferNoShaping);
    return font;
}

bool isControl(QChar c)
{
    return c < u' ' || (c >= u'\x7F' && c < u'\xA0') || c == QChar::LineSeparator ||
           c == QChar::ParagraphSeparator;
}

/// Characters that neither combine with their neighbours nor turn the direction of writing.
bool isSimple(QChar c)
{
    const char16_t code = c.unicode();
    return code < 0x300 || (code >= 0x370 && code < 0x483) || (code >= 0x2010 && code < 0x2028) ||
           (code >= 0x2030 && code < 0x205F) || (code >= 0x20A0 && code < 0x20D0) ||
           (code >= 0x2100 && code < 0x2300);
}

bool isSimpleText(QStringView text)
{
    return std::ranges::all_of(text, isSimple);
}

} // namespace

QString printable(const QString& text)
{
    QString shown = text.normalized(QString::NormalizationForm_C);
    if (std::ranges::any_of(std::as_const(shown), isControl))
        std::ranges::replace_if(shown, isControl, QChar{u' '});
    return shown;
}

FontMetrics::FontMetrics(const FontState& state)
    : m_font(fontOf(state)), m_metrics(m_font), m_rawFont(QRawFont::fromFont(m_font))
{
    for (std::size_t code = 0; code < m_latin.size(); ++code) {
        const QString shown = printable(QChar{static_cast<char16_t>(code)});
        m_latin[code].advance = m_metrics.horizontalAdvance(shown);
        if (code != QChar::SoftHyphen && !state.underline)
            m_latin[code].glyph = m_rawFont.glyphIndexesForString(shown).value(0);
    }
}

double FontMetrics::advance(QChar c) const
{
    if (c.unicode() < m_latin.size())
        return m_latin[c.unicode()].advance;
    const auto known = m_others.constFind(c);
    if (known != m_others.constEnd())
        return *known;
    return *m_others.insert(c, m_metrics.horizontalAdvance(QString{c}));
}

double FontMetrics::width(QStringView text) const
{
    if (!isSimpleText(text))
        return shapedWidth(text);
    double sum = 0;
    for (const QChar c : text)
        sum += advance(c);
    return sum;
}

qsizetype FontMetrics::fittingLength(QStringView text, double limit) const
{
    if (!isSimpleText(text))
        return shapedFittingLength(text, limit);
    double sum = 0;
    const auto tooWide = [&](QChar c) {
        sum += advance(c);
        return sum > limit;
    };
    return std::find_if(text.begin(), text.end(), tooWide) - text.begin();
}

std::optional<QGlyphRun> FontMetrics::glyphRun(QStringView text) const
{
    QList<quint32> glyphs(text.size());
    QList<QPointF> places(text.size());
    double place = 0;
    for (qsizetype i = 0; i < text.size(); ++i) {
        const char16_t code = text[i].unicode();
        if (code >= m_latin.size() || m_latin[code].glyph == 0)
            return std::nullopt;
        glyphs[i] = m_latin[code].glyph;
        places[i] = {place, 0};
        place += m_latin[code].advance;
    }
    QGlyphRun run;
    run.setRawFont(m_rawFont);
    run.setGlyphIndexes(glyphs);
    run.setPositions(places);
    return run;
}

double FontMetrics::shapedWidth(QStringView text) const
{
    return m_metrics.horizontalAdvance(printable(text.toString()));
}

qsizetype FontMetrics::shapedFittingLength(QStringView text, double limit) const
{
    // Halving keeps the number of layouts small however long the text is.
    qsizetype fits = 0;
    qsizetype tooLong = text.size() + 1;
    while (tooLong - fits > 1) {
        const qsizetype middle = fits + (tooLong - fits) / 2;
        (shapedWidth(text.first(middle)) <= limit ? fits : tooLong) = middle;
    }
    const bool cutInHalf = fits > 0 && fits < text.size() && text[fits].isLowSurrogate() &&
                           text[fits - 1].isHighSurrogate();
    return cutInHalf ? fits - 1 : fits;
}

std::shared_ptr<const FontMetrics> FontCache::find(const FontState& state)
{
    for (const auto& [known, metrics] : m_fonts)
        if (known == state)
            return metrics;
    if (m_fonts.size() == MaxFonts)
        m_fonts.clear();
    return m_fonts.emplace_back(state, std::make_shared<const FontMetrics>(state)).second;
}

FittedText fitted(FontCache& fonts, FontState font, const QString& text, double width)
{
    constexpr float Smallest = 6; // points
    constexpr float Step = 0.5F;
    const auto whole = fonts.find(font);
    const double wide = whole->width(text);
    if (wide <= width || font.size <= Smallest)
        return {text, font.size};
    // Widths follow the size but for roundings.
    font.size = std::floor(font.size / Step * static_cast<float>(width / wide) + 1) * Step;
    while (font.size > Smallest && fonts.find(font)->width(text) > width)
        font.size -= Step;
    font.size = std::max(font.size, Smallest);
    const auto smaller = fonts.find(font);
    FittedText shown{text, font.size, whole->ascent() - smaller->ascent()};
    if (smaller->width(text) > width) {
        const QString ellipsis = u"…"_s;
        const double rest = width - smaller->width(ellipsis);
        shown.text = text.left(smaller->fittingLength(text, rest)) + ellipsis;
    }
    return shown;
}

} // namespace zelto::print

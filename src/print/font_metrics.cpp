// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/font_metrics.h"

#include <algorithm>
#include <cmath>

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
    return std::all_of(text.begin(), text.end(), isSimple);
}

} // namespace

QString printable(const QString& text)
{
    QString shown = text.normalized(QString::NormalizationForm_C);
    if (std::none_of(shown.cbegin(), shown.cend(), isControl))
        return shown;
    std::replace_if(shown.begin(), shown.end(), isControl, QChar{u' '});
    return shown;
}

FontMetrics::FontMetrics(const FontState& state) : m_font(fontOf(state)), m_metrics(m_font)
{
    for (char16_t code = 0; code <= 0xFF; ++code) {
        const QChar shown = isControl(QChar{code}) ? u' ' : QChar{code};
        m_latin[code] = m_metrics.horizontalAdvance(QString{shown});
    }
}

double FontMetrics::advance(QChar c) const
{
    if (c.unicode() < m_latin.size())
        return m_latin[c.unicode()];
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
    const auto known = std::find_if(m_fonts.begin(), m_fonts.end(),
                                    [&](const Entry& entry) { return entry.state == state; });
    if (known != m_fonts.end())
        return known->metrics;
    if (m_fonts.size() == MaxFonts)
        m_fonts.clear();
    m_fonts.push_back({state, std::make_shared<const FontMetrics>(state)});
    return m_fonts.back().metrics;
}

} // namespace zelto::print

// SPDX-License-Identifier: GPL-3.0-or-later
// Fonts as the page operations name them, and the widths of their texts.
#pragma once

#include "text/literals.h"

#include <QFont>
#include <QFontMetricsF>
#include <QGlyphRun>
#include <QHash>
#include <QRawFont>
#include <QString>
#include <QStringView>

#include <array>
#include <memory>
#include <optional>
#include <utility>
#include <vector>

namespace zelto::print {

/// Measures texts in one font, in twips.
class TextMeasure
{
public:
    virtual ~TextMeasure() = default;

    [[nodiscard]] virtual double width(QStringView text) const = 0;

    /// Length of the longest front part of the text that is not wider than the limit; a character
    /// of two UTF-16 units is never cut in half.
    [[nodiscard]] virtual qsizetype fittingLength(QStringView text, double limit) const = 0;
};

/// The font in force for the texts that follow.
struct FontState
{
    QString name = u"Arial"_s;
    float size = 10; ///< points
    bool bold = false;
    bool underline = false;
    bool italic = false;

    bool operator==(const FontState&) const = default;
};

/// The text as it is drawn: accents of their own joined to their letters, TABs and other control
/// characters as one blank each.
[[nodiscard]] QString printable(const QString& text);

/// One font at 1440 dots per inch, where its pixels are twips. It has no kerning, no ligatures and
/// no hinting, so a text of simple scripts is as wide as its characters together and need not be
/// laid out to be measured.
class FontMetrics final : public TextMeasure
{
public:
    /// Sizes are kept between 0.1 and 1000 points.
    explicit FontMetrics(const FontState& state);

    [[nodiscard]] const QFont& font() const { return m_font; }
    [[nodiscard]] double ascent() const { return m_metrics.ascent(); }
    [[nodiscard]] double height() const { return m_metrics.height(); }
    [[nodiscard]] double width(QStringView text) const override;
    [[nodiscard]] qsizetype fittingLength(QStringView text, double limit) const override;

    /// The text as a painter draws it, from the left end of its baseline on: known without any
    /// layout for Latin letters without underline, nothing for other texts.
    [[nodiscard]] std::optional<QGlyphRun> glyphRun(QStringView text) const;

private:
    struct Letter
    {
        double advance = 0;
        quint32 glyph = 0; ///< 0 when a painter has to find it
    };

    [[nodiscard]] double advance(QChar c) const;
    [[nodiscard]] double shapedWidth(QStringView text) const;
    [[nodiscard]] qsizetype shapedFittingLength(QStringView text, double limit) const;

    QFont m_font;
    QFontMetricsF m_metrics;
    QRawFont m_rawFont;
    std::array<Letter, 256> m_latin;
    mutable QHash<QChar, double> m_others;
};

/// The fonts in use. A report has a handful; a damaged page file may ask for any number.
class FontCache
{
public:
    [[nodiscard]] std::shared_ptr<const FontMetrics> find(const FontState& state);

private:
    static constexpr std::size_t MaxFonts = 32;

    std::vector<std::pair<FontState, std::shared_ptr<const FontMetrics>>> m_fonts;
};

/// A text as it stands in a given width.
struct FittedText
{
    QString text;
    float size = 0;  ///< points
    double drop = 0; ///< twips between its top and that of the font, on the same baseline
};

/// The text whole in the font, or in the largest smaller size in which it is not wider than the
/// width in twips. What is too wide at 6 points as well ends there with "…".
[[nodiscard]] FittedText fitted(FontCache& fonts, FontState font, const QString& text,
                                double width);

} // namespace zelto::print

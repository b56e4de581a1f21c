// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/font_metrics.h"
#include "support/runner.h"

#include <QFontInfo>
#include <QImage>
#include <QPainter>
#include <QTest>

#include <rapidcheck.h>

using namespace Qt::StringLiterals;
using namespace zelto::print;

namespace {

/// A strip of paper on which a text is drawn, in twips.
template <typename Drawing>
QImage picture(const Drawing& draw)
{
    QImage image(4500, 60, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.scale(0.1, 0.1);
    draw(painter);
    return image;
}

} // namespace

class TestFontMetrics : public QObject
{
    Q_OBJECT

    static void verify(const FontMetrics& metrics)
    {
        QString everyCharacter;
        for (char16_t code = u' '; code < 0x180; ++code)
            if (code < 0x7F || code >= 0xA0)
                everyCharacter += QChar(code);
        for (const QString& text :
             {u"AVATo «L’ufficio è a Città», profilo, fluff — 1.234,50 € m² n° ½"_s,
              everyCharacter}) {
            const double laidOut = QFontMetricsF(metrics.font()).horizontalAdvance(text);
            QVERIFY2(qAbs(metrics.width(text) - laidOut) < 0.01, qPrintable(text));
        }
        QCOMPARE(metrics.width(u"a\tb\x01"), metrics.width(u"a b "));
        const QString latin =
            everyCharacter.left(everyCharacter.indexOf(u'\u0100')).remove(u'\u00AD');
        const auto glyphs = metrics.glyphRun(u'\t' + latin);
        QVERIFY(glyphs);
        const QImage drawn = picture([&](QPainter& painter) {
            painter.drawGlyphRun({0, 400}, *glyphs);
        });
        QCOMPARE(drawn, picture([&](QPainter& painter) {
                     painter.setFont(metrics.font());
                     painter.drawText(QPointF{0, 400}, u' ' + latin);
                 }));
    }

private slots:
    void initTestCase()
    {
        QCOMPARE(QFontInfo(QFont(u"Arial"_s)).family(), u"Liberation Sans"_s);
        QCOMPARE(QFontInfo(QFont(u"Times New Roman"_s)).family(), u"Liberation Serif"_s);
    }

    /// A text is as wide, and looks, as a painter lays it out.
    void fonts()
    {
        for (const QString& name : {u"Arial"_s, u"Times New Roman"_s})
            for (const float size : {9.0F, 10.0F, 11.0F, 20.0F})
                for (const bool strong : {false, true})
                    verify(FontMetrics(
                        {.name = name, .size = size, .bold = strong, .italic = strong}));
    }

    void whatHasToBeLaidOutHasNoGlyphs()
    {
        for (const QString& text : {u"L’ufficio"_s, u"a\u00ADb"_s, u"citta\u0300"_s})
            QVERIFY(!FontMetrics({}).glyphRun(text));
        QVERIFY(!FontMetrics({.underline = true}).glyphRun(u"a"_s));
    }

    void sizesAreKeptWithinBounds()
    {
        for (const auto& [points, twips] : {std::pair{10.0F, 200}, std::pair{8.5F, 170},
                                            std::pair{-5.0F, 2}, std::pair{1e9F, 20'000}})
            QCOMPARE(FontMetrics({.size = points}).font().pixelSize(), twips);
    }

    void complexTextIsLaidOut()
    {
        const FontMetrics metrics({});
        // An accent of its own, for which a machine may have no font, joins its letter.
        QCOMPARE(metrics.width(u"citta\u0300"), metrics.width(u"città"));
        const QString houses = u"\U0001F3E0\U0001F3E0\U0001F3E0"_s;
        const qsizetype length = metrics.fittingLength(houses, metrics.width(houses) / 2);
        QCOMPARE(length, 2);
    }

    void fittingLengthIsTheLongest()
    {
        const FontMetrics metrics({});
        QCOMPARE(metrics.fittingLength(u"Città", metrics.width(u"Città")), 5);
        QVERIFY(rc::check("longest prefix", [&](const std::string& latin, int limit) {
            const QString text =
                QString::fromLatin1(latin.data(), static_cast<qsizetype>(latin.size()));
            const double width = limit % 2000;
            const qsizetype length = metrics.fittingLength(text, width);
            RC_ASSERT(length == 0 || metrics.width(text.left(length)) <= width);
            RC_ASSERT(length == text.size() || metrics.width(text.left(length + 1)) > width);
        }));
    }

    void manyFontsStayUsable()
    {
        FontCache cache;
        const auto first = cache.find({.size = 10});
        QCOMPARE(cache.find({.size = 10}), first);
        for (int size = 1; size < 200; ++size)
            QCOMPARE(cache.find({.size = static_cast<float>(size)})->font().pixelSize(), size * 20);
        QCOMPARE(first->font().pixelSize(), 200);
    }
};

ZELTO_TEST(TestFontMetrics)
#include "tst_font_metrics.moc"

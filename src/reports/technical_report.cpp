// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/fitted_text.h"
#include "reports/sections.h"

namespace zelto::reports {

namespace {

constexpr float BodySize = 10;
constexpr float PageLineSize = 9;
constexpr float TextColumn = 15;
constexpr float TextWidth = 45;
constexpr float NumberColumn = 55;

void setGrid(print::PrintEngine& engine)
{
    engine.SetFontName(u"Arial"_s);
    engine.SetFontBold(false);
    engine.SetFontSize(BodySize);
    engine.setLineHeight(2 * engine.textHeight(u"M"_s));
    engine.setCharWidth(engine.textWidth(u"M"_s));
}

void drawHeading(print::PrintEngine& engine)
{
    engine.SetFontSize(16);
    engine.SetFontBold(true);
    engine.WriteState();
    engine.PrintText(5, TextColumn, 0, u"RELAZIONE"_s);
    engine.SetFontSize(BodySize);
    engine.SetFontBold(false);
}

/// At column 55, or further left, so as not to pass the right margin of the text.
void drawReference(const ReportContext& context)
{
    constexpr float Row = 3.7F;
    print::PrintEngine& engine = context.engine;
    const QString text = u"Rif. - %1 -"_s.arg(context.jobReference());
    if (NumberColumn + inkWidth(engine, text) <= TextColumn + TextWidth)
        return engine.PrintText(Row, NumberColumn, 0, text);
    printFitted(engine, text, TextWidth, [&](const QString& shown, float drop) {
        engine.PrintRight(Row + drop, TextColumn + TextWidth, 0, shown);
    });
}

void drawPage(const ReportContext& context, int page, QString& text)
{
    print::PrintEngine& engine = context.engine;
    engine.SetFontSize(PageLineSize);
    const print::PageLabel number{u"Pag. n. "_s, page};
    engine.labelPage(number);
    engine.PrintText(3, NumberColumn, 0, number.text());
    drawReference(context);
    engine.SetFontSize(BodySize);
    float row = 7;
    engine.PrintParagraph(TextColumn, TextWidth, row, 30, text, print::Alignment::Justified);
    engine.NewPage();
}

} // namespace

void StampaRelazione(const ReportContext& context)
{
    context.status.SetStatus(u"Stampa relazione tecnica"_s, true);
    QString text = context.modello.datiGenerali[u"Relazione"_s];
    if (text.isEmpty())
        return;
    setGrid(context.engine);
    drawHeading(context.engine);
    for (int page = 1; !text.isEmpty(); ++page)
        drawPage(context, page, text);
}

} // namespace zelto::reports

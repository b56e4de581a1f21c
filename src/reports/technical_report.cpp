// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/sections.h"

namespace zelto::reports {

namespace {

constexpr float BodySize = 10;
constexpr float PageLineSize = 9;
constexpr float HeadingColumn = 15;

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
    engine.PrintText(5, HeadingColumn, 0, u"RELAZIONE"_s);
    engine.SetFontSize(BodySize);
    engine.SetFontBold(false);
}

/// At column 55, or further left where a long job code would run off the paper.
void drawReference(const ReportContext& context)
{
    constexpr float Row = 3.7F;
    constexpr float Column = 55;
    print::PrintEngine& engine = context.engine;
    const QString text = u"Rif. - %1 -"_s.arg(context.jobReference());
    const float pageColumns = engine.PageWidth() / engine.CharWidth();
    if (Column * engine.CharWidth() + engine.textWidth(text) > engine.PageWidth())
        engine.PrintRight(Row, pageColumns, 0, text);
    else
        engine.PrintText(Row, Column, 0, text);
}

void drawPage(const ReportContext& context, int page, QString& text)
{
    print::PrintEngine& engine = context.engine;
    engine.SetFontSize(PageLineSize);
    engine.PrintText(3, 55, 0, u"Pag. n. %1"_s.arg(page));
    drawReference(context);
    engine.SetFontSize(BodySize);
    float row = 7;
    engine.PrintParagraph(HeadingColumn, 45, row, 30, text, print::Alignment::Justified);
    engine.NewPage();
}

} // namespace

void StampaRelazione(const ReportContext& context)
{
    context.status.SetStatus(u"Stampa relazione tecnica"_s, true);
    if (context.modello.Relazione.isEmpty())
        return;
    setGrid(context.engine);
    drawHeading(context.engine);
    QString text = context.modello.Relazione;
    for (int page = 1; !text.isEmpty(); ++page)
        drawPage(context, page, text);
}

} // namespace zelto::reports

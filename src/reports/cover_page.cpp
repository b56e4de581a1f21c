// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/fitted_text.h"
#include "reports/sections.h"

namespace zelto::reports {

namespace {

constexpr float LeftRule = 5;
constexpr float RightRule = 76;
constexpr float RuleWidth = 6;
constexpr float Centre = 40.5F;

void drawFrame(const ReportContext& context)
{
    print::PrintEngine& engine = context.engine;
    printFitted(
        engine, u"Rif. - %1 -"_s.arg(context.jobReference()), 74 - LeftRule,
        [&](const QString& shown, float drop) { engine.PrintRight(7 + drop, 74, 0, shown); });
    engine.SetFontSize(12);
    engine.DrawHLine(20, LeftRule, RightRule, RuleWidth);
    engine.SetFontSize(20);
    constexpr float Width = RightRule - LeftRule;
    const auto printLine = [&](float row, const QString& text) {
        printFitted(engine, text, Width, [&](const QString& shown, float drop) {
            engine.PrintCentred(row + drop, Centre, Width, shown);
        });
    };
    printLine(21.5F, u"TABELLE MILLESIMALI"_s);
    printLine(23.5F, context.modello.datiGenerali[u"Descrizione"_s]);
    printLine(25.5F, context.modello.datiGenerali[u"Descrizionee"_s]);
    engine.DrawHLine(29, LeftRule, RightRule, RuleWidth);
}

void drawDate(const ReportContext& context)
{
    context.engine.SetFontSize(12);
    context.engine.SetFontBold(true);
    if (const QString date = context.modello.datiGenerali[u"Data"_s]; !date.trimmed().isEmpty())
        context.engine.PrintText(60, 60, 0, u"Data - "_s + date);
    context.engine.SetFontBold(false);
}

void drawNotes(const ReportContext& context)
{
    constexpr float FirstRow = 25 / 1.2F * 1.5F;
    constexpr float Rows = 10;
    context.engine.setLineHeight(300);
    context.engine.WriteState(); // a replay has to learn of the new line height
    QString notes = context.modello.datiGenerali[u"Note"_s];
    float row = FirstRow;
    context.engine.PrintParagraph(12, 58, row, FirstRow + Rows, notes, print::Alignment::Justified);
}

} // namespace

void StampaPrimaPagina(const ReportContext& context)
{
    context.status.SetStatus(u"Stampa prima pagina"_s, true);
    context.engine.setLineHeight(240);
    context.engine.setCharWidth(144);
    context.engine.SetFontName(u"Arial"_s);
    context.engine.SetFontSize(9);
    context.engine.WriteState();
    drawFrame(context);
    drawDate(context);
    drawNotes(context);
    context.engine.NewPage();
}

} // namespace zelto::reports

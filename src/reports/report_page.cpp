// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/report_page.h"

#include <cmath>

namespace zelto::reports {

namespace {

constexpr float RowHeight = 200; // twips
constexpr float ColumnWidth = 84;
constexpr float BodySize = 9; // points
constexpr float TitleSize = 11;
constexpr float TitleColumn = 8;
constexpr float HeaderRow = 2;
constexpr float RuleFrom = 5;
constexpr float RuleTo = 130;
constexpr float RuleWidth = 2;
/// Rows left free at the foot of the page.
constexpr float FootRows = 4;

} // namespace

ReportPage::ReportPage(const ReportContext& context, int firstPage)
    : m_context(context), m_engine(context.engine), m_pageNumber(firstPage - 1)
{
    fill();
}

void ReportPage::begin()
{
    m_begun = true;
    m_engine.setLineHeight(RowHeight);
    m_engine.setCharWidth(ColumnWidth);
    m_engine.SetFontName(u"Times New Roman"_s);
    m_engine.SetFontSize(BodySize);
    m_engine.SetFontBold(false);
    m_engine.WriteState();
}

float ReportPage::lastUsableRow() const
{
    return std::floor(m_engine.PageHeight() / RowHeight) - FootRows;
}

void ReportPage::header()
{
    constexpr float NumberColumn = 110;
    constexpr float JobColumn = 6;
    if (!m_begun)
        begin();
    ++m_pageNumber;
    m_row = HeaderRow - 1;
    rule();
    nextRow();
    left(NumberColumn, u"DATA - "_s + m_context.modello.DataLavoro);
    nextRow();
    left(JobColumn,
         u"- %1 - %2 %3"_s.arg(m_context.jobPath, m_context.modello.Descrizione,
                               m_context.modello.Descrizione2),
         RuleTo - JobColumn);
    nextRow();
    left(NumberColumn, u"PAG. N. %1"_s.arg(m_pageNumber));
    rule();
}

void ReportPage::rule()
{
    nextRow();
    m_engine.DrawHLine(m_row + 0.5F, RuleFrom, RuleTo, RuleWidth);
}

void ReportPage::title(const QString& text, float width)
{
    m_engine.SetFontSize(TitleSize);
    left(TitleColumn, text, width);
    m_engine.SetFontSize(BodySize);
}

} // namespace zelto::reports

// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/report_page.h"

#include <algorithm>
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
constexpr float JobColumn = 6;
constexpr float RuleWidth = 2;
/// Rows left free at the foot of the page.
constexpr float FootRows = 4;

/// The path in so many characters: its end, which names the file, and as much of its beginning.
QString shortened(const QString& path, qsizetype length)
{
    if (length >= path.size())
        return path;
    const qsizetype name = path.size() - std::max<qsizetype>(path.lastIndexOf(u'/'), 0);
    const qsizetype end = std::clamp(name, length / 2, length - 1);
    return path.left(length - 1 - end) + u'…' + path.right(end);
}

} // namespace

ReportPage::ReportPage(const ReportContext& context, int firstPage)
    : m_context(context), m_engine(context.engine), m_pageNumber(firstPage - 1)
{
    fill();
}

void ReportPage::setBody(print::PrintEngine& engine)
{
    engine.setLineHeight(RowHeight);
    engine.setCharWidth(ColumnWidth);
    engine.SetFontName(u"Times New Roman"_s);
    engine.SetFontSize(BodySize);
    engine.SetFontBold(false);
}

void ReportPage::begin()
{
    m_begun = true;
    setBody(m_engine);
    m_engine.WriteState();
    m_jobLine = jobLine(RightMargin - JobColumn);
}

/// The job's path with the building's name; the path is shortened where there is no room for both.
QString ReportPage::jobLine(float width) const
{
    constexpr qsizetype ShortestPath = 12;
    const auto& dati = m_context.modello.datiGenerali;
    const auto line = [&](qsizetype length) {
        return u"- %1 - %2 %3"_s.arg(shortened(m_context.jobPath, length), dati[u"Descrizione"_s],
                                     dati[u"Descrizionee"_s]);
    };
    qsizetype length = m_context.jobPath.size();
    while (length > ShortestPath && inkWidth(m_engine, line(length)) > width)
        --length;
    return line(length);
}

float ReportPage::lastUsableRow() const
{
    return std::floor(m_engine.PageHeight() / RowHeight) - FootRows;
}

void ReportPage::header()
{
    constexpr float NumberColumn = 110;
    if (!m_begun)
        begin();
    ++m_pageNumber;
    m_row = HeaderRow - 1;
    rule();
    nextRow();
    fitted(NumberColumn, u"DATA - "_s + m_context.modello.datiGenerali[u"Data"_s], RightMargin);
    nextRow();
    fitted(JobColumn, RightMargin - JobColumn, m_jobLine, [] { return RightMargin; });
    nextRow();
    const print::PageLabel number{u"PAG. N. "_s, m_pageNumber};
    m_engine.labelPage(number);
    left(NumberColumn, number.text());
    rule();
}

void ReportPage::rule()
{
    nextRow();
    m_engine.DrawHLine(m_row + 0.5F, RuleFrom, RightMargin, RuleWidth);
}

void ReportPage::title(const QString& text, float width)
{
    m_engine.SetFontSize(TitleSize);
    printFitted(m_engine, text, width, [&](const QString& shown, float drop) {
        m_engine.PrintText(m_row + drop, TitleColumn, width, shown);
    });
    m_engine.SetFontSize(BodySize);
}

void ReportPage::note(const QString& text)
{
    constexpr float Clear = 0.4F; // as far as the rule below allows
    if (!text.isEmpty())
        m_engine.PrintText(m_row + Clear, TitleColumn, 0, text);
}

void ReportPage::fitted(float column, const QString& text, float end)
{
    printFitted(m_engine, text, end - column, [&](const QString& shown, float drop) {
        m_engine.PrintText(m_row + drop, column, 0, shown);
    });
}

} // namespace zelto::reports

// SPDX-License-Identifier: GPL-3.0-or-later
// Documents, pages and fonts; texts, shapes and replay have files of their own.
#include "print/print_engine.h"

#include "print/print_error.h"
#include "store/job_limits.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace zelto::print {

namespace {

void requirePages(int count)
{
    if (count > store::MostPages)
        throw PrintError(PrintErrorNumber::DeviceFailed,
                         u"Il documento ha più di %1 pagine, il massimo che si può "
                         u"stampare in una volta."_s.arg(store::MostPages));
}

} // namespace

PrintEngine::PrintEngine(QString pageFolder, const text::DecimalSeparators& separators)
    : m_pages(std::move(pageFolder)), m_page(separators.LocalDecimalSeparator.toLatin1())
{}

double PrintEngine::Zoom() const
{
    return m_surface != nullptr ? m_surface->zoom() : 0;
}

void PrintEngine::BeginDocument()
{
    m_page.abandon();
    m_pages.claim();
    m_marks.clear();
    m_lengths.clear();
    forgetSection();
    openPage(0);
}

void PrintEngine::NewPage()
{
    if (isRecording()) {
        m_lengths[m_pageNumber] = m_page.close();
        openPage(m_pageNumber + 1);
        WriteState();
    } else if (m_surface != nullptr) {
        m_surface->newPage();
    }
    if (!m_section.isEmpty())
        mark({{}, {m_section}});
}

void PrintEngine::beginSection(const QString& title)
{
    m_section = title;
    mark({title, {title}});
}

void PrintEngine::labelPage(const PageLabel& label)
{
    mark({m_mark.section, label});
}

void PrintEngine::mark(PageMark mark)
{
    m_mark = std::move(mark);
    if (isRecording())
        m_marks[m_pageNumber] = m_mark;
    else if (m_surface != nullptr)
        m_surface->markPage(m_mark);
}

void PrintEngine::forgetSection()
{
    m_section.clear();
    m_mark = {};
}

void PrintEngine::EndDocument()
{
    forgetSection();
    if (!isRecording()) {
        if (m_surface != nullptr)
            m_surface->finish();
        return;
    }
    // No state record is longer with the fonts of the reports.
    constexpr qint64 SmallestPage = 61;
    m_lengths[m_pageNumber] = m_page.close();
    if (m_lengths[m_pageNumber] < SmallestPage) {
        QFile::remove(m_pages.pagePath(m_pageNumber));
        --m_pageNumber;
        --m_pageCount;
    }
    requirePages(m_pageCount);
}

void PrintEngine::WriteState()
{
    if (isRecording())
        m_page.write(Opcode::State, m_lineHeight, m_charWidth, m_font.name, m_font.size,
                     m_font.bold, m_font.underline, m_font.italic);
}

void PrintEngine::DeletePages()
{
    m_page.abandon();
    m_pages.clear();
    m_marks.clear();
    m_pageNumber = 0;
    m_pageCount = 0;
}

void PrintEngine::openPage(int index)
{
    // The page behind the last one may turn out to hold nothing.
    requirePages(index);
    m_page.open(m_pages.pagePath(index));
    m_pageNumber = index;
    m_pageCount = index + 1;
}

template <typename Value>
void PrintEngine::setFont(Value FontState::*part, const Value& value, Opcode opcode)
{
    m_font.*part = value;
    m_metrics.reset();
    if (isRecording())
        m_page.write(opcode, value);
}

void PrintEngine::SetFontName(const QString& name)
{
    setFont(&FontState::name, name, Opcode::FontName);
}

void PrintEngine::SetFontSize(float points)
{
    setFont(&FontState::size, points, Opcode::FontSize);
}

void PrintEngine::SetFontBold(bool on)
{
    setFont(&FontState::bold, on, Opcode::FontBold);
}

void PrintEngine::SetFontUnderline(bool on)
{
    setFont(&FontState::underline, on, Opcode::FontUnderline);
}

void PrintEngine::SetFontItalic(bool on)
{
    m_font.italic = on;
    m_metrics.reset();
}

void PrintEngine::SetColours(ColourNumber fill, ColourNumber fore)
{
    if (isRecording())
        return m_page.write(Opcode::Colours, fill, fore);
    // Boxes are outlines and texts have no ground: nothing is filled.
    if (m_surface != nullptr)
        m_surface->setColour({fore & 0xFF, (fore >> 8) & 0xFF, (fore >> 16) & 0xFF});
}

float PrintEngine::textWidth(QStringView text) const
{
    return static_cast<float>(metrics().width(text));
}

float PrintEngine::textHeight(const QString& text) const
{
    const auto lines = static_cast<double>(text.count(u'\n') + 1);
    return static_cast<float>(lines * metrics().height());
}

const FontMetrics& PrintEngine::metrics() const
{
    if (m_metrics == nullptr)
        m_metrics = m_fonts.find(m_font);
    return *m_metrics;
}

/// The point in twips. Damaged pages may ask for places that no painter can bear.
QPointF PrintEngine::position(float row, float column) const
{
    const auto twips = [](float count, float unit) {
        constexpr double Limit = 1e7;
        const double place = static_cast<double>(count) * static_cast<double>(unit);
        return std::isnan(place) ? 0 : std::clamp(place, -Limit, Limit);
    };
    return {twips(column, m_charWidth), twips(row, m_lineHeight)};
}

double PrintEngine::widthInTwips(float columns) const
{
    return static_cast<double>(columns) * static_cast<double>(m_charWidth);
}

} // namespace zelto::print

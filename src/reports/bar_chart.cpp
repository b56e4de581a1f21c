// SPDX-License-Identifier: GPL-3.0-or-later
#include "reports/sections.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace zelto::reports {

namespace {

constexpr std::size_t UnitsPerPage = 45;
constexpr float NameColumn = 8;
constexpr float NameEnd = 36;
constexpr float BarsEnd = 118; ///< what is behind it takes the widest share
constexpr float TitleWidth = 120;
/// Rows from one unit to the next, and where a bar lies between them.
constexpr float UnitRows = 1.4F;
constexpr float BarTop = 0.2F;
constexpr float BarBottom = 0.95F;
constexpr float ThinPen = 1;
constexpr float BarPen = 2;

/// A unit and its share, as the table writes it.
struct Bar
{
    QString name;
    QString figure;
    double share;
};

/// From one round figure to another, the 0 among them.
class Axis
{
public:
    explicit Axis(const std::vector<Bar>& bars)
    {
        constexpr double Intervals = 5;
        const auto [least, most] = std::ranges::minmax(bars, {}, &Bar::share);
        const double low = std::min(least.share, 0.0);
        const double high = std::max(most.share, 0.0);
        const double step = high > low ? (high - low) / Intervals : 1;
        const double power = std::floor(std::log10(step));
        const double unit = std::pow(10, power);
        m_places = static_cast<int>(std::max(-power, 0.0));
        for (const double round : {1, 2, 5, 10})
            if (m_step = round * unit; m_step >= step)
                break;
        m_first = static_cast<int>(std::floor(low / m_step));
        m_last = std::max(static_cast<int>(std::ceil(high / m_step)), m_first + 1);
        constexpr float Figure = 10; // left of the shortest bar
        m_start = NameEnd + 2 + (m_first < 0 ? Figure : 0);
    }

    [[nodiscard]] int first() const { return m_first; }
    [[nodiscard]] int last() const { return m_last; }
    [[nodiscard]] double share(int mark) const { return mark * m_step; }
    [[nodiscard]] QString text(int mark) const
    {
        return QString::number(share(mark), 'f', m_places);
    }

    [[nodiscard]] float column(double share) const
    {
        const double part = (share / m_step - m_first) / (m_last - m_first);
        return m_start + static_cast<float>(part) * (BarsEnd - m_start);
    }

private:
    double m_step = 1;
    int m_places = 0; ///< that the marks need
    int m_first = 0;  ///< marks in steps from 0
    int m_last = 1;
    float m_start;
};

std::vector<Bar> barsOf(const TableReport& table)
{
    // The last shares are those that count: of a staircase both parts together.
    const auto found =
        std::ranges::find_if(table.columns.rbegin(), table.columns.rend(), &TableColumn::isShare);
    const auto column = static_cast<std::size_t>(table.columns.rend() - found - 1);
    std::vector<Bar> bars;
    for (const TableRow& row : table.rows)
        if (const Cell& cell = row.cells[column]; cell.value)
            bars.push_back({row.cells[0].text, cell.text.trimmed(), *cell.value});
    return bars;
}

/// Figures of the scale, above the bars.
void printScale(ReportPage& page, const Axis& axis)
{
    page.nextRow();
    for (int mark = axis.first(); mark <= axis.last(); ++mark) {
        const QString text = axis.text(mark);
        page.left(axis.column(axis.share(mark)) - inkWidth(page.engine(), text) / 2, text);
    }
    page.nextRow(UnitRows);
}

/// Lines of the scale along one unit, where neither bar nor figure lies.
void printGrid(const ReportPage& page, print::PrintEngine& engine, const Axis& axis, float from,
               float to)
{
    for (int mark = axis.first(); mark <= axis.last(); ++mark)
        if (const float column = axis.column(axis.share(mark));
            mark == 0 || column < from || column > to)
            engine.DrawVLine(column, page.row(), page.row() + UnitRows,
                             mark == 0 ? BarPen : ThinPen);
}

/// An outline, hatched lengthwise.
void drawBar(print::PrintEngine& engine, float row, float left, float right)
{
    constexpr int Hatches = 4;
    constexpr float Distance = (BarBottom - BarTop) / (Hatches + 1);
    engine.DrawBox(row + BarTop, left, row + BarBottom, right, BarPen, false);
    for (int i = 1; i <= Hatches; ++i)
        engine.DrawHLine(row + BarTop + static_cast<float>(i) * Distance, left, right, BarPen);
}

void printBar(ReportPage& page, print::PrintEngine& engine, const Axis& axis, const Bar& bar)
{
    constexpr float Gap = 0.7F;
    page.fitted(NameColumn, bar.name, NameEnd);
    const auto [left, right] = std::minmax({axis.column(0), axis.column(bar.share)});
    const float figure = Gap + inkWidth(engine, bar.figure);
    drawBar(engine, page.row(), left, right);
    if (bar.share < 0) {
        page.right(left - Gap, bar.figure);
        printGrid(page, engine, axis, left - figure, right);
    } else {
        page.left(right + Gap, bar.figure);
        printGrid(page, engine, axis, left, right + figure);
    }
    page.nextRow(UnitRows);
}

void printPage(ReportPage& page, print::PrintEngine& engine, const TableReport& table,
               const Axis& axis, std::span<const Bar> bars)
{
    page.header();
    page.nextRow(2);
    page.title(table.title, TitleWidth);
    page.nextRow();
    page.rule();
    printScale(page, axis);
    for (const Bar& bar : bars)
        printBar(page, engine, axis, bar);
    page.rule();
    page.finish();
}

} // namespace

void StampaGrafico(ReportPage& page, const ReportContext& context, const TableReport& table)
{
    const std::vector<Bar> bars = barsOf(table);
    if (bars.empty())
        return;
    const Axis axis(bars);
    for (std::size_t first = 0; first < bars.size(); first += UnitsPerPage)
        printPage(page, context.engine, table, axis,
                  std::span(bars).subspan(first, std::min(UnitsPerPage, bars.size() - first)));
}

} // namespace zelto::reports

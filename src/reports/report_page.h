// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "reports/fitted_text.h"
#include "reports/report_context.h"

#include <QString>

namespace zelto::reports {

/// Where rules, and whatever has nothing behind it, end.
inline constexpr float RightMargin = 130;

/// The page that the calculation fills row by row: its grid and font, its header, its rules
/// and its number. Rows count from the top, columns from the left; texts stand with their top at
/// the row.
class ReportPage
{
public:
    /// The first header carries the given page number. Nothing is recorded before it, so that
    /// what has no content leaves no page.
    ReportPage(const ReportContext& context, int firstPage);

    /// Sets the body font and the grid of 200 twips a row and 84 a column.
    static void setBody(print::PrintEngine& engine);

    [[nodiscard]] const print::PrintEngine& engine() const { return m_engine; }
    [[nodiscard]] float row() const { return m_row; }
    [[nodiscard]] float lastUsableRow() const;

    /// Makes the page count as full, so that whatever comes next starts a new one.
    void fill() { m_row = lastUsableRow(); }

    /// Counts a page and prints its header.
    void header();

    void nextRow(float rows = 1) { m_row += rows; }

    /// One row down, and a rule across the page half a row below.
    void rule();

    /// Ends the page.
    void finish() { m_engine.NewPage(); }

    void left(float column, const QString& text, float width = 0)
    {
        m_engine.PrintText(m_row, column, width, text);
    }

    /// A text that usually has the width, and otherwise may go on up to the end, which is asked for
    /// then.
    template <typename End>
    void fitted(float column, float width, const QString& text, const End& end)
    {
        if (inkWidth(m_engine, text) <= width)
            left(column, text, width);
        else
            fitted(column, text, end());
    }

    /// A text that may go on up to the end; smaller, and at last ended by an ellipsis, where that
    /// is not enough.
    void fitted(float column, const QString& text, float end);

    void right(float column, const QString& text) { m_engine.PrintRight(m_row, column, 0, text); }
    /// As right(), of a figure as a mask writes it.
    void figure(float column, std::string_view figure)
    {
        m_engine.PrintFigure(m_row, column, figure);
    }

    /// A title in its larger size.
    void title(const QString& text, float width);

    /// What is to be known of the table, below its title and clear of it.
    void note(const QString& text);

    void setBold(bool bold) { m_engine.SetFontBold(bold); }

private:
    void begin();
    [[nodiscard]] QString jobLine(float width) const;

    const ReportContext& m_context;
    print::PrintEngine& m_engine;
    float m_row = 0;
    int m_pageNumber;
    bool m_begun = false;
    QString m_jobLine;
};

} // namespace zelto::reports

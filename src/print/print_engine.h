// SPDX-License-Identifier: GPL-3.0-or-later
// The page operations of the reports: recorded to page files, or drawn on a surface.
#pragma once

#include "print/font_metrics.h"
#include "print/page_file.h"
#include "print/page_marks.h"
#include "print/page_size.h"
#include "print/paragraph.h"
#include "print/surface.h"
#include "text/decimal_text.h"

#include <QString>

#include <memory>
#include <string_view>

class QIODevice;

namespace zelto::print {

/// Colours as numbers: red + 256 × green + 65536 × blue.
using ColourNumber = int;

enum class Alignment : int { Left = 0, Right = 1, Centred = 2, Justified = 3 };

/// How one PrintField looks; it does not change the font in force.
struct FieldStyle
{
    float size = 10; ///< points; 0 takes the size in force
    Alignment alignment = Alignment::Left;
    bool bold = false;
    bool italic = false;
    bool underline = false;
};

/// How a page file was found: with nothing but records, with lines that are none, without any
/// record.
enum class PageCondition { Whole, Damaged, Empty };

/// Text rows and columns on paper. A row is LineHeight twips high and a column CharWidth twips
/// wide; coordinates may be fractional and count from the printable area's top-left corner.
///
/// While a recording is under way every operation writes its record to the current page file and
/// draws nothing; otherwise it draws at once on the surface. Replaying runs the recorded operations
/// through the same code. Page files and surfaces that fail throw PrintError; a page file that
/// cannot be written ends the recording.
class PrintEngine
{
public:
    /// Page files are made in the folder, or in one of its own below it while another engine uses
    /// it; numbers in them are written with the local separator.
    PrintEngine(QString pageFolder, const text::DecimalSeparators& separators);

    /// Where drawing goes outside a recording; it must outlive its use. Without a surface texts are
    /// measured all the same and nothing is drawn.
    void setSurface(Surface* surface) { m_surface = surface; }

    /// The surface's, 0 for paper and without one.
    [[nodiscard]] double Zoom() const;

    // Page grid. The page is the standard one until another is set.
    [[nodiscard]] float LineHeight() const { return m_lineHeight; }
    [[nodiscard]] float CharWidth() const { return m_charWidth; }
    [[nodiscard]] float PageWidth() const { return m_pageSize.width; }
    [[nodiscard]] float PageHeight() const { return m_pageSize.height; }
    void setLineHeight(float twips) { m_lineHeight = twips; }
    void setCharWidth(float twips) { m_charWidth = twips; }
    void setPageSize(const PageSize& size) { m_pageSize = size; }

    // Document

    /// Deletes the page files of an earlier document and starts recording the first page. No state
    /// is recorded: the report does it when it has chosen its font.
    void BeginDocument();

    /// Recording: starts the next page with the state in force; a document of more than 9,999 pages
    /// throws PrintError and ends the recording. Drawing: a page break.
    void NewPage();

    /// A section of the title begins on the current page, in place of one that did. Its pages are
    /// called by the title, unless they get a label. Outlines of files show it.
    void beginSection(const QString& title);

    /// What the current page is called.
    void labelPage(const PageLabel& label);

    /// Recording: ends it, without a last page that holds no more than its state. Drawing: ends the
    /// print job.
    void EndDocument();

    /// Recording: the page grid and the font in force, for the records that follow.
    void WriteState();

    [[nodiscard]] bool isRecording() const { return m_page.isOpen(); }

    /// Pages of the last recording, or recorded so far.
    [[nodiscard]] int pageCount() const { return m_pageCount; }

    /// Index of the page being recorded or replayed, 0 for the first.
    [[nodiscard]] int PageNumber() const { return m_pageNumber; }
    void setPageNumber(int index) { m_pageNumber = index; }

    /// Removes the page files; the document is gone, and a recording under way is given up.
    void DeletePages();

    // Font
    void SetFontName(const QString& name);
    void SetFontSize(float points);
    void SetFontBold(bool on);
    void SetFontUnderline(bool on);

    /// Has no record: pages carry it from one state to the next.
    void SetFontItalic(bool on);
    void SetColours(ColourNumber fill, ColourNumber fore);

    [[nodiscard]] float FontSize() const { return m_font.size; }

    /// The text as it stands in the width in columns, in the font in force or smaller.
    [[nodiscard]] FittedText fitted(const QString& text, float width) const
    {
        return print::fitted(m_fonts, m_font, text, widthInTwips(width));
    }

    /// Width of the text, and height of its lines, in the font in force; twips.
    [[nodiscard]] float textWidth(QStringView text) const;
    [[nodiscard]] float textHeight(const QString& text) const;

    // Texts. The row is a text's top. A width of 0 columns never cuts; otherwise the longest
    // beginning that fits is printed.
    void PrintText(float row, float column, float width, const QString& text);

    /// Ends at the column, moved left by the reduction in percent of it.
    void PrintRight(float row, float column, float reduction, const QString& text);
    /// The same, without reduction, for a figure as a mask writes it.
    void PrintFigure(float row, float column, std::string_view figure);
    void PrintCentred(float row, float column, float width, const QString& text);

    /// The number with a blank between groups of three digits and a decimal point, ending at the
    /// column; nothing for 0 and for a blank text.
    void PrintNumber(float row, float column, const QString& number);
    void PrintField(float row, float column, float width, const FieldStyle& style,
                    const QString& text);

    /// Running text from the row on, at most down to the last row. Afterwards the row is the next
    /// free one and the text what is left for the next page. Prints at least one line of a text
    /// that is not empty.
    void PrintParagraph(float column, float width, float& row, float lastRow, QString& text,
                        Alignment alignment);

    /// Counts the lines that PrintParagraph would print and uses the text up.
    void CountWrappedLines(float width, QString& text, int& count) const;

    // Shapes. Pen widths: see Surface.
    void DrawBox(float top, float left, float bottom, float right, float penWidth, bool shadow);
    void DrawHLine(float row, float firstColumn, float lastColumn, float penWidth);
    void DrawVLine(float column, float firstRow, float lastRow, float penWidth);

    /// The picture of the file stretched to the area; nothing when it cannot be read.
    void DrawPicture(float row, float column, float width, float height, const QString& fileName);

    // Replay

    /// Draws the recorded page PageNumber. A recording under way is given up.
    PageCondition ReplayPage();

    /// Draws the records that the open device holds, whatever state they are in.
    PageCondition ReplayRecords(QIODevice& device);

    /// Draws the pages from first to last, counted from 1, each followed by a page break, and
    /// ends the print job.
    void PrintDocument(int first, int last);

private:
    void openPage(int index);
    void forgetSection();
    void mark(PageMark mark);
    [[nodiscard]] const FontMetrics& metrics() const;
    [[nodiscard]] QPointF position(float row, float column) const;
    [[nodiscard]] double widthInTwips(float columns) const;
    template <typename Value>
    void setFont(Value FontState::*part, const Value& value, Opcode opcode);
    [[nodiscard]] QString clipped(const QString& text, float width,
                                  const FontMetrics& metrics) const;
    void drawText(QPointF point, const QString& text, Alignment alignment,
                  const FontMetrics& metrics);
    void drawLine(QPointF from, QPointF to, float penWidth);
    void drawShadow(float top, float left, float bottom, float right, float penWidth);
    void printLine(float row, float column, float width, const ParagraphLine& line,
                   Alignment alignment);
    void printJustified(float row, float column, float width, QStringView line);
    bool replayRecord(const RecordFields& record);
    void replayState(float lineHeight, float charWidth, const QString& fontName, float fontSize,
                     bool bold, bool underline, bool italic);
    void replayField(float row, float column, float width, float size, int alignment,
                     const QString& flags, const QString& text);
    void replayBox(float top, float left, float bottom, float right, float penWidth, int shadow);

    PageFolder m_pages;
    PageFileWriter m_page;
    PageSize m_pageSize = standardPageSize();
    Surface* m_surface = nullptr;
    float m_lineHeight = 240;
    float m_charWidth = 144;
    int m_pageNumber = 0;
    int m_pageCount = 0;
    std::map<int, qint64> m_lengths; ///< of the recorded page files
    PageMarks m_marks;               ///< of the recorded pages
    PageMark m_mark;                 ///< of the page being recorded or drawn
    QString m_section;               ///< title of the one that the page belongs to
    FontState m_font;
    mutable FontCache m_fonts;
    mutable std::shared_ptr<const FontMetrics> m_metrics; ///< of m_font, once it is needed
};

/// Directs what an engine draws to a surface for as long as it lives.
class DrawingTarget
{
public:
    DrawingTarget(PrintEngine& engine, Surface& surface) : m_engine(engine)
    {
        m_engine.setSurface(&surface);
    }
    ~DrawingTarget() { m_engine.setSurface(nullptr); }
    DrawingTarget(const DrawingTarget&) = delete;
    DrawingTarget& operator=(const DrawingTarget&) = delete;

private:
    PrintEngine& m_engine;
};

/// Adds the value to the target.
inline void AddTo(float& target, float value)
{
    target += value;
}

} // namespace zelto::print

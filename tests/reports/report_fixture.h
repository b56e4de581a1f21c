// SPDX-License-Identifier: GPL-3.0-or-later
// Reports drawn on a surface that remembers what stands where.
#pragma once

#include "reports/report_context.h"
#include "store/store_fixture.h"

#include <QLineF>
#include <QStringList>

#include <utility>
#include <vector>

namespace zelto::test {

/// A text of a page, in twips; left and right are those of its ink.
struct PlacedText
{
    int page;
    double left;
    double top;
    double right;
    QString text; ///< with its blanks

    bool operator==(const PlacedText&) const = default;
};

/// Keeps texts, lines and boxes instead of drawing them.
class MemorySurface : public print::Surface
{
public:
    void drawText(QPointF topLeft, const QString& text, const print::FontMetrics& metrics) override
    {
        const double left = topLeft.x() + metrics.width(text.left(text.indexOf(text.trimmed())));
        texts.push_back({m_page, left, topLeft.y(), left + metrics.width(text.trimmed()), text});
    }
    void drawLine(const QLineF& line, float /*penWidth*/) override { lines.push_back(line); }
    void drawBox(const QRectF& box, float /*penWidth*/) override { boxes.push_back(box); }
    void drawPicture(const QRectF& /*area*/, const QImage& /*picture*/) override {}
    void setColour(QColor /*colour*/) override {}
    void newPage() override { ++m_page; }
    void finish() override {}

    /// Every text beginning with the given one.
    [[nodiscard]] std::vector<PlacedText> find(QStringView beginning) const
    {
        std::vector<PlacedText> found;
        for (const PlacedText& placed : texts)
            if (placed.text.startsWith(beginning))
                found.push_back(placed);
        return found;
    }

    std::vector<PlacedText> texts;
    std::vector<QLineF> lines;
    std::vector<QRectF> boxes;

private:
    int m_page = 0;
};

/// A user who notes the status line.
class QuietUser : public store::StatusLine
{
public:
    void SetStatus(const QString& text, bool /*busy*/) override { status << text; }

    QStringList status;
};

/// Draws the reports of a building and keeps what they drew.
class Printer
{
    calc::ModelloLavoro m_modello;
    JobFolder m_folder;

public:
    explicit Printer(calc::ModelloLavoro modello) : m_modello(std::move(modello))
    {
        engine.setSurface(&surface);
    }

    /// Records the reports first and draws the pages then; gives their number.
    template <typename Report>
    int record(Report&& report)
    {
        engine.BeginDocument();
        report(context);
        engine.EndDocument();
        engine.PrintDocument(1, engine.pageCount());
        return engine.pageCount();
    }

    [[nodiscard]] QByteArray output(const QString& name) const
    {
        return bytesOf(m_folder.file(name));
    }

    MemorySurface surface;
    QuietUser user;
    print::PrintEngine engine{m_folder.file({}),
                              {.LocalDecimalSeparator = u',', .ForeignDecimalSeparator = u'.'}};
    calc::LavoroScritto scritto; ///< nothing is known of it
    reports::ReportContext context{.modello = m_modello,
                                   .scritto = scritto,
                                   .jobPath = u"/lavori/Verdi.2.zlt"_s,
                                   .outputFolder = m_folder.file({}),
                                   .engine = engine,
                                   .status = user};
};

} // namespace zelto::test

// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "print/complete_file.h"
#include "print/page_marks.h"
#include "print/page_size.h"
#include "print/painter_surface.h"
#include "print/pdf_info.h"

#include <QBuffer>
#include <QPageLayout>
#include <QPdfWriter>

namespace zelto::print {

/// Pages in a PDF/A-1b file. The file appears, and an older one of the name goes, only when
/// commit() has seen every byte written; without it nothing changes on disk.
class PdfSurface : public PagedSurface
{
public:
    /// Throws PrintError naming the file when it cannot be created.
    PdfSurface(const QString& fileName, PdfInfo info,
               const QPageLayout& layout = standardPageLayout());
    /// The same on a file that is open already.
    PdfSurface(std::unique_ptr<CompleteFile> file, PdfInfo info,
               const QPageLayout& layout = standardPageLayout());
    ~PdfSurface() override;

    void newPage() override;
    void markPage(const PageMark& mark) override { m_marks[m_page] = mark; }

    /// Finishes the pages and puts the file in its place. Throws PrintError naming the file,
    /// EmptyDocument when nothing has been drawn.
    void commit();

    /// Finishes the pages as commit() does; the caller puts the file in its place.
    [[nodiscard]] std::unique_ptr<CompleteFile> finishedFile();

private:
    PdfInfo m_info;
    QDateTime m_made = QDateTime::currentDateTimeUtc();
    std::unique_ptr<CompleteFile> m_file;
    QBuffer m_drawn; ///< the document as the writer knows it
    QPdfWriter m_writer;
    PageMarks m_marks;
    int m_page = 0; ///< index of the one that is drawn on
};

} // namespace zelto::print

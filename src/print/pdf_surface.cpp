// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/pdf_surface.h"

#include "print/pdf_file.h"
#include "print/print_error.h"

#include <utility>

namespace zelto::print {

PdfSurface::PdfSurface(const QString& fileName, PdfInfo info, const QPageLayout& layout)
    : PdfSurface(std::make_unique<CompleteFile>(fileName), std::move(info), layout)
{}

PdfSurface::PdfSurface(std::unique_ptr<CompleteFile> file, PdfInfo info, const QPageLayout& layout)
    : PagedSurface(m_writer), m_info(std::move(info)), m_file(std::move(file)), m_writer(&m_drawn)
{
    m_drawn.open(QIODevice::WriteOnly);
    m_writer.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b);
    m_writer.setResolution(TwipsPerInch);
    m_writer.setDocumentXmpMetadata(pdfMetadata(m_info, m_made));
    m_writer.setPageLayout(layout);
}

PdfSurface::~PdfSurface()
{
    if (painter().isActive()) // it must not outlive the writer
        painter().end();
}

void PdfSurface::newPage()
{
    ++m_page;
    PagedSurface::newPage();
}

void PdfSurface::commit()
{
    finishedFile()->commit();
}

std::unique_ptr<CompleteFile> PdfSurface::finishedFile()
{
    finish();
    if (isEmpty())
        throw EmptyDocument();
    writePdf(m_drawn.data(), m_file->device(), m_info, m_made, m_marks);
    m_file->finish();
    return std::move(m_file);
}

} // namespace zelto::print

// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/pdf_surface.h"

#include "print/complete_file.h"
#include "print/page_size.h"
#include "print/print_error.h"

#include <utility>

namespace zelto::print {

PdfTarget::PdfTarget(const QString& fileName, PdfInfo info, const QPageLayout& layout)
    : m_info(std::move(info)), m_file(fileName), m_writer(openPages())
{
    m_writer.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b);
    m_writer.setResolution(TwipsPerInch);
    m_writer.setDocumentXmpMetadata(pdfMetadata(m_info, m_made));
    m_writer.setPageLayout(layout);
}

QIODevice* PdfTarget::openPages()
{
    openForWriting(m_file);
    m_pages.open(QIODevice::WriteOnly);
    return &m_pages;
}

void PdfTarget::complete()
{
    const QByteArray& pages = m_pages.data();
    m_file.write(pages);
    m_file.write(pdfInfoUpdate(pages, m_info, m_made));
    commitComplete(m_file);
}

PdfSurface::PdfSurface(const QString& fileName, const PdfInfo& info, const QPageLayout& layout)
    : PdfTarget(fileName, info, layout), PagedSurface(m_writer)
{}

void PdfSurface::commit()
{
    finish();
    if (isEmpty())
        throw EmptyDocument();
    complete();
}

} // namespace zelto::print

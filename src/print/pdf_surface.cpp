// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/pdf_surface.h"

#include "print/print_error.h"

#include <algorithm>
#include <utility>

namespace zelto::print {

PdfSurface::PdfSurface(const QString& fileName, PdfInfo info, const QPageLayout& layout)
    : PdfSurface(std::make_unique<CompleteFile>(fileName), std::move(info), layout)
{}

PdfSurface::PdfSurface(std::unique_ptr<CompleteFile> file, PdfInfo info, const QPageLayout& layout)
    : PagedSurface(m_writer), m_info(std::move(info)), m_file(std::move(file)),
      m_writer(&m_file->device())
{
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

void PdfSurface::commit()
{
    finishedFile()->commit();
}

std::unique_ptr<CompleteFile> PdfSurface::finishedFile()
{
    finish();
    if (isEmpty())
        throw EmptyDocument();
    constexpr qint64 EndLength = 1024;
    QIODevice& file = m_file->device();
    const qint64 length = file.pos();
    file.seek(std::max<qint64>(0, length - EndLength));
    const QByteArray end = file.readAll();
    file.write(pdfInfoUpdate(end, length, m_info, m_made));
    m_file->finish();
    return std::move(m_file);
}

} // namespace zelto::print

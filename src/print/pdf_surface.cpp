// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/pdf_surface.h"

#include "print/page_size.h"
#include "print/print_error.h"

#include <utility>

namespace zelto::print {

qint64 TailKeeper::writeData(const char* data, qint64 length)
{
    constexpr qsizetype MostKept = 64 * TailLength;
    m_tail.append(data, static_cast<qsizetype>(length));
    if (m_tail.size() > MostKept)
        m_tail.remove(0, m_tail.size() - TailLength);
    return m_target.write(data, length);
}

PdfTarget::PdfTarget(const QString& fileName, PdfInfo info, const QPageLayout& layout)
    : m_info(std::move(info)), m_file(fileName), m_writer(open())
{
    m_writer.setPdfVersion(QPagedPaintDevice::PdfVersion_A1b);
    m_writer.setResolution(TwipsPerInch);
    m_writer.setDocumentXmpMetadata(pdfMetadata(m_info, m_made));
    m_writer.setPageLayout(layout);
}

QIODevice* PdfTarget::open()
{
    m_end.open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    return &m_end;
}

void PdfTarget::complete()
{
    QIODevice& file = m_file.device();
    file.write(
        pdfInfoUpdate(m_end.tail().right(TailKeeper::TailLength), file.pos(), m_info, m_made));
    m_file.commit();
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

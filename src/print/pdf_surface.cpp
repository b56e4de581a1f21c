// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/pdf_surface.h"

#include "print/complete_file.h"
#include "print/page_size.h"

namespace zelto::print {

PdfTarget::PdfTarget(const QString& fileName, const QString& title)
    : m_file(fileName), m_writer(open())
{
    m_writer.setResolution(TwipsPerInch);
    m_writer.setTitle(title);
    m_writer.setCreator(QStringLiteral("Zelto"));
    layOutStandardPage(m_writer);
}

QIODevice* PdfTarget::open()
{
    openForWriting(m_file);
    return &m_file;
}

PdfSurface::PdfSurface(const QString& fileName, const QString& title)
    : PdfTarget(fileName, title), PagedSurface(m_writer)
{}

void PdfSurface::commit()
{
    finish();
    commitComplete(m_file);
}

} // namespace zelto::print

// SPDX-License-Identifier: GPL-3.0-or-later
#include "print/pdf_surface.h"

#include "print/page_size.h"
#include "print/print_error.h"

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
    if (!m_file.open(QIODevice::WriteOnly))
        throw PrintError(PrintErrorNumber::PathAccess, QStringLiteral("Impossibile creare il file"),
                         m_file);
    return &m_file;
}

PdfSurface::PdfSurface(const QString& fileName, const QString& title)
    : PdfTarget(fileName, title), PagedSurface(m_writer)
{}

void PdfSurface::commit()
{
    finish();
    // The file takes what fits on a full disk for written; only flushing again tells the reason.
    const bool written = m_file.flush() || m_file.flush();
    if (!written || !m_file.commit())
        throw PrintError(PrintErrorNumber::DeviceFailed,
                         QStringLiteral("Impossibile scrivere il file"), m_file);
}

} // namespace zelto::print

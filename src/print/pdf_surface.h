// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "print/painter_surface.h"

#include <QPdfWriter>
#include <QSaveFile>

namespace zelto::print {

/// The file of a PdfSurface; apart, so that it outlives the painter.
class PdfTarget
{
protected:
    PdfTarget(const QString& fileName, const QString& title);

    QSaveFile m_file;
    QPdfWriter m_writer;

private:
    QIODevice* open();
};

/// Standard pages in a PDF file. The file appears, and an older one of the name goes, only when
/// commit() has seen every byte written; without it nothing changes on disk.
class PdfSurface : private PdfTarget, public PagedSurface
{
public:
    /// Throws PrintError naming the file when it cannot be created.
    PdfSurface(const QString& fileName, const QString& title);

    /// Finishes the pages and puts the file in its place. Throws PrintError naming the file.
    void commit();
};

} // namespace zelto::print

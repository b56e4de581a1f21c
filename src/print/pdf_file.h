// SPDX-License-Identifier: GPL-3.0-or-later
// What a PDF file has beside its pages.
#pragma once

#include "print/page_marks.h"
#include "print/pdf_info.h"

class QIODevice;

namespace zelto::print {

/// Writes the document that was drawn, a whole PDF/A-1b file, to the device: with its document
/// information, an outline of the sections that begin in it and the labels of its pages. Marks of
/// pages that it does not have are left out. Failures of the device are its own to tell; throws
/// PrintError when the document is none.
void writePdf(const QByteArray& drawn, QIODevice& device, const PdfInfo& info,
              const QDateTime& made, const PageMarks& marks);

} // namespace zelto::print

// SPDX-License-Identifier: GPL-3.0-or-later
// What a PDF file says about itself.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

namespace zelto::print {

/// Shown by viewers as the properties of the document. Both texts come from a job.
struct PdfInfo
{
    QString title = {};
    QString author = {};
};

/// The text as XML can hold it: a blank for every control character, and for what is no character.
[[nodiscard]] QString withoutControls(QString text);

/// The user's full name, or the login name without one.
[[nodiscard]] QString userFullName();

/// The metadata of a PDF/A-1b file (ISO 19005-1, 6.7) made at the time.
[[nodiscard]] QByteArray pdfMetadata(const PdfInfo& info, const QDateTime& made);

/// An update to be appended to the written file of the length in bytes, whose end is given. The
/// document information then says the same as the metadata: the writer knows of no author. Empty
/// when the file does not end as one of the writer's does.
[[nodiscard]] QByteArray pdfInfoUpdate(const QByteArray& end, qint64 length, const PdfInfo& info,
                                       const QDateTime& made);

} // namespace zelto::print

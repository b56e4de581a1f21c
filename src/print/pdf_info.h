// SPDX-License-Identifier: GPL-3.0-or-later
// What a PDF file says about itself.
#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>

#include <utility>
#include <vector>

namespace zelto::print {

/// Shown by viewers as the properties of the document; empty ones are left out. Title and author
/// come from strangers.
struct PdfInfo
{
    QString title = {};
    QString author = {};
    QString subject = {};
    QString keywords = {}; ///< separated by commas
};

/// The text as XML can hold it: a blank for every control character, and for what is no character.
[[nodiscard]] QString withoutControls(QString text);

/// The user's full name, or the login name without one.
[[nodiscard]] QString userFullName();

/// The metadata of a PDF/A-1b file (ISO 19005-1, 6.7) made at the time.
[[nodiscard]] QByteArray pdfMetadata(const PdfInfo& info, const QDateTime& made);

/// The document information of that file, which says the same: keys with their texts.
[[nodiscard]] std::vector<std::pair<const char*, QString>> pdfInfoEntries(const PdfInfo& info,
                                                                          const QDateTime& made);

} // namespace zelto::print

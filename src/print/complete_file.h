// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

class QSaveFile;

namespace zelto::print {

/// Opens the file for writing beside its final name; throws PrintError.
void openForWriting(QSaveFile& file);

/// Puts the file in its place once all of it is written; throws PrintError and leaves an older file
/// otherwise.
void commitComplete(QSaveFile& file);

} // namespace zelto::print

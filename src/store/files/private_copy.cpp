// SPDX-License-Identifier: GPL-3.0-or-later
#include "store/files/private_copy.h"

#include "store/database_error.h"
#include "store/engine_file.h"
#include "store/file_check.h"
#include "text/system_reason.h"

#include <QDir>

namespace zelto::store {

PrivateCopy::PrivateCopy(const QString& path, const QString& shown) : m_folder(QDir::tempPath())
{
    if (!m_folder.isValid())
        throw DatabaseError(ErrorNumber::CannotOpen,
                            u"Il file «%1» non può essere copiato per la lettura (%2)."_s.arg(
                                shown, text::systemReason(m_folder.error())));
    EngineFile source(path, shown);
    source.lockForReading();
    source.copyTo(this->path());
    if (hasJournal(path))
        EngineFile(journalOf(path), journalOf(shown)).copyTo(journalOf(this->path()));
    // Another program may have changed what was looked at before.
    checkFile(this->path(), shown);
}

} // namespace zelto::store

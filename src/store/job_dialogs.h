// SPDX-License-Identifier: GPL-3.0-or-later
// The file dialogs of the operations on job files.
#pragma once

#include "store/main_window_services.h"
#include "text/literals.h"

#include <QString>

namespace zelto::store {

/// A dialog that shows jobs.
inline FileDialogRequest jobDialog(const QString& title, int flags, FileDialogRequest::Kind kind,
                                   const QString& folder = {})
{
    return {.title = title,
            .filter = u"Tabelle Millessimi (*.ZLT)|*.zlt"_s,
            .flags = flags,
            .initialFolder = folder,
            .kind = kind};
}

/// One that shows other databases, too.
inline FileDialogRequest databaseDialog(const QString& title, int flags, const QString& folder)
{
    return {.title = title,
            .filter = u"Tabelle Millessimi (*.ZLT)|*.zlt|Database Access (*.MDB)|*.mdb"_s,
            .flags = flags,
            .initialFolder = folder};
}

} // namespace zelto::store

// SPDX-License-Identifier: GPL-3.0-or-later
// The file dialogs of the operations on job files.
#pragma once

#include "text/literals.h"
#include "widgets/dialogs.h"

#include <QString>

namespace zelto::shell {

/// A dialog that shows jobs.
inline widgets::FileDialogRequest jobDialog(const QString& title, int flags,
                                            widgets::FileDialogRequest::Kind kind,
                                            const QString& folder = {})
{
    return {.title = title,
            .filter = u"Tabelle Millessimi (*.ZLT)|*.zlt"_s,
            .flags = flags,
            .initialFolder = folder,
            .kind = kind};
}

/// One that shows other databases, too.
inline widgets::FileDialogRequest databaseDialog(const QString& title, int flags,
                                                 const QString& folder)
{
    return {.title = title,
            .filter = u"Tabelle Millessimi (*.ZLT)|*.zlt|Database Access (*.MDB)|*.mdb"_s,
            .flags = flags,
            .initialFolder = folder};
}

} // namespace zelto::shell

// SPDX-License-Identifier: GPL-3.0-or-later
// How changes of the register are called where they can be undone.
#pragma once

#include "register/register_change.h"

#include <QHash>

namespace zelto::registro {

/// What the user did.
enum class Deed { Adds, Deletes, Copies, Changes, Moves };

/// "consistenza di Int. 3 - Moro", "eliminazione di 2 vani di Int. 3 - Moro". The names are those
/// of the units concerned, by number; a unit without one is called by its number.
[[nodiscard]] QString captionOf(Deed deed, const std::vector<RecordChange>& records,
                                const QHash<int, QString>& names);

} // namespace zelto::registro

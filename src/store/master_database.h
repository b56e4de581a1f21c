// SPDX-License-Identifier: GPL-3.0-or-later
// The database that is delivered with the program.
#pragma once

#include "store/table_def.h"

#include <QString>
#include <QStringList>
#include <QStringView>

namespace zelto::store {

inline constexpr QStringView TabellaCoefficenti = u"Coefficenti";

/// The file's user version. It tells the file from other databases of that name and keeps nothing
/// secret.
inline constexpr int MasterAccessMark = -884704245;

/// The definition of its table; readers take the first field.
[[nodiscard]] const TableDef& masterTable();

/// The description of every group, in stored order; empty where there is none. Throws
/// DatabaseError: FileNotFound, WrongAccess when the file is not a master database, or
/// why it cannot be read.
[[nodiscard]] QStringList groupDescriptions(const QString& masterPath);

} // namespace zelto::store

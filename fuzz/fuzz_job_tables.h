// SPDX-License-Identifier: GPL-3.0-or-later
// A job whose tables take any content, and changes to its cells made from bytes.
#pragma once

#include "store/database.h"

#include <string_view>

namespace zelto::fuzz {

/// A small sound job in memory without the rules that its file would keep.
[[nodiscard]] store::Database looseJob();

/// Changes cells as the bytes say: table, field, record, kind and content of the new value, over
/// and over. Throws DatabaseError for a change that even these tables refuse.
void changeCells(store::Database& job, std::string_view bytes);

} // namespace zelto::fuzz

// SPDX-License-Identifier: GPL-3.0-or-later
// Column widths in the settings: one key for each column, the prefix and the column's number, with
// 0 for the number column; in twips.
#pragma once

#include <QString>

namespace zelto::store {
class Settings;
} // namespace zelto::store

namespace zelto::widgets {

class Grid;

/// Gives the columns the widths that the settings hold, between 50 and 28 800; the others, and
/// those whose setting is no number, keep theirs.
void restoreColumnWidths(Grid& grid, const store::Settings& settings, const QString& section,
                         const QString& prefix);

void saveColumnWidths(const Grid& grid, store::Settings& settings, const QString& section,
                      const QString& prefix);

} // namespace zelto::widgets

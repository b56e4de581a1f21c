// SPDX-License-Identifier: GPL-3.0-or-later
// Blocks of cells on the clipboard, in the form in which spreadsheets take and give them.
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace zelto::widgets {

/// Rows of cells.
using CellBlock = std::vector<QStringList>;

/// Cells separated by TAB, rows ended by a line feed.
[[nodiscard]] QString blockText(const CellBlock& block);

/// Reads a block. Cells in double quotes may hold TABs, line breaks and doubled quotes. A text that
/// ends its last row has no empty row behind it.
[[nodiscard]] CellBlock readBlock(const QString& text);

} // namespace zelto::widgets

// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/column_widths.h"

#include "store/settings.h"
#include "widgets/grid.h"

#include <algorithm>

namespace zelto::widgets {

namespace {

// Twips; anybody may have edited the settings.
constexpr int LeastWidth = 50;
constexpr int LargestWidth = 28'800; // 20 inches

} // namespace

void restoreColumnWidths(Grid& grid, const store::Settings& settings, const QString& section,
                         const QString& prefix)
{
    QStringList keys;
    for (int column = 0; column <= grid.cells().columnCount(); ++column)
        keys << prefix + QString::number(column);
    int column = 0;
    for (const QString& value : settings.LeggiIni(section, keys)) {
        bool isNumber = false;
        const int twips = value.toInt(&isNumber);
        if (isNumber)
            grid.setWidthInTwips(column, std::clamp(twips, LeastWidth, LargestWidth));
        ++column;
    }
}

void saveColumnWidths(const Grid& grid, store::Settings& settings, const QString& section,
                      const QString& prefix)
{
    store::Settings::KeyValues widths;
    for (int column = 0; column <= grid.cells().columnCount(); ++column)
        widths.emplace_back(prefix + QString::number(column),
                            QString::number(std::max(grid.widthInTwips(column), LeastWidth)));
    settings.ScriviIni(section, widths);
}

} // namespace zelto::widgets

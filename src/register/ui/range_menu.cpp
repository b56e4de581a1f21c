// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/range_menu.h"

#include "widgets/context_menu.h"
#include "widgets/grid.h"

namespace zelto::registro {

namespace {

/// The selected rows as the user knows them, by their first column.
QString rangeText(const widgets::Grid& grid, const QString& verb, const RangeWords& words)
{
    const auto [first, last] = grid.selectedRows();
    // An ampersand of a name is no mnemonic.
    const auto name = [&](int row) {
        return QString(grid.cells().text(row, 0)).replace(u'&', QStringLiteral("&&"));
    };
    if (first == last)
        return QStringLiteral("%1 %2 %3").arg(verb, words.one, name(first));
    return QStringLiteral("%1 %2 da %3 a %4").arg(verb, words.several, name(first), name(last));
}

} // namespace

RangeCommand chooseRangeCommand(widgets::ContextMenu& menu, const widgets::Grid& grid,
                                const RangeWords& words)
{
    const QModelIndex cell = grid.currentIndex();
    if (!cell.isValid())
        return RangeCommand::None;
    menu.ResetContextMenu();
    menu.DxMouse(0).setText(words.add);
    menu.DxMouse(1).setText(rangeText(grid, QStringLiteral("Elimina"), words));
    menu.DxMouse(2).setText(rangeText(grid, QStringLiteral("Duplica"), words));
    for (const int entry : {1, 2})
        menu.DxMouse(entry).setVisible(true);
    const QPoint place = grid.viewport()->mapToGlobal(grid.visualRect(cell).bottomLeft());
    const QString choice = menu.choose(place);
    if (choice == u"0")
        return RangeCommand::Add;
    if (choice == u"1")
        return RangeCommand::Delete;
    return choice == u"2" ? RangeCommand::Duplicate : RangeCommand::None;
}

} // namespace zelto::registro

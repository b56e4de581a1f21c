// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/range_menu.h"

#include "widgets/context_menu.h"
#include "widgets/grid.h"

#include <QKeySequence>

#include <array>

namespace zelto::registro {

namespace {

/// The selected rows as the user knows them, by their first column.
QString rangeText(const widgets::Grid& grid, const QString& verb, const RangeWords& words)
{
    const auto [first, last] = grid.selectedRows();
    // An ampersand of a name is no mnemonic.
    const auto name = [&](int row) {
        return QString(grid.cells().text(row, 0)).replace(u'&', u"&&"_s);
    };
    if (first == last)
        return u"%1 %2 %3"_s.arg(verb, words.one, name(first));
    return u"%1 %2 da %3 a %4"_s.arg(verb, words.several, name(first), name(last));
}

QString withKeys(const QString& caption, const QKeySequence& keys)
{
    return caption + u'\t' + keys.toString(QKeySequence::NativeText);
}

} // namespace

RangeCommand chooseRangeCommand(widgets::ContextMenu& menu, const widgets::Grid& grid,
                                const RangeWords& words)
{
    const QModelIndex cell = grid.currentIndex();
    if (!cell.isValid())
        return RangeCommand::None;
    menu.ResetContextMenu();
    const auto [first, last] = grid.selectedRows();
    const std::array entries{words.add, rangeText(grid, u"Elimina"_s, words),
                             rangeText(grid, u"Duplica"_s, words),
                             withKeys(u"Sposta su"_s, Qt::CTRL | Qt::SHIFT | Qt::Key_Up),
                             withKeys(u"Sposta giù"_s, Qt::CTRL | Qt::SHIFT | Qt::Key_Down)};
    for (std::size_t entry = 0; entry < entries.size(); ++entry) {
        menu.DxMouse(static_cast<int>(entry)).setText(entries.at(entry));
        menu.DxMouse(static_cast<int>(entry)).setVisible(true);
    }
    menu.DxMouse(3).setEnabled(first > 0);
    menu.DxMouse(4).setEnabled(last < grid.cells().rowCount() - 1);
    const QPoint place = grid.viewport()->mapToGlobal(grid.visualRect(cell).bottomLeft());
    constexpr std::array Commands{RangeCommand::Add, RangeCommand::Delete, RangeCommand::Duplicate,
                                  RangeCommand::MoveUp, RangeCommand::MoveDown};
    const int choice = menu.choose(place).toInt();
    return choice < 0 ? RangeCommand::None : Commands.at(static_cast<std::size_t>(choice));
}

} // namespace zelto::registro

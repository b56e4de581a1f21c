// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the parameters screen that changes the register.
#include "register/ui/parametri.h"
#include "register/ui/range_menu.h"
#include "register/ui/room_list.h"
#include "register/ui/unit_detail.h"
#include "register/ui/unit_list.h"
#include "store/database.h"
#include "store/user_interface.h"
#include "widgets/context_menu.h"
#include "widgets/grid.h"

#include <QAction>
#include <QApplication>
#include <QScopedValueRollback>
#include <QStatusBar>

#include <algorithm>

namespace zelto::registro {

using widgets::CellChange;
using widgets::Grid;

namespace {

/// The flags of a row's cells as a unit stores them: only "X" is one.
QString flagsIn(const widgets::GridModel& cells, int row)
{
    QString flags;
    for (int table = 0; table < NumTables; ++table)
        flags += cells.text(row, ColumnFirstTable + table) == u"X" ? u'X' : u' ';
    return flags;
}

/// Another flag in a unit's flags, however many of them are stored.
QString withFlag(const QString& stored, int table, bool on)
{
    QString flags = stored.left(NumTables).leftJustified(NumTables).toUpper();
    for (QChar& flag : flags)
        flag = flag == u'X' ? u'X' : u' ';
    flags[table - 1] = on ? u'X' : u' ';
    return flags;
}

} // namespace

// Storing what the user does

RegisterChange Parametri::perform(const Operation& operation)
{
    RegisterChange change;
    m_status->clearMessage();
    try {
        change = m_model.perform(operation);
    } catch (const store::DatabaseError& error) {
        m_context.user.ReportError(error);
        try {
            m_model.reload();
        } catch (const store::DatabaseError&) {
            // What went wrong has been said; the screen shows the last that could be read.
        }
    }
    updateUndo();
    if (change.missing)
        m_context.user.showMessage(
            u"Un altro programma ha cambiato o eliminato ciò che si voleva cambiare. Nulla è stato "
            "memorizzato: la finestra mostra ora quello che c'è, e si può ripetere."_s);
    return change;
}

/// Only a pasted block adds units or rooms: what is typed into the empty row goes nowhere.
bool Parametri::isIntoNothing(const QList<CellChange>& changes, Tab tab)
{
    const bool typed =
        changes.size() == 1 && gridOf(tab).cells().number(changes.front().row).toInt() == 0;
    const bool into = typed || (tab == Vani && m_model.unit().number == 0);
    const QScopedValueRollback following(m_following, true);
    if (into && tab == Vani)
        m_vani->showRooms();
    else if (into)
        m_elenco->showUnits();
    return into;
}

void Parametri::storeUnitCells(const QList<CellChange>& changes)
{
    if (isIntoNothing(changes, Elenco))
        return;
    const widgets::GridModel& cells = m_elenco->grid().cells();
    QList<UnitEdit> edits;
    QMap<int, NewTexts> added;
    for (const CellChange& change : changes) {
        const int unit = m_elenco->unitIn(change.row);
        const bool flag = change.column >= ColumnFirstTable;
        const int ordinal = flag ? static_cast<int>(UnitFlags) : change.column + UnitRiferimento;
        if (unit > 0)
            edits.append({unit, ordinal, flag ? flagsIn(cells, change.row) : change.after});
        else if (!flag)
            added[change.row][ordinal] = change.after;
        else
            added[change.row][ordinal] =
                withFlag(added[change.row][ordinal], change.column - ColumnFirstTable + 1,
                         change.after == u"X");
    }
    perform([&](Register& registro) { return registro.MemorizzaUI(edits, added.values()); });
}

void Parametri::storeRoomCells(const QList<CellChange>& changes)
{
    if (isIntoNothing(changes, Vani))
        return;
    QList<RoomEdit> edits;
    QMap<int, NewTexts> added;
    for (const CellChange& change : changes)
        if (const int position = m_vani->positionIn(change.row); position > 0)
            edits.append({position, change.column + RoomAmbiente, change.after});
        else
            added[change.row][change.column + RoomAmbiente] = change.after;
    const RegisterChange change = perform([&](Register& registro) {
        return registro.MemorizzaVano(m_model.unit().number, edits, added.values());
    });
    if (change.missing)
        QApplication::beep();
}

void Parametri::storeUnitText(int unit, int field, const QString& text)
{
    if (unit > 0)
        perform([&](Register& registro) {
            return registro.MemorizzaUI({{unit, field + UnitRiferimento, text}});
        });
}

void Parametri::storeFlag(int unit, int table, bool on)
{
    if (unit > 0)
        perform([&](Register& registro) {
            const QString stored = readUnit(m_context.lavoro, unit).flags;
            return registro.MemorizzaUI({{unit, UnitFlags, withFlag(stored, table, on)}});
        });
}

void Parametri::undo()
{
    replay(m_undo->text(), m_model.changes().undoCaption(),
           [](Register& registro) { return registro.undo(); });
}

void Parametri::redo()
{
    replay(m_redo->text(), m_model.changes().redoCaption(),
           [](Register& registro) { return registro.redo(); });
}

/// Goes to what is changed, and says what it was.
void Parametri::replay(const QString& verb, const QString& caption, const Operation& operation)
{
    if (!finishTyping())
        return;
    const QScopedValueRollback names(m_names, Navig::EmptyNames::Number);
    const RegisterChange change = perform(operation);
    if (change.isEmpty())
        return;
    goTo(placeOf(change));
    say(u"%1: %2"_s.arg(verb, caption));
}

void Parametri::updateUndo()
{
    const auto show = [](QAction& action, const QString& caption) {
        action.setEnabled(!caption.isEmpty());
        action.setToolTip(caption.isEmpty() ? action.text()
                                            : u"%1: %2"_s.arg(action.text(), caption));
        action.setStatusTip(action.toolTip());
    };
    show(*m_undo, m_model.changes().undoCaption());
    show(*m_redo, m_model.changes().redoCaption());
}

// The commands of the two grids

void Parametri::showMenu(Tab tab)
{
    const RangeWords words = tab == Vani
                                 ? RangeWords{u"Aggiungi vano"_s, u"vano"_s, u"vani"_s}
                                 : RangeWords{u"Aggiungi singola U.I."_s, u"U.I."_s, u"U.I."_s};
    carryOut(chooseRangeCommand(m_context.menu, gridOf(tab), words), tab);
}

void Parametri::carryOut(RangeCommand command, Tab tab)
{
    switch (command) {
    case RangeCommand::Add:
        return add(tab);
    case RangeCommand::Delete:
        return remove(tab);
    case RangeCommand::Duplicate:
        return duplicate(tab);
    case RangeCommand::MoveUp:
        return move(tab, -1);
    case RangeCommand::MoveDown:
        return move(tab, 1);
    case RangeCommand::None:
        return;
    }
}

QList<int> Parametri::selected(Tab tab) const
{
    const Grid& grid = gridOf(tab);
    const auto [first, last] = grid.selectedRows();
    QList<int> numbers;
    for (int row = first; row >= 0 && row <= last; ++row)
        numbers.append(grid.cells().number(row).toInt());
    return numbers;
}

/// What was added becomes current, selected and visible, ready to be typed in.
void Parametri::showAdded(const RegisterChange& change, Tab tab)
{
    QList<int> numbers;
    for (const RecordChange& record : change.records)
        if (!record.after.empty() && (record.table == RecordChange::Table::Rooms) == (tab == Vani))
            numbers.append(tab == Vani ? numberOf(record.after, RoomPosition) : record.unit());
    if (numbers.isEmpty())
        return;
    const auto [first, last] = std::minmax_element(numbers.begin(), numbers.end());
    if (tab == Elenco)
        goToUnit(*first);
    const widgets::GridModel& cells = gridOf(tab).cells();
    gridOf(tab).selectRows(cells.rowOf(*first), cells.rowOf(*last));
}

void Parametri::add(Tab tab)
{
    const int unit = m_model.unit().number;
    if (gridOf(tab).currentRow() < 0 || (tab == Vani && unit == 0))
        return;
    showAdded(perform([&](Register& registro) {
                  return tab == Vani ? registro.AggiungiVano(unit) : registro.AggiungiUI();
              }),
              tab);
}

void Parametri::remove(Tab tab)
{
    QList<int> numbers = selected(tab);
    std::reverse(numbers.begin(), numbers.end());
    if (!numbers.isEmpty() && numbers.front() > 0)
        perform([&](Register& registro) {
            return tab == Vani ? registro.EliminaVano(m_model.unit().number, numbers)
                               : registro.EliminaUI(numbers);
        });
}

void Parametri::duplicate(Tab tab)
{
    const int unit = m_model.unit().number;
    const QList<int> numbers = selected(tab);
    if (numbers.isEmpty() || unit == 0)
        return;
    showAdded(perform([&](Register& registro) {
                  return tab == Vani ? registro.DuplicaVano(unit, numbers)
                                     : registro.DuplicaUI(numbers);
              }),
              tab);
}

/// The selected rows and their neighbour change places.
void Parametri::move(Tab tab, int places)
{
    Grid& grid = gridOf(tab);
    grid.commitEditor();
    const auto [first, last] = grid.selectedRows();
    const int neighbour = places < 0 ? first - 1 : last + 1;
    if (first < 0 || neighbour < 0 || neighbour >= grid.cells().rowCount())
        return;
    QList<std::pair<int, int>> pairs;
    const auto number = [&](int row) { return grid.cells().number(row).toInt(); };
    for (int row = neighbour; row != (places < 0 ? last : first); row -= places)
        pairs.append({number(row), number(row - places)});
    const int column = grid.currentColumn();
    const RegisterChange change = perform([&](Register& registro) {
        return tab == Vani ? registro.ScambiaVani(m_model.unit().number, pairs)
                           : registro.ScambiaUI(pairs);
    });
    if (change.isEmpty())
        return;
    if (first != last)
        grid.selectRows(first + places, last + places);
    else
        grid.setCurrentCell(first + places, column);
}

} // namespace zelto::registro

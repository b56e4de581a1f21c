// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the parameters screen that changes the register.
#include "register/ui/navig.h"
#include "register/ui/parametri.h"
#include "register/ui/range_menu.h"
#include "register/ui/register_columns.h"
#include "register/ui/room_list.h"
#include "register/ui/unit_detail.h"
#include "register/ui/unit_list.h"
#include "register/unit_figures.h"
#include "store/database_error.h"
#include "store/user_interface.h"
#include "widgets/context_menu.h"
#include "widgets/grid.h"

#include <QAction>
#include <QScopedValueRollback>

#include <algorithm>

namespace zelto::registro {

using widgets::CellChange;
using widgets::Grid;
using Table = RecordChange::Table;

namespace {

QString textOf(const Record& record, int field)
{
    return record[static_cast<std::size_t>(field)].text();
}

int numberOf(const Record& record, int field)
{
    return static_cast<int>(record[static_cast<std::size_t>(field)].integer());
}

UnitRow unitRow(const Record& record)
{
    UnitRow row{
        .number = numberOf(record, UnitNumber), .texts = {}, .flags = textOf(record, UnitFlags)};
    int field = UnitRiferimento;
    for (QString& text : row.texts)
        text = textOf(record, field++);
    return row;
}

widgets::GridRow roomRow(const Record& record)
{
    widgets::GridRow row{.number = textOf(record, RoomPosition), .cells = {}};
    for (int field = RoomAmbiente; field < static_cast<int>(record.size()); ++field)
        row.cells << textOf(record, field);
    return row;
}

/// The row whose number is the given one, or where a row of that number belongs.
int placeOf(const widgets::GridModel& cells, int number)
{
    int row = 0;
    while (row < cells.rowCount() && cells.number(row).toInt() < number)
        ++row;
    return row;
}

bool isAt(const widgets::GridModel& cells, int row, int number)
{
    return row < cells.rowCount() && cells.number(row).toInt() == number;
}

void putRow(widgets::GridModel& cells, int row, const widgets::GridRow& content)
{
    for (int column = 0; column < cells.columnCount(); ++column)
        cells.setText(row, column, content.cells.value(column));
}

/// Patches the grid's row of a record that was added, deleted or changed.
void patchRow(Grid& grid, int number, bool exists, const widgets::GridRow& content)
{
    widgets::GridModel& cells = grid.cells();
    const int row = placeOf(cells, number);
    const bool there = isAt(cells, row, number);
    if (exists && there)
        putRow(cells, row, content);
    else if (exists)
        cells.insertRow(row, content);
    else if (there)
        cells.removeRow(row);
}

/// The empty row stands only where there is no other.
void keepEmptyRow(widgets::GridModel& cells)
{
    if (cells.rowCount() == 0)
        cells.appendRow({});
    else if (cells.rowCount() > 1 && cells.number(0).isEmpty())
        cells.removeRow(0);
}

} // namespace

bool Parametri::perform(const Operation& operation, Nodes nodes)
{
    try {
        apply(operation(), nodes);
        updateUndo();
        return true;
    } catch (const store::DatabaseError& error) {
        m_context.user.ReportError(error);
    }
    updateUndo();
    try {
        const int unit = m_unit;
        ElencoUI();
        DatiVani(unit);
    } catch (const store::DatabaseError&) {
        // What went wrong has been said; the screen shows the last that could be read.
    }
    return false;
}

// Cells and fields

/// The flags of a row's cells as a unit stores them.
QString Parametri::flagsIn(int row) const
{
    QString flags;
    for (int table = 0; table < NumTables; ++table)
        flags += m_elenco->grid().cells().text(row, ColumnFirstTable + table) == u"X" ? u'X' : u' ';
    return flags;
}

void Parametri::storeUnitCells(const QList<CellChange>& changes)
{
    QList<UnitEdit> edits;
    for (const CellChange& change : changes) {
        const int unit = m_elenco->unitIn(change.row);
        if (unit == 0)
            m_elenco->grid().cells().setText(change.row, change.column, change.before);
        else if (change.column < ColumnFirstTable)
            edits.append({unit, change.column + UnitRiferimento, change.after});
        else
            edits.append({unit, UnitFlags, flagsIn(change.row)});
        // Only "X" is a flag; the store may not have to change for anything else.
        if (change.column >= ColumnFirstTable && change.after != u"X")
            m_elenco->grid().cells().setText(change.row, change.column, {});
    }
    if (!edits.isEmpty())
        perform([&] { return m_register.MemorizzaUI(edits); });
}

void Parametri::storeRoomCells(const QList<CellChange>& changes)
{
    QList<RoomEdit> edits;
    for (const CellChange& change : changes) {
        const int position = m_vani->positionIn(change.row);
        if (position < 1)
            m_vani->grid().cells().setText(change.row, change.column, change.before);
        else
            edits.append({position, change.column + RoomAmbiente, change.after});
    }
    if (!edits.isEmpty())
        perform([&] { return m_register.MemorizzaVano(m_unit, edits); });
}

void Parametri::storeUnitText(int unit, int field, const QString& text)
{
    if (unit > 0)
        perform([&] { return m_register.MemorizzaUI({{unit, field + UnitRiferimento, text}}); });
}

void Parametri::storeFlag(int unit, int table, bool on)
{
    if (unit == 0)
        return;
    perform([&] {
        QString flags(NumTables, u' ');
        const QString stored = readUnit(m_context.lavoro, unit).flags;
        for (qsizetype i = 0; i < std::min(flags.size(), stored.size()); ++i)
            flags[i] = stored[i].toUpper() == u'X' ? u'X' : u' ';
        flags[table - 1] = on ? u'X' : u' ';
        return m_register.MemorizzaUI({{unit, UnitFlags, flags}});
    });
}

// The commands of the two grids

void Parametri::unitMenu()
{
    const RangeWords words{.add = QStringLiteral("Aggiungi singola U.I."),
                           .one = QStringLiteral("U.I."),
                           .several = QStringLiteral("U.I.")};
    switch (chooseRangeCommand(m_context.menu, m_elenco->grid(), words)) {
    case RangeCommand::Add:
        return addUnit();
    case RangeCommand::Delete:
        return deleteUnits();
    case RangeCommand::Duplicate:
        return duplicateUnits();
    case RangeCommand::None:
        return;
    }
}

void Parametri::roomMenu()
{
    const RangeWords words{.add = QStringLiteral("Aggiungi vano"),
                           .one = QStringLiteral("vano"),
                           .several = QStringLiteral("vani")};
    switch (chooseRangeCommand(m_context.menu, m_vani->grid(), words)) {
    case RangeCommand::Add:
        return addRoom();
    case RangeCommand::Delete:
        return deleteRooms();
    case RangeCommand::Duplicate:
        return duplicateRooms();
    case RangeCommand::None:
        return;
    }
}

QList<int> Parametri::selectedUnits() const
{
    QList<int> units;
    const auto [first, last] = m_elenco->grid().selectedRows();
    for (int row = first; row >= 0 && row <= last; ++row)
        if (const int unit = m_elenco->unitIn(row); unit > 0)
            units.append(unit);
    return units;
}

QList<int> Parametri::selectedPositions() const
{
    QList<int> positions;
    const auto [first, last] = m_vani->grid().selectedRows();
    for (int row = first; row >= 0 && row <= last; ++row)
        positions.append(m_vani->positionIn(row));
    return positions;
}

/// The new unit becomes the current one, ready to be typed in.
void Parametri::addUnit()
{
    if (perform([this] { return m_register.AggiungiUI(); }))
        m_elenco->grid().setCurrentCell(m_elenco->grid().cells().rowCount() - 1, 0);
}

void Parametri::deleteUnits()
{
    QList<int> units = selectedUnits();
    std::reverse(units.begin(), units.end());
    perform([&] { return m_register.EliminaUI(units); });
}

void Parametri::duplicateUnits()
{
    perform([this] { return m_register.DuplicaUI(selectedUnits()); });
}

void Parametri::addRoom()
{
    if (m_unit > 0 && perform([this] { return m_register.AggiungiVano(m_unit); }))
        m_vani->grid().setCurrentCell(m_vani->grid().cells().rowCount() - 1, 0);
}

void Parametri::deleteRooms()
{
    QList<int> positions = selectedPositions();
    std::reverse(positions.begin(), positions.end());
    if (m_unit > 0)
        perform([&] { return m_register.EliminaVano(m_unit, positions); });
}

void Parametri::duplicateRooms()
{
    if (m_unit > 0)
        perform([this] { return m_register.DuplicaVano(m_unit, selectedPositions()); });
}

void Parametri::undo()
{
    perform([this] { return m_register.undo(); }, Nodes::Rebuilt);
}

void Parametri::redo()
{
    perform([this] { return m_register.redo(); }, Nodes::Rebuilt);
}

void Parametri::updateUndo()
{
    const auto show = [](QAction& action, const QString& verb, const QString& caption) {
        action.setEnabled(!caption.isEmpty());
        action.setToolTip(caption.isEmpty() ? verb : QStringLiteral("%1: %2").arg(verb, caption));
        action.setStatusTip(action.toolTip());
    };
    show(*m_undo, QStringLiteral("Annulla"), m_register.undoCaption());
    show(*m_redo, QStringLiteral("Ripeti"), m_register.redoCaption());
}

// Patching the views

void Parametri::apply(const RegisterChange& change, Nodes nodes)
{
    if (change.isEmpty())
        return;
    {
        const QScopedValueRollback busy(m_busy, true);
        // Units first: rooms need their unit's node, and undoing brings them in any order.
        for (const RecordChange& record : change.records)
            if (record.table == Table::Units)
                applyUnit(record, nodes);
        for (const RecordChange& record : change.records)
            if (record.table == Table::Rooms)
                applyRoom(record, nodes);
    }
    m_calculation->unitsChanged(change.units());
    keepARow();
    markRooms();
    showFigures();
}

void Parametri::applyUnit(const RecordChange& change, Nodes nodes)
{
    const int unit = change.unit();
    const UnitRow row = unitRow(change.record());
    const QString& scala = row.texts.at(ColumnScala);
    const bool exists = !change.after.empty();
    patchRow(m_elenco->grid(), unit, exists, UnitList::rowFor(row));
    if (!exists) {
        m_navig->removeUnit(unit);
        return;
    }
    markUnit(m_elenco->rowOf(unit));
    const QString empty =
        nodes == Nodes::Rebuilt ? QStringLiteral("UI:%1").arg(unit) : QStringLiteral("-");
    const QString& name = row.texts.front();
    if (change.before.empty() || !m_navig->hasUnit(unit)) {
        m_navig->addUnit(unit, scala, name.isEmpty() ? empty : name);
        if (!change.before.empty())
            for (const RoomRow& room : readRooms(m_context.lavoro, unit))
                m_navig->addRoom(unit, room.position, room.texts.front());
    } else {
        m_navig->moveUnit(unit, scala);
        if (change.before[UnitRiferimento] != change.after[UnitRiferimento])
            m_navig->setUnitText(unit, name.isEmpty() ? empty : name);
    }
    if (unit == m_unit) {
        m_dettaglio->showFields(row.texts);
        m_dettaglio->showFlags(row.flags);
    }
}

void Parametri::applyRoom(const RecordChange& change, Nodes nodes)
{
    const int unit = change.unit();
    const int position = numberOf(change.record(), RoomPosition);
    const bool exists = !change.after.empty();
    if (unit == m_unit)
        patchRow(m_vani->grid(), position, exists, roomRow(change.record()));
    if (!exists) {
        m_navig->removeRoom(unit, position);
        return;
    }
    const QString name = textOf(change.after, RoomAmbiente);
    const QString empty =
        nodes == Nodes::Rebuilt ? QStringLiteral("V:%1").arg(position) : QStringLiteral("-");
    if (change.before.empty())
        m_navig->addRoom(unit, position, name.isEmpty() ? empty : name);
    else if (change.before[RoomAmbiente] != change.after[RoomAmbiente])
        m_navig->setRoomText(unit, position, name.isEmpty() ? empty : name);
}

/// After a deletion another unit becomes the current one, if there is any.
void Parametri::keepARow()
{
    Grid& units = m_elenco->grid();
    keepEmptyRow(units.cells());
    keepEmptyRow(m_vani->grid().cells());
    for (Grid* grid : {&units, &m_vani->grid()})
        if (!grid->currentIndex().isValid())
            grid->setCurrentCell(grid->cells().rowCount() - 1, 0);
        else if (!grid->selectionModel()->hasSelection())
            grid->setCurrentCell(grid->currentRow(), grid->currentColumn());
    if (m_elenco->rowOf(m_unit) < 0 || m_unit == 0)
        showUnit(m_elenco->unitIn(units.currentRow()));
}

} // namespace zelto::registro

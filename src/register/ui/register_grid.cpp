// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/register_grid.h"

#include "register/ui/shown_columns.h"
#include "widgets/context_menu.h"
#include "widgets/keys.h"

#include <algorithm>
#include <array>

namespace zelto::registro {

using widgets::CellChange;
using widgets::CellPicker;
using widgets::Grid;

namespace {

constexpr QKeyCombination UpKey = Qt::CTRL | Qt::SHIFT | Qt::Key_Up;
constexpr QKeyCombination DownKey = Qt::CTRL | Qt::SHIFT | Qt::Key_Down;

QString withKeys(const QString& caption, const QKeySequence& keys)
{
    return caption + u'\t' + keys.toString(QKeySequence::NativeText);
}

} // namespace

RegisterGrid::RegisterGrid(RegisterModel& model, widgets::ContextMenu& menu, Rows rows)
    : m_model(model), m_menu(menu), m_rows(std::move(rows)),
      m_grid(new Grid({}, gridColumns(m_rows.table, model), Grid::AtEnd::Stays, this)),
      m_picker(new CellPicker(this))
{
    m_grid->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_grid, &Grid::customContextMenuRequested, this, &RegisterGrid::showMenu);
    connect(m_grid, &Grid::cellsChanged, this, &RegisterGrid::storeCells);
    connect(m_grid, &Grid::cellRequested, this, &RegisterGrid::openCell);
    connect(m_picker, &CellPicker::dismissed, m_grid, [this] { m_grid->setFocus(); });
    connect(m_picker, &CellPicker::chosen, this, [this](int entry, CellPicker::Then then) {
        m_grid->setFocus();
        if (!m_picked.isValid())
            return;
        choose(m_offered.at(static_cast<std::size_t>(entry)));
        if (then != CellPicker::Then::Stays)
            m_grid->step(then == CellPicker::Then::Next);
    });
    connect(&model, &RegisterModel::reloaded, this, [this] { m_grid->cells().remarksChanged(); });
    addKeys();
}

void RegisterGrid::addKeys()
{
    widgets::addKey(*m_grid, UpKey, [this] { moveRows(-1); });
    widgets::addKey(*m_grid, DownKey, [this] { moveRows(1); });
    // The in-grid editor keeps these.
    const std::array<std::pair<QKeyCombination, void (RegisterGrid::*)()>, 4> ofGridAlone{
        {{Qt::SHIFT | Qt::Key_F10, &RegisterGrid::showMenu},
         {QKeyCombination(Qt::Key_Insert), &RegisterGrid::addRow},
         {Qt::CTRL | Qt::Key_D, &RegisterGrid::duplicateRows},
         {Qt::CTRL | Qt::Key_Delete, &RegisterGrid::removeRows}}};
    for (const auto& [key, command] : ofGridAlone)
        widgets::addKey(*m_grid, key, std::bind_front(command, this), Qt::WidgetShortcut);
}

// What is shown

void RegisterGrid::followModel()
{
    std::vector<widgets::GridRow> rows;
    for (const Record& record : m_rows.table == Table::Units ? m_model.listed() : m_model.rooms())
        rows.push_back({.number = textOf(record, numberField(m_rows.table)),
                        .cells = cellsOf(columnsOf(m_rows.table), record)});
    m_grid->cells().followRows(std::move(rows));
}

const Column& RegisterGrid::column(int column) const
{
    return columnsOf(m_rows.table).at(static_cast<std::size_t>(column));
}

int RegisterGrid::numberIn(int row) const
{
    return row < 0 || row >= m_grid->cells().rowCount() ? 0 : m_grid->cells().number(row).toInt();
}

void RegisterGrid::goTo(int number, int field, int table)
{
    const auto& columns = columnsOf(m_rows.table);
    const auto place = std::ranges::find_if(columns, [&](const Column& column) {
        return column.field == field && (column.holds != Holds::Flag || column.index + 1 >= table);
    });
    if (const int row = m_grid->cells().rowOf(number); row >= 0)
        m_grid->setCurrentCell(
            row, place == columns.end() ? 0 : static_cast<int>(place - columns.begin()));
    m_grid->setFocus();
}

// Cells

void RegisterGrid::openCell(int row, int column, const QString& typed)
{
    if (numberIn(row) == 0)
        return;
    if (this->column(column).holds == Holds::Flag)
        turnFlag(row, column);
    else
        openPicker(row, column, typed);
}

/// A table without a name has no members.
void RegisterGrid::turnFlag(int row, int column)
{
    const int table = this->column(column).index;
    if (m_model.lists().tabelle.at(static_cast<std::size_t>(table)).isEmpty())
        return;
    const bool on = m_grid->cells().text(row, column) != u"X";
    m_model.perform(
        [&](Register& registro) { return registro.MemorizzaFlag(numberIn(row), table + 1, on); });
}

void RegisterGrid::openPicker(int row, int column, const QString& typed)
{
    const Column& kind = this->column(column);
    const QString& text = m_grid->cells().text(row, column);
    const Offer offer = kind.holds == Holds::Staircase
                            ? offeredStaircases(m_model.lists(), text)
                            : offeredCoefficients(m_model.lists(), kind.index, text);
    if (offer.entries.empty()) {
        emit said(u"L'elenco «%1» è vuoto: si compila nella finestra «Variabili» (Ctrl+2)."_s.arg(
            kind.title));
        return;
    }
    m_picked = m_grid->cells().index(row, column);
    m_offered = offer.entries;
    const QRect inside = m_grid->visualRect(m_picked);
    const QRect place(m_grid->viewport()->mapTo(this, inside.topLeft()), inside.size());
    m_picker->open(m_offered, offer.current, place, typed);
}

void RegisterGrid::choose(const widgets::PickerEntry& entry)
{
    const QString before = m_grid->cells().text(m_picked.row(), m_picked.column());
    const Column& kind = column(m_picked.column());
    const QString after =
        kind.holds == Holds::Staircase
            ? entry.code.trimmed()
            : chosenCoefficient({entry.code, entry.value, entry.description}, before);
    if (after != before)
        m_model.perform([&](Register& registro) {
            return m_rows.store(registro, {{numberIn(m_picked.row()), kind.field, after}}, {});
        });
}

/// What the field gets for the new text of the cell, where other cells have given it a text so far:
/// the flags are one field.
QString RegisterGrid::newText(const CellChange& change, const QString& soFar) const
{
    if (column(change.column).holds != Holds::Flag)
        return change.after;
    if (numberIn(change.row) == 0)
        return withFlag(soFar, column(change.column).index + 1, change.after == u"X");
    QString flags;
    for (int at = 0; at < m_grid->cells().columnCount(); ++at)
        if (column(at).holds == Holds::Flag)
            flags =
                withFlag(flags, column(at).index + 1, m_grid->cells().text(change.row, at) == u"X");
    return flags;
}

bool RegisterGrid::canAdd() const
{
    return m_rows.table == Table::Units || m_model.current() > 0;
}

/// Only a pasted block adds units or rooms: what is typed into the empty row goes nowhere.
void RegisterGrid::storeCells(const QList<CellChange>& changes)
{
    if (!canAdd() || (changes.size() == 1 && numberIn(changes.front().row) == 0)) {
        followModel();
        return;
    }
    QList<FieldEdit> edits;
    QMap<int, NewTexts> added;
    for (const CellChange& change : changes) {
        const int field = column(change.column).field;
        if (const int number = numberIn(change.row); number > 0) {
            edits.append({number, field, newText(change, {})});
        } else {
            QString& text = added[change.row][field];
            text = newText(change, text);
        }
    }
    m_model.perform(
        [&](Register& registro) { return m_rows.store(registro, edits, added.values()); });
}

// Rows

/// The selected rows as the user knows them, by their first column.
QString RegisterGrid::rangeText(const QString& verb) const
{
    const auto [first, last] = m_grid->selectedRows();
    const auto name = [&](int row) { return widgets::asCaption(m_grid->cells().text(row, 0)); };
    if (first == last)
        return u"%1 %2 %3"_s.arg(verb, m_rows.one, name(first));
    return u"%1 %2 da %3 a %4"_s.arg(verb, m_rows.several, name(first), name(last));
}

void RegisterGrid::showMenu()
{
    const QModelIndex cell = m_grid->currentIndex();
    if (!cell.isValid())
        return;
    struct Entry
    {
        QString caption;
        std::function<void()> command;
        bool enabled = true;
    };
    const auto [first, last] = m_grid->selectedRows();
    const std::array entries{
        Entry{m_rows.toAdd, [this] { addRow(); }},
        Entry{rangeText(u"Elimina"_s), [this] { removeRows(); }},
        Entry{rangeText(u"Duplica"_s), [this] { duplicateRows(); }},
        Entry{withKeys(u"Sposta su"_s, UpKey), [this] { moveRows(-1); }, first > 0},
        Entry{withKeys(u"Sposta giù"_s, DownKey), [this] { moveRows(1); },
              last < m_grid->cells().rowCount() - 1}};
    m_menu.ResetContextMenu();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        QAction& action = m_menu.DxMouse(static_cast<int>(i));
        action.setText(entries.at(i).caption);
        action.setVisible(true);
        action.setEnabled(entries.at(i).enabled);
    }
    const QPoint place = m_grid->viewport()->mapToGlobal(m_grid->visualRect(cell).bottomLeft());
    if (const int choice = m_menu.choose(place); choice >= 0)
        entries.at(static_cast<std::size_t>(choice)).command();
}

QList<int> RegisterGrid::selected() const
{
    const auto [first, last] = m_grid->selectedRows();
    QList<int> numbers;
    for (int row = first; row >= 0 && row <= last; ++row)
        numbers.append(numberIn(row));
    return numbers;
}

/// What was added becomes current, selected and visible, ready to be typed in.
void RegisterGrid::showAdded(const RegisterChange& change)
{
    QList<int> numbers;
    for (const RecordChange& record : change.records)
        if (!record.after.empty() && record.table == m_rows.table)
            numbers.append(numberOf(record.after, numberField(m_rows.table)));
    if (numbers.isEmpty())
        return;
    const auto [first, last] = std::ranges::minmax(numbers);
    emit added(first);
    m_grid->selectRows(m_grid->cells().rowOf(first), m_grid->cells().rowOf(last));
}

void RegisterGrid::addRow()
{
    if (m_grid->currentRow() >= 0 && canAdd())
        showAdded(m_model.perform(m_rows.add));
}

void RegisterGrid::removeRows()
{
    QList<int> numbers = selected();
    std::ranges::reverse(numbers);
    if (!numbers.isEmpty() && numbers.front() > 0)
        m_model.perform([&](Register& registro) { return m_rows.remove(registro, numbers); });
}

void RegisterGrid::duplicateRows()
{
    const QList<int> numbers = selected();
    if (!numbers.isEmpty() && m_model.current() > 0)
        showAdded(m_model.perform(
            [&](Register& registro) { return m_rows.duplicate(registro, numbers); }));
}

/// The selected rows and their neighbour change places.
void RegisterGrid::moveRows(int places)
{
    m_grid->commitEditor();
    const auto [first, last] = m_grid->selectedRows();
    const int neighbour = places < 0 ? first - 1 : last + 1;
    if (first < 0 || neighbour < 0 || neighbour >= m_grid->cells().rowCount())
        return;
    QList<std::pair<int, int>> pairs;
    for (int row = neighbour; row != (places < 0 ? last : first); row -= places)
        pairs.append({numberIn(row), numberIn(row - places)});
    const int column = m_grid->currentColumn();
    const RegisterChange change =
        m_model.perform([&](Register& registro) { return m_rows.exchange(registro, pairs); });
    if (change.isEmpty())
        return;
    if (first != last)
        m_grid->selectRows(first + places, last + places);
    else
        m_grid->setCurrentCell(first + places, column);
}

} // namespace zelto::registro

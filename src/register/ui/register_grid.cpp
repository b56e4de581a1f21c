// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/register_grid.h"

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

RegisterGrid::RegisterGrid(const RegisterGridContext& context, Words words,
                           const std::vector<widgets::GridColumn>& columns, QWidget* parent)
    : QWidget(parent), m_context(context), m_words(std::move(words)),
      m_grid(new Grid({}, columns, Grid::AtEnd::Stays, this)), m_picker(new CellPicker(this))
{
    m_grid->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_grid, &Grid::customContextMenuRequested, this, &RegisterGrid::showMenu);
    connect(m_grid, &Grid::cellsChanged, this, &RegisterGrid::storeCells);
    connect(m_picker, &CellPicker::dismissed, m_grid, [this] { m_grid->setFocus(); });
    connect(m_picker, &CellPicker::chosen, this, [this](int entry, CellPicker::Then then) {
        m_grid->setFocus();
        if (!m_picked.isValid())
            return;
        choose(m_picked.row(), m_picked.column(), entry);
        if (then != CellPicker::Then::Stays)
            m_grid->step(then == CellPicker::Then::Next);
    });
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
        widgets::addKey(
            *m_grid, key, [this, command = command] { (this->*command)(); }, Qt::WidgetShortcut);
}

int RegisterGrid::numberIn(int row) const
{
    return row < 0 || row >= m_grid->cells().rowCount() ? 0 : m_grid->cells().number(row).toInt();
}

void RegisterGrid::goTo(int number, int field)
{
    if (const int row = m_grid->cells().rowOf(number); row >= 0)
        m_grid->setCurrentCell(row, std::max(field - fieldOf(0), 0));
    m_grid->setFocus();
}

void RegisterGrid::openPicker(int row, int column, const std::vector<widgets::PickerEntry>& entries,
                              int current, const QString& typed)
{
    m_picked = m_grid->cells().index(row, column);
    const QRect inside = m_grid->visualRect(m_picked);
    const QRect place(m_grid->viewport()->mapTo(this, inside.topLeft()), inside.size());
    m_picker->open(entries, current, place, typed);
}

QString RegisterGrid::textOf(const CellChange& change, const QString& /*soFar*/) const
{
    return change.after;
}

/// Only a pasted block adds units or rooms: what is typed into the empty row goes nowhere.
void RegisterGrid::storeCells(const QList<CellChange>& changes)
{
    if (!canAdd() || (changes.size() == 1 && numberIn(changes.front().row) == 0)) {
        showRows();
        return;
    }
    QList<FieldEdit> edits;
    QMap<int, NewTexts> added;
    for (const CellChange& change : changes) {
        const int field = fieldOf(change.column);
        if (const int number = numberIn(change.row); number > 0) {
            edits.append({number, field, textOf(change, {})});
        } else {
            QString& text = added[change.row][field];
            text = textOf(change, text);
        }
    }
    m_context.perform([&](Register& registro) { return store(registro, edits, added.values()); });
}

/// The selected rows as the user knows them, by their first column.
QString RegisterGrid::rangeText(const QString& verb) const
{
    const auto [first, last] = m_grid->selectedRows();
    // An ampersand of a name is no mnemonic.
    const auto name = [&](int row) {
        return QString(m_grid->cells().text(row, 0)).replace(u'&', u"&&"_s);
    };
    if (first == last)
        return u"%1 %2 %3"_s.arg(verb, m_words.one, name(first));
    return u"%1 %2 da %3 a %4"_s.arg(verb, m_words.several, name(first), name(last));
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
        Entry{m_words.add, [this] { addRow(); }},
        Entry{rangeText(u"Elimina"_s), [this] { removeRows(); }},
        Entry{rangeText(u"Duplica"_s), [this] { duplicateRows(); }},
        Entry{withKeys(u"Sposta su"_s, UpKey), [this] { moveRows(-1); }, first > 0},
        Entry{withKeys(u"Sposta giù"_s, DownKey), [this] { moveRows(1); },
              last < m_grid->cells().rowCount() - 1}};
    m_context.menu.ResetContextMenu();
    for (std::size_t i = 0; i < entries.size(); ++i) {
        QAction& action = m_context.menu.DxMouse(static_cast<int>(i));
        action.setText(entries.at(i).caption);
        action.setVisible(true);
        action.setEnabled(entries.at(i).enabled);
    }
    const QPoint place = m_grid->viewport()->mapToGlobal(m_grid->visualRect(cell).bottomLeft());
    if (const int choice = m_context.menu.choose(place); choice >= 0)
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
        if (!record.after.empty() && concerns(record))
            numbers.append(numberOf(record));
    if (numbers.isEmpty())
        return;
    const auto [first, last] = std::minmax_element(numbers.begin(), numbers.end());
    emit added(*first);
    m_grid->selectRows(m_grid->cells().rowOf(*first), m_grid->cells().rowOf(*last));
}

void RegisterGrid::addRow()
{
    if (m_grid->currentRow() >= 0 && canAdd())
        showAdded(m_context.perform([this](Register& registro) { return add(registro); }));
}

void RegisterGrid::removeRows()
{
    QList<int> numbers = selected();
    std::reverse(numbers.begin(), numbers.end());
    if (!numbers.isEmpty() && numbers.front() > 0)
        m_context.perform([&](Register& registro) { return remove(registro, numbers); });
}

void RegisterGrid::duplicateRows()
{
    const QList<int> numbers = selected();
    if (!numbers.isEmpty() && model().unit().number > 0)
        showAdded(
            m_context.perform([&](Register& registro) { return duplicate(registro, numbers); }));
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
        m_context.perform([&](Register& registro) { return exchange(registro, pairs); });
    if (change.isEmpty())
        return;
    if (first != last)
        m_grid->selectRows(first + places, last + places);
    else
        m_grid->setCurrentCell(first + places, column);
}

} // namespace zelto::registro

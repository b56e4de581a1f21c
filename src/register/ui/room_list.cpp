// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/room_list.h"

#include "register/register_model.h"
#include "widgets/grid.h"

#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace zelto::registro {

using widgets::CellPicker;
using widgets::Grid;

RoomList::RoomList(RegisterModel& model, QWidget* parent)
    : QWidget(parent), m_model(model), m_title(new QLabel(this)),
      m_grid(new Grid({}, roomColumns(model.coefficients()), Grid::AtEnd::Stays, this)),
      m_picker(new CellPicker(this))
{
    m_title->setObjectName(u"TitoloVani"_s);
    m_title->setTextFormat(Qt::PlainText);
    m_grid->setObjectName(u"TabFlex"_s);
    m_grid->setAccessibleName(u"Vani"_s);
    m_grid->setContextMenuPolicy(Qt::CustomContextMenu);
    m_grid->setMostRows([] { return calc::MaxVani; });
    m_picker->setObjectName(u"Coeff"_s);
    m_picker->setAccessibleName(u"Coefficienti"_s);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_title);
    layout->addWidget(m_grid);

    connect(m_grid, &Grid::cellRequested, this, &RoomList::openEntries);
    connect(m_picker, &CellPicker::chosen, this, &RoomList::choose);
    connect(m_picker, &CellPicker::dismissed, m_grid, [this] { m_grid->setFocus(); });
}

QString RoomList::title() const
{
    const UnitRow& unit = m_model.unit();
    if (unit.number == 0)
        return u"Nessuna unità"_s;
    const QString& name = unit.texts.at(UnitTextRiferimento);
    const QString& level = unit.texts.at(UnitTextLivello);
    return u"Vani di %1%2"_s.arg(name.trimmed().isEmpty() ? u"U.I. %1"_s.arg(unit.number) : name,
                                 level.trimmed().isEmpty() ? QString() : u", "_s + level);
}

void RoomList::showRooms()
{
    std::vector<widgets::GridRow> rows;
    for (const RoomRow& room : m_model.rooms())
        rows.push_back({.number = QString::number(room.position),
                        .cells = QStringList(room.texts.begin(), room.texts.end())});
    m_title->setText(title());
    const bool another = std::exchange(m_unit, m_model.unit().number) != m_unit;
    const int row = another ? 0 : m_grid->currentRow();
    const int column = another ? 0 : m_grid->currentColumn();
    m_grid->cells().followRows(std::move(rows));
    const int last = m_grid->cells().rowCount() - 1;
    // Where a row was taken away, nothing may be selected any more.
    if (another || !m_grid->currentIndex().isValid() ||
        !m_grid->selectionModel()->isSelected(m_grid->currentIndex()))
        m_grid->setCurrentCell(std::clamp(row, 0, last), std::max(column, 0));
}

int RoomList::positionIn(int row) const
{
    return row < 0 || row >= m_grid->cells().rowCount() ? 0 : m_grid->cells().number(row).toInt();
}

const std::vector<CoefficientEntry>& RoomList::entriesOf(int column) const
{
    return m_model.lists().coefficienti.at(
        static_cast<std::size_t>(column - ColumnFirstCoefficient));
}

/// In the order of the list, the blank entry behind.
void RoomList::openEntries(int row, int column, int keyCode)
{
    if (positionIn(row) == 0)
        return;
    const QString& text = m_grid->cells().text(row, column);
    std::vector<widgets::PickerEntry> entries;
    int current = -1;
    for (const CoefficientEntry& entry : entriesOf(column)) {
        if (current < 0 && entry.text().startsWith(text))
            current = static_cast<int>(entries.size());
        entries.push_back(
            {.code = entry.code, .value = entry.value, .description = entry.description});
    }
    if (entries.empty()) {
        emit listEmpty(m_grid->cells().column(column).header);
        return;
    }
    entries.emplace_back();
    m_picked = m_grid->cells().index(row, column);
    const QRect inside = m_grid->visualRect(m_picked);
    const QRect place(m_grid->viewport()->mapTo(this, inside.topLeft()), inside.size());
    m_picker->open(entries, std::max(current, 0), place, keyCode);
}

void RoomList::choose(int entry, CellPicker::Then then)
{
    m_grid->setFocus();
    if (!m_picked.isValid())
        return;
    const auto& entries = entriesOf(m_picked.column());
    const auto index = static_cast<std::size_t>(entry);
    const QString& before = m_grid->cells().text(m_picked.row(), m_picked.column());
    const QString after =
        index < entries.size() ? chosenCoefficient(entries[index].text(), before) : QString();
    if (after != before)
        emit coefficientChosen(m_picked.row(), m_picked.column(), after);
    if (then != CellPicker::Then::Stays)
        m_grid->step(then == CellPicker::Then::Next);
}

} // namespace zelto::registro

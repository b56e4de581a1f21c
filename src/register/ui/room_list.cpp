// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/room_list.h"

#include "widgets/cell_picker.h"
#include "widgets/grid.h"

#include <QVBoxLayout>

namespace zelto::registro {

using widgets::CellPicker;
using widgets::Grid;

QString chosenCoefficient(const QString& entry, const QString& cellText)
{
    if (!entry.startsWith(u'['))
        return entry.trimmed();
    const qsizetype end = entry.indexOf(u']');
    return end < 0 ? cellText : entry.left(end + 1);
}

RoomList::RoomList(QWidget* parent)
    : QWidget(parent), m_grid(new Grid({}, roomColumns(), Grid::AtEnd::Stays, this)),
      m_picker(new CellPicker(this))
{
    m_grid->setObjectName(QStringLiteral("TabFlex"));
    m_grid->setAccessibleName(QStringLiteral("Vani"));
    m_grid->setContextMenuPolicy(Qt::CustomContextMenu);
    m_picker->setObjectName(QStringLiteral("Coeff"));
    m_picker->setAccessibleName(QStringLiteral("Coefficienti"));
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_grid);

    connect(m_grid, &Grid::cellRequested, this, &RoomList::openEntries);
    connect(m_picker, &CellPicker::chosen, this, &RoomList::choose);
    connect(m_picker, &CellPicker::dismissed, m_grid, [this] { m_grid->setFocus(); });
}

int RoomList::positionIn(int row) const
{
    return row < 0 || row >= m_grid->cells().rowCount() ? 0 : m_grid->cells().number(row).toInt();
}

void RoomList::openEntries(int row, int column, int keyCode)
{
    if (positionIn(row) == 0)
        return;
    const QStringList& entries =
        m_entries.at(static_cast<std::size_t>(column - ColumnFirstCoefficient));
    if (entries.isEmpty()) {
        emit listEmpty(m_grid->cells().column(column).header);
        return;
    }
    m_pickedRow = row;
    m_pickedColumn = column;
    const QRect inside = m_grid->visualRect(m_grid->cells().index(row, column));
    const QRect place(m_grid->viewport()->mapTo(this, inside.topLeft()), inside.size());
    m_picker->open(entries, place, m_grid->cells().text(row, column), CellPicker::Match::Beginning);
    m_picker->searchFor(keyCode);
}

void RoomList::choose(const QString& entry)
{
    m_grid->setFocus();
    const QString before = m_grid->cells().text(m_pickedRow, m_pickedColumn);
    emit coefficientChosen(m_pickedRow, m_pickedColumn, chosenCoefficient(entry, before));
}

} // namespace zelto::registro

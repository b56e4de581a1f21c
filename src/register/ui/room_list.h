// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/ui/register_columns.h"

#include <QStringList>
#include <QWidget>

#include <array>

namespace zelto::widgets {
class CellPicker;
class Grid;
} // namespace zelto::widgets

namespace zelto::registro {

/// The panel "Vani": the grid with the rooms of one unit.
class RoomList : public QWidget
{
    Q_OBJECT

public:
    using CoefficientEntries = std::array<QStringList, NumCoefficients>;

    explicit RoomList(QWidget* parent = nullptr);

    [[nodiscard]] widgets::Grid& grid() { return *m_grid; }

    /// What the lists of the six coefficients offer.
    void setEntries(const CoefficientEntries& entries) { m_entries = entries; }

    /// The position of the room in the row; 0 for the empty row of a unit without rooms.
    [[nodiscard]] int positionIn(int row) const;

signals:
    /// The user chose an entry for the cell; the text is what goes into it.
    void coefficientChosen(int row, int column, const QString& text);
    /// There is nothing to choose from.
    void listEmpty(const QString& coefficient);

private:
    void openEntries(int row, int column, int keyCode);
    void choose(const QString& entry);

    widgets::Grid* m_grid;
    widgets::CellPicker* m_picker;
    CoefficientEntries m_entries;
    int m_pickedRow = -1;
    int m_pickedColumn = -1;
};

/// What an entry of a coefficient list leaves in the cell: "[A]" of "[A] 1.05", the entry itself
/// when it has no code, nothing new (the cell's text) when its bracket does not close.
[[nodiscard]] QString chosenCoefficient(const QString& entry, const QString& cellText);

} // namespace zelto::registro

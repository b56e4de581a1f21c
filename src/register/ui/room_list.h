// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/ui/register_columns.h"

#include <QWidget>

class QLabel;

namespace zelto::widgets {
class Grid;
} // namespace zelto::widgets

namespace zelto::registro {

class RegisterModel;

/// The panel "Vani": whose rooms they are, and the grid with them.
class RoomList : public QWidget
{
    Q_OBJECT

public:
    /// The model outlives it.
    explicit RoomList(RegisterModel& model, QWidget* parent = nullptr);

    [[nodiscard]] widgets::Grid& grid() { return *m_grid; }

    /// Shows the rooms of the model's unit: of another one from the first on.
    void showRooms();

    /// The position of the room in the row; 0 for the empty row of a unit without rooms.
    [[nodiscard]] int positionIn(int row) const;

signals:
    /// The user chose an entry for the cell; the text is what goes into it.
    void coefficientChosen(int row, int column, const QString& text);
    /// There is nothing to choose from.
    void listEmpty(const QString& coefficient);

private:
    [[nodiscard]] QString title() const;
    [[nodiscard]] const std::vector<CoefficientEntry>& entriesOf(int column) const;
    void openEntries(int row, int column, int keyCode);
    void choose(int entry, widgets::CellPicker::Then then);

    RegisterModel& m_model;
    QLabel* m_title;
    widgets::Grid* m_grid;
    widgets::CellPicker* m_picker;
    int m_unit = 0; ///< whose rooms are shown
    QPersistentModelIndex m_picked;
};

} // namespace zelto::registro

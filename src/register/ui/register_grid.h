// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/register_model.h"
#include "widgets/cell_picker.h"
#include "widgets/grid.h"

#include <QWidget>

namespace zelto::widgets {
class ContextMenu;
} // namespace zelto::widgets

namespace zelto::registro {

/// A list of the register, units or rooms: a grid whose cells are stored as soon as they change,
/// and the commands for its rows, from the keyboard and from the menu of the right button.
class RegisterGrid : public QWidget
{
    Q_OBJECT

public:
    [[nodiscard]] widgets::Grid& grid() const { return *m_grid; }

    /// Goes to that field of the unit or room, by its ordinal in the table; of the flags, to that
    /// of special table 1 to 10.
    void goTo(int number, int field, int table = 1);

signals:
    /// The unit or room has just been added.
    void added(int number);
    /// Something to be shown for a while.
    void said(const QString& remark);

protected:
    /// What the grid lists: how its menu names the rows, and what changes them.
    struct Rows
    {
        template <typename... What>
        using Change = std::function<RegisterChange(Register& registro, const What&... what)>;

        Table table;
        QString toAdd;   ///< the whole entry of the menu
        QString one;     ///< "vano"
        QString several; ///< "vani"
        Change<> add;
        Change<QList<int>> remove;
        Change<QList<int>> duplicate;
        Change<QList<std::pair<int, int>>> exchange;
        Change<QList<FieldEdit>, QList<NewTexts>> store;
    };

    /// Model and menu outlive it.
    RegisterGrid(RegisterModel& model, widgets::ContextMenu& menu, Rows rows);

    [[nodiscard]] RegisterModel& model() const { return m_model; }
    [[nodiscard]] widgets::CellPicker& picker() const { return *m_picker; }

    /// The number of the unit or the position of the room in the row; 0 for the empty row.
    [[nodiscard]] int numberIn(int row) const;

    /// Shows the units or rooms that the model lists.
    void followModel();

private:
    [[nodiscard]] const Column& column(int column) const;
    [[nodiscard]] bool canAdd() const;
    void addKeys();
    void openCell(int row, int column, const QString& typed);
    void openPicker(int row, int column, const QString& typed);
    void turnFlag(int row, int column);
    void choose(const widgets::PickerEntry& entry);
    [[nodiscard]] QString newText(const widgets::CellChange& change, const QString& soFar) const;
    void storeCells(const QList<widgets::CellChange>& changes);
    void showMenu();
    void addRow();
    void removeRows();
    void duplicateRows();
    void moveRows(int places);
    void showAdded(const RegisterChange& change);
    [[nodiscard]] QString rangeText(const QString& verb) const;
    [[nodiscard]] QList<int> selected() const;

    RegisterModel& m_model;
    widgets::ContextMenu& m_menu;
    Rows m_rows;
    widgets::Grid* m_grid;
    widgets::CellPicker* m_picker;
    QPersistentModelIndex m_picked; ///< the cell under the picker
    std::vector<widgets::PickerEntry> m_offered;
};

} // namespace zelto::registro

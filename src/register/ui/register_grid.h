// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/register_model.h"
#include "widgets/cell_picker.h"
#include "widgets/grid.h"

#include <QWidget>

#include <functional>

namespace zelto::widgets {
class ContextMenu;
} // namespace zelto::widgets

namespace zelto::registro {

/// What the lists of the register work with; all of it outlives them.
struct RegisterGridContext
{
    RegisterModel& model;
    widgets::ContextMenu& menu;
    /// Stores a change and shows what became of it; gives the empty one when nothing was stored.
    std::function<RegisterChange(const std::function<RegisterChange(Register&)>& operation)>
        perform;
    std::function<void(const QString& remark)> say;
};

/// A list of the register, units or rooms: a grid whose cells are stored as soon as they change,
/// and the commands for its rows, from the keyboard and from the menu of the right button.
class RegisterGrid : public QWidget
{
    Q_OBJECT

public:
    /// How the menu names what the grid lists.
    struct Words
    {
        QString add;     ///< the whole entry
        QString one;     ///< "vano"
        QString several; ///< "vani"
    };

    [[nodiscard]] widgets::Grid& grid() const { return *m_grid; }

    /// Shows what the model lists.
    virtual void showRows() = 0;

    /// The number of the unit or the position of the room in the row; 0 for the empty row.
    [[nodiscard]] int numberIn(int row) const;

    /// Goes to that field of the unit or room, by its ordinal in the table.
    void goTo(int number, int field);

signals:
    /// The unit or room has just been added.
    void added(int number);

protected:
    RegisterGrid(const RegisterGridContext& context, Words words,
                 const std::vector<widgets::GridColumn>& columns, QWidget* parent);

    [[nodiscard]] RegisterModel& model() const { return m_context.model; }
    [[nodiscard]] const RegisterGridContext& context() const { return m_context; }
    [[nodiscard]] widgets::CellPicker& picker() const { return *m_picker; }

    /// Lays the picker over the cell.
    void openPicker(int row, int column, const std::vector<widgets::PickerEntry>& entries,
                    int current, const QString& typed);

    /// An entry was chosen for the cell.
    virtual void choose(int row, int column, int entry) = 0;

    // What is stored, and which records it is about
    [[nodiscard]] virtual bool concerns(const RecordChange& change) const = 0;
    [[nodiscard]] virtual int numberOf(const RecordChange& change) const = 0;
    [[nodiscard]] virtual int fieldOf(int column) const = 0;
    /// What the field gets for the new text of the cell; so far it has got the other one.
    [[nodiscard]] virtual QString textOf(const widgets::CellChange& change,
                                         const QString& soFar) const;
    [[nodiscard]] virtual bool canAdd() const { return true; }
    virtual RegisterChange store(Register& registro, const QList<FieldEdit>& edits,
                                 const QList<NewTexts>& added) = 0;
    virtual RegisterChange add(Register& registro) = 0;
    virtual RegisterChange remove(Register& registro, const QList<int>& numbers) = 0;
    virtual RegisterChange duplicate(Register& registro, const QList<int>& numbers) = 0;
    virtual RegisterChange exchange(Register& registro,
                                    const QList<std::pair<int, int>>& pairs) = 0;

private:
    void addKeys();
    void storeCells(const QList<widgets::CellChange>& changes);
    void showMenu();
    void addRow();
    void removeRows();
    void duplicateRows();
    void moveRows(int places);
    void showAdded(const RegisterChange& change);
    [[nodiscard]] QString rangeText(const QString& verb) const;
    [[nodiscard]] QList<int> selected() const;

    RegisterGridContext m_context;
    Words m_words;
    widgets::Grid* m_grid;
    widgets::CellPicker* m_picker;
    QPersistentModelIndex m_picked; ///< the cell under the picker
};

} // namespace zelto::registro

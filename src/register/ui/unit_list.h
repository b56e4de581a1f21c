// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/ui/register_columns.h"

#include <QWidget>

class QComboBox;
class QLayout;
class QLineEdit;

namespace zelto::widgets {
class Grid;
} // namespace zelto::widgets

namespace zelto::registro {

class RegisterModel;

/// The panel "Elenco": the grid of the units, above it the filters by level and staircase and a
/// field to search in.
class UnitList : public QWidget
{
    Q_OBJECT

public:
    /// The model outlives it.
    explicit UnitList(RegisterModel& model, QWidget* parent = nullptr);

    [[nodiscard]] widgets::Grid& grid() { return *m_grid; }

    /// Shows the model's lists in filters and headers; the filters stay as they are if they can.
    void showLists();
    /// Shows the units that the model lists, and which one is current.
    void showUnits();
    void showCurrent();

    /// The units that the filters let through.
    [[nodiscard]] UnitFilter filter() const;

    /// The row of the unit, -1 when it is not listed.
    [[nodiscard]] int rowOf(int unit) const;

    /// The number of the unit in the row; 0 for the empty row of a list without units.
    [[nodiscard]] int unitIn(int row) const;

    /// Puts the user into the search field.
    void beginSearch();
    /// Goes on to the next listed unit, or back, whose reference contains what is searched for.
    void searchOn(bool forward);

signals:
    void filterChanged();
    /// The search has found the unit, or none that is listed.
    void unitFound(int unit);
    void nothingFound(const QString& wanted);
    /// The user chose a staircase for the unit in the row; empty for none.
    void scalaChosen(int row, const QString& code);
    /// The user wants the flag of special table 1 to 10 turned over.
    void flagToggled(int row, int table);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QComboBox* addFilter(const QString& name);
    [[nodiscard]] QLayout* filterRow();
    void openCell(int row, int column, int keyCode);
    void openScale(int row, int keyCode);
    void chooseScala(int entry, widgets::CellPicker::Then then);
    void search(int from, int step);

    RegisterModel& m_model;
    QComboBox* m_livello;
    QComboBox* m_scala;
    QLineEdit* m_search;
    widgets::Grid* m_grid;
    widgets::CellPicker* m_picker;
    QPersistentModelIndex m_picked;
};

} // namespace zelto::registro

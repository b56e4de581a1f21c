// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/register_lists.h"
#include "widgets/grid_model.h"

#include <QStringList>
#include <QWidget>

class QComboBox;

namespace zelto::widgets {
class CellPicker;
class Grid;
} // namespace zelto::widgets

namespace zelto::registro {

/// The panel "Elenco": the grid of the units, above it the filters by level and staircase.
class UnitList : public QWidget
{
    Q_OBJECT

public:
    explicit UnitList(QWidget* parent = nullptr);

    [[nodiscard]] widgets::Grid& grid() { return *m_grid; }

    /// Staircase codes for filter and cells, levels for the filter; without their blank first
    /// entry.
    void setLists(const QStringList& scale, const QStringList& livelli);

    /// What the filters stand for; empty for all.
    [[nodiscard]] QString filterScala() const;
    [[nodiscard]] QString filterLivello() const;

    /// What the grid shows of a unit.
    [[nodiscard]] static widgets::GridRow rowFor(const UnitRow& unit);

    /// The row of the unit, -1 when it is not listed.
    [[nodiscard]] int rowOf(int unit) const;

    /// The number of the unit in the row; 0 for the empty row of a list without units.
    [[nodiscard]] int unitIn(int row) const;

signals:
    void filterChanged();
    /// The user chose a staircase for the unit in the row; empty for none.
    void scalaChosen(int row, const QString& code);
    /// The user wants the flag of special table 1 to 10 turned over.
    void flagToggled(int row, int table);

private:
    QComboBox* addFilter(const QString& name);
    void openCell(int row, int column, int keyCode);
    void openScale(int row, int keyCode);

    QComboBox* m_livello;
    QComboBox* m_scala;
    widgets::Grid* m_grid;
    widgets::CellPicker* m_picker;
    QStringList m_scale;
    int m_pickedRow = -1;
};

} // namespace zelto::registro

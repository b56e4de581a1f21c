// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/ui/register_grid.h"

class QComboBox;
class QLayout;
class QLineEdit;

namespace zelto::registro {

/// The panel "Elenco": the grid of the units, above it the filters by level and staircase and a
/// field to search in.
class UnitList : public RegisterGrid
{
    Q_OBJECT

public:
    explicit UnitList(const RegisterGridContext& context, QWidget* parent = nullptr);

    /// Shows the model's lists in filters and headers; the filters stay as they are if they can.
    void showLists();
    /// Shows the units that the model lists, and which one is current.
    void showRows() override;
    void showCurrent();

    /// The units that the filters let through.
    [[nodiscard]] UnitFilter filter() const;

    /// Puts the user into the search field.
    void beginSearch();
    /// Goes on to the next listed unit, or back, whose reference contains what is searched for.
    void searchOn(bool forward);

signals:
    void filterChanged();
    /// The search has found the unit.
    void unitFound(int unit);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void choose(int row, int column, int entry) override;
    [[nodiscard]] bool concerns(const RecordChange& change) const override;
    [[nodiscard]] int numberOf(const RecordChange& change) const override;
    [[nodiscard]] int fieldOf(int column) const override;
    [[nodiscard]] QString textOf(const widgets::CellChange& change,
                                 const QString& soFar) const override;
    RegisterChange store(Register& registro, const QList<FieldEdit>& edits,
                         const QList<NewTexts>& added) override;
    RegisterChange add(Register& registro) override;
    RegisterChange remove(Register& registro, const QList<int>& numbers) override;
    RegisterChange duplicate(Register& registro, const QList<int>& numbers) override;
    RegisterChange exchange(Register& registro, const QList<std::pair<int, int>>& pairs) override;

private:
    QComboBox* addFilter(const QString& name);
    [[nodiscard]] QLayout* filterRow();
    void openCell(int row, int column, const QString& typed);
    void turnFlag(int row, int table);
    void search(int from, int step);

    QComboBox* m_livello;
    QComboBox* m_scala;
    QLineEdit* m_search;
};

} // namespace zelto::registro

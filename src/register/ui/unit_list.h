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
    UnitList(RegisterModel& model, widgets::ContextMenu& menu);

    /// Shows which unit is current.
    void showCurrent();

    /// Puts the user into the search field.
    void beginSearch();

    /// Has the unit among those listed, without filters if need be.
    void showUnit(int unit);
    /// Goes on to the next listed unit, or back, whose reference contains what is searched for.
    void searchOn(bool forward);

signals:
    /// The user went to the unit.
    void unitChosen(int unit);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QComboBox* addFilter(const QString& name);
    [[nodiscard]] QLayout* filterRow();
    [[nodiscard]] UnitFilter filter() const;
    void showLists();
    void showUnits();
    void search(int from, int step);

    QComboBox* m_livello;
    QComboBox* m_scala;
    QLineEdit* m_search;
    bool m_following = false; ///< the current row follows the model, not the user
};

} // namespace zelto::registro

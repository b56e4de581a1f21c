// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/register_model.h"

#include <QScrollArea>

class QCheckBox;
class QFormLayout;

namespace zelto::widgets {
class CellPicker;
class TypedLine;
} // namespace zelto::widgets

namespace zelto::registro {

/// The panel "Dettaglio": the fields of the current unit and its special tables.
class UnitDetail : public QScrollArea
{
    Q_OBJECT

public:
    /// The model outlives it.
    explicit UnitDetail(RegisterModel& model);

    /// Puts the user into the field of that ordinal, or the last one before.
    void goTo(int field);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addField(QFormLayout& form, const Column& column);
    void addTable(QFormLayout& form, const Column& column);
    void showLists();
    void showUnit();
    [[nodiscard]] widgets::TypedLine& scala() const { return *m_dati[UnitScala]; }
    void openScale();
    void store(int field, const QString& text);

    RegisterModel& m_model;
    QMap<int, widgets::TypedLine*> m_dati; ///< by the ordinal of their field
    std::vector<QCheckBox*> m_check1;
    widgets::CellPicker* m_combo1;
};

} // namespace zelto::registro

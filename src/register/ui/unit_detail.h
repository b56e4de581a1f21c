// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/ui/register_columns.h"

#include <QStringList>
#include <QWidget>

#include <array>

class QCheckBox;
class QFormLayout;

namespace zelto::widgets {
class CellPicker;
class TypedLine;
} // namespace zelto::widgets

namespace zelto::registro {

/// The panel "Dettaglio": the fields of one unit and its special tables.
class UnitDetail : public QWidget
{
    Q_OBJECT

public:
    static constexpr int NumFields = NumUnitTexts;
    explicit UnitDetail(QWidget* parent = nullptr);

    /// What staircases can be chosen and which special tables have a name: the others' boxes are
    /// hidden.
    void showLists(const RegisterLists& lists);

    /// Number 0 shows that there is no unit to be edited.
    void showUnit(const UnitRow& unit);

    /// Puts the user into one of the fields, counted from 0.
    void goToField(int field);

signals:
    /// The user left a field with another text, or chose another staircase.
    void fieldChanged(int field, const QString& text);
    void tableToggled(int table, bool on);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addFields(QFormLayout& form);
    void addTables(QFormLayout& form);
    [[nodiscard]] widgets::TypedLine& scala() const;
    void openScale();

    std::array<widgets::TypedLine*, NumFields> m_dati{};
    std::array<QCheckBox*, store::SpecialTables> m_check1{};
    widgets::CellPicker* m_combo1;
    QStringList m_scale;
};

} // namespace zelto::registro

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
    using Fields = std::array<QString, NumFields>;
    using TableNames = std::array<QString, NumTables>;

    explicit UnitDetail(QWidget* parent = nullptr);

    /// Staircase codes without the blank first entry.
    void setScale(const QStringList& scale) { m_scale = scale; }

    /// Names of the special tables; those without a name are not shown.
    void setTables(const TableNames& names);

    /// Whether special table 1 to 10 has a name.
    [[nodiscard]] bool hasTable(int table) const;

    /// Riferimento, Livello, Codice scala, H piano.
    void showFields(const Fields& fields);

    /// One character for each special table, "X" in either letter case for those of the unit.
    void showFlags(const QString& flags);

    /// No unit can be edited while there is none.
    void setUnit(int unit);

signals:
    /// The user left a field with another text.
    void fieldChanged(int field, const QString& text);
    /// Empty for none.
    void scalaChosen(const QString& code);
    void tableToggled(int table, bool on);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void addFields(QFormLayout& form);
    void addTables(QFormLayout& form);
    [[nodiscard]] widgets::TypedLine& scala() const;
    void openScale();
    void closeScale();

    std::array<widgets::TypedLine*, NumFields> m_dati{};
    std::array<QCheckBox*, NumTables> m_check1{};
    widgets::CellPicker* m_combo1;
    QStringList m_scale;
};

} // namespace zelto::registro

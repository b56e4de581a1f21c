// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/unit_detail.h"

#include "widgets/cell_picker.h"
#include "widgets/typed_line.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QSignalBlocker>

namespace zelto::registro {

using widgets::CellPicker;
using widgets::TypedLine;

namespace {

struct FieldKind
{
    QString label;
    int maxLength;
};

const std::array<FieldKind, UnitDetail::NumFields>& fieldKinds()
{
    static const std::array<FieldKind, UnitDetail::NumFields> kinds{
        {{QStringLiteral(" Riferimento"), 23},
         {QStringLiteral(" Livello"), 20},
         {QStringLiteral(" Codice scala"), 4},
         {QStringLiteral(" H piano"), 10}}};
    return kinds;
}

/// The keys by which lists are opened on this desktop.
bool opensList(const QKeyEvent& key)
{
    return key.key() == Qt::Key_F2 || key.key() == Qt::Key_F4 || key.key() == Qt::Key_Space ||
           (key.key() == Qt::Key_Down && key.modifiers() == Qt::AltModifier);
}

} // namespace

UnitDetail::UnitDetail(QWidget* parent) : QWidget(parent), m_combo1(new CellPicker(this))
{
    setObjectName(QStringLiteral("SchedaDettaglio"));
    m_combo1->setObjectName(QStringLiteral("Combo1"));
    m_combo1->setAccessibleName(QStringLiteral("Codici scala"));
    auto* form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    addFields(*form);
    addTables(*form);
    connect(m_combo1, &CellPicker::chosen, this, [this](const QString& entry) {
        scala().setText(entry.trimmed());
        emit scalaChosen(entry.trimmed());
        closeScale();
    });
    connect(m_combo1, &CellPicker::dismissed, this, &UnitDetail::closeScale);
}

void UnitDetail::addFields(QFormLayout& form)
{
    for (int i = 0; i < NumFields; ++i) {
        const FieldKind& kind = fieldKinds().at(static_cast<std::size_t>(i));
        auto* field = new TypedLine(QStringLiteral("AOL"), kind.maxLength, this);
        field->setObjectName(QStringLiteral("Dati%1").arg(i));
        field->setAccessibleName(kind.label.trimmed());
        field->setMinimumWidth(fontMetrics().averageCharWidth() * (kind.maxLength + 6));
        auto* label = new QLabel(kind.label, this);
        label->setBuddy(field);
        form.addRow(label, field);
        m_dati.at(static_cast<std::size_t>(i)) = field;
        connect(field, &TypedLine::changed, this,
                [this, i, field] { emit fieldChanged(i, field->text()); });
    }
    scala().setReadOnly(true);
    scala().setToolTip(QStringLiteral("Doppio clic o F2 per scegliere la scala"));
    scala().installEventFilter(this);
}

void UnitDetail::addTables(QFormLayout& form)
{
    for (int i = 0; i < NumTables; ++i) {
        auto* box = new QCheckBox(this);
        box->setObjectName(QStringLiteral("Check1_%1").arg(i));
        box->hide();
        form.addRow(box);
        m_check1.at(static_cast<std::size_t>(i)) = box;
        connect(box, &QCheckBox::toggled, this,
                [this, i](bool on) { emit tableToggled(i + 1, on); });
    }
}

TypedLine& UnitDetail::scala() const
{
    return *m_dati.at(ColumnScala);
}

void UnitDetail::setTables(const TableNames& names)
{
    for (std::size_t i = 0; i < names.size(); ++i) {
        const QString& name = names.at(i);
        QCheckBox& box = *m_check1.at(i);
        // An ampersand of a name is no mnemonic.
        box.setText(QString(name).replace(u'&', QStringLiteral("&&")));
        box.setVisible(!name.isEmpty());
    }
}

bool UnitDetail::hasTable(int table) const
{
    return !m_check1.at(static_cast<std::size_t>(table - 1))->text().isEmpty();
}

void UnitDetail::showFields(const Fields& fields)
{
    for (std::size_t i = 0; i < fields.size(); ++i)
        m_dati.at(i)->setText(fields.at(i));
}

void UnitDetail::showFlags(const QString& flags)
{
    for (int i = 0; i < NumTables; ++i) {
        QCheckBox& box = *m_check1.at(static_cast<std::size_t>(i));
        const QSignalBlocker quiet(&box);
        box.setChecked(i < flags.size() && flags.at(i).toUpper() == u'X');
    }
}

void UnitDetail::setUnit(int unit)
{
    setEnabled(unit > 0);
}

bool UnitDetail::eventFilter(QObject* watched, QEvent* event)
{
    const auto* key = dynamic_cast<QKeyEvent*>(event);
    const bool byKey = event->type() == QEvent::KeyPress && key != nullptr && opensList(*key);
    if (byKey || event->type() == QEvent::MouseButtonDblClick) {
        openScale();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void UnitDetail::openScale()
{
    const QStringList entries = QStringList(QStringLiteral(" ")) + m_scale;
    m_combo1->open(entries, scala().geometry(), scala().text(), CellPicker::Match::Whole);
}

void UnitDetail::closeScale()
{
    scala().setFocus();
}

} // namespace zelto::registro

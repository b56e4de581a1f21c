// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/unit_detail.h"

#include "calc/figure_remarks.h"
#include "widgets/typed_line.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QSignalBlocker>

#include <algorithm>

namespace zelto::registro {

using widgets::CellPicker;
using widgets::FieldKind;
using widgets::TypedLine;

namespace {

struct Field
{
    QString label;
    int maxLength;
    FieldKind kind = FieldKind::Words;
};

const std::array<Field, UnitDetail::NumFields>& fields()
{
    static const std::array<Field, UnitDetail::NumFields> fields{
        {{u" Riferimento"_s, 23},
         {u" Livello"_s, 20},
         {u" Codice scala"_s, 4},
         {u" H piano"_s, 10, FieldKind::FreeFigure}}};
    return fields;
}

/// The keys by which lists are opened on this desktop.
bool opensList(const QKeyEvent& key)
{
    return key.modifiers() == Qt::NoModifier &&
           (key.key() == Qt::Key_F2 || key.key() == Qt::Key_F4 || key.key() == Qt::Key_Space);
}

} // namespace

UnitDetail::UnitDetail(QWidget* parent) : QWidget(parent), m_combo1(new CellPicker(this))
{
    setObjectName(u"SchedaDettaglio"_s);
    m_combo1->setObjectName(u"Combo1"_s);
    m_combo1->setAccessibleName(u"Codici scala"_s);
    auto* form = new QFormLayout(this);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    addFields(*form);
    addTables(*form);
    connect(m_combo1, &CellPicker::chosen, this, [this](int entry) {
        const QString code = m_scale.value(entry - 1).trimmed();
        scala().setText(code);
        emit fieldChanged(ColumnScala, code);
        scala().setFocus();
    });
    connect(m_combo1, &CellPicker::dismissed, this, [this] { scala().setFocus(); });
}

void UnitDetail::addFields(QFormLayout& form)
{
    for (int i = 0; i < NumFields; ++i) {
        const Field& kind = fields().at(static_cast<std::size_t>(i));
        auto* field = new TypedLine(kind.kind, kind.maxLength, this);
        field->setOnEntry(TypedLine::OnEntry::Nothing);
        field->setObjectName(u"Dati%1"_s.arg(i));
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
    scala().setToolTip(u"Doppio clic o F2 per scegliere la scala"_s);
    scala().installEventFilter(this);
}

void UnitDetail::addTables(QFormLayout& form)
{
    for (int i = 0; i < NumTables; ++i) {
        auto* box = new QCheckBox(this);
        box->setObjectName(u"Check1_%1"_s.arg(i));
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

void UnitDetail::showLists(const RegisterLists& lists)
{
    m_scale = lists.scale;
    for (std::size_t i = 0; i < lists.tabelle.size(); ++i) {
        const QString& name = lists.tabelle.at(i);
        QCheckBox& box = *m_check1.at(i);
        // An ampersand of a name is no mnemonic.
        box.setText(QString(name).replace(u'&', u"&&"_s));
        box.setVisible(!name.isEmpty());
    }
}

void UnitDetail::showUnit(const UnitRow& unit)
{
    setEnabled(unit.number > 0);
    for (std::size_t i = 0; i < unit.texts.size(); ++i)
        if (m_dati.at(i)->text() != unit.texts.at(i))
            m_dati.at(i)->setText(unit.texts.at(i));
    m_dati.at(ColumnHPiano)->setRemark(calc::osservaCifra(unit.texts.at(ColumnHPiano)));
    for (int i = 0; i < NumTables; ++i) {
        QCheckBox& box = *m_check1.at(static_cast<std::size_t>(i));
        const QSignalBlocker quiet(&box);
        box.setChecked(i < unit.flags.size() && unit.flags.at(i).toUpper() == u'X');
    }
}

void UnitDetail::goToField(int field)
{
    m_dati.at(static_cast<std::size_t>(std::clamp(field, 0, NumFields - 1)))->setFocus();
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
    m_combo1->open(scalaEntries(m_scale), scalaEntry(m_scale, scala().text()), scala().geometry(),
                   {});
}

} // namespace zelto::registro

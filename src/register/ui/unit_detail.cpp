// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/unit_detail.h"

#include "calc/figure_remarks.h"
#include "register/ui/shown_columns.h"
#include "store/schema.h"
#include "widgets/grid.h"
#include "widgets/keys.h"
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

/// The keys by which lists are opened on this desktop.
bool opensList(const QKeyEvent& key)
{
    return key.modifiers() == Qt::NoModifier &&
           (key.key() == Qt::Key_F2 || key.key() == Qt::Key_F4 || key.key() == Qt::Key_Space);
}

} // namespace

UnitDetail::UnitDetail(RegisterModel& model) : m_model(model), m_combo1(new CellPicker(this))
{
    setObjectName(u"SchedaDettaglio"_s);
    m_combo1->setObjectName(u"Combo1"_s);
    m_combo1->setAccessibleName(u"Codici scala"_s);
    // Ten tables take more height than there may be.
    setFrameShape(QFrame::NoFrame);
    setWidgetResizable(true);
    setFocusPolicy(Qt::NoFocus);
    auto* fields = new QWidget;
    auto* form = new QFormLayout(fields);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    for (const Column& column : columnsOf(Table::Units))
        column.holds == Holds::Flag ? addTable(*form, column) : addField(*form, column);
    setWidget(fields);
    viewport()->setAutoFillBackground(false);
    fields->setAutoFillBackground(false);
    connect(m_combo1, &CellPicker::chosen, this, [this](int entry) {
        const QString code = m_model.lists().scale.value(entry - 1).trimmed();
        scala().setText(code);
        store(UnitScala, code);
        scala().setFocus();
    });
    connect(m_combo1, &CellPicker::dismissed, this, [this] { scala().setFocus(); });
    connect(&model, &RegisterModel::reloaded, this, &UnitDetail::showLists);
    connect(&model, &RegisterModel::unitShown, this, &UnitDetail::showUnit);
}

void UnitDetail::store(int field, const QString& text)
{
    m_model.perform([&](Register& registro) {
        return registro.MemorizzaUI({{m_model.current(), field, text}});
    });
}

void UnitDetail::addField(QFormLayout& form, const Column& column)
{
    constexpr int LeastLength = 4; // a single character's field would look like a dot
    const int length = std::max(column.longest, LeastLength);
    const bool figure = column.holds == Holds::Height;
    const QString name =
        store::jobTable(store::TabellaUnita).fields[static_cast<std::size_t>(column.field)].name;
    auto* field = new TypedLine(figure ? FieldKind::FreeFigure : FieldKind::Words, length, this);
    field->setOnEntry(TypedLine::OnEntry::Nothing);
    field->setObjectName(u"Dati%1"_s.arg(m_dati.size()));
    field->setAccessibleName(name);
    field->setMinimumWidth(fontMetrics().averageCharWidth() * (length + 6));
    auto* label = new QLabel(u' ' + name, this);
    label->setBuddy(field);
    form.addRow(label, field);
    m_dati.insert(column.field, field);
    if (column.holds == Holds::Staircase) {
        field->setReadOnly(true);
        field->setToolTip(u"Doppio clic o F2 per scegliere la scala"_s);
        field->installEventFilter(this);
    }
    connect(field, &TypedLine::changed, this,
            [this, field, ordinal = column.field] { store(ordinal, field->text()); });
}

void UnitDetail::addTable(QFormLayout& form, const Column& column)
{
    auto* box = new QCheckBox(this);
    box->setObjectName(u"Check1_%1"_s.arg(column.index));
    box->hide();
    form.addRow(box);
    m_check1.push_back(box);
    connect(box, &QCheckBox::toggled, this, [this, table = column.index + 1](bool on) {
        m_model.perform([&](Register& registro) {
            return registro.MemorizzaFlag(m_model.current(), table, on);
        });
    });
}

/// Tables without a name have no box.
void UnitDetail::showLists()
{
    for (std::size_t i = 0; i < m_check1.size(); ++i) {
        const QString& name = m_model.lists().tabelle.at(i);
        m_check1[i]->setVisible(!name.isEmpty());
        m_check1[i]->setText(widgets::asCaption(name));
    }
}

void UnitDetail::showUnit()
{
    setEnabled(m_model.current() > 0);
    for (const Column& column : columnsOf(Table::Units)) {
        const QString text = textOf(m_model.unit(), column.field);
        if (column.holds == Holds::Flag) {
            QCheckBox& box = *m_check1.at(static_cast<std::size_t>(column.index));
            const QSignalBlocker quiet(&box);
            box.setChecked(text.mid(column.index, 1).toUpper() == u"X");
            continue;
        }
        TypedLine& field = *m_dati[column.field];
        if (field.text() != text)
            field.setText(text);
        if (column.holds == Holds::Height)
            field.setRemark(calc::osservaCifra(text));
    }
}

void UnitDetail::goTo(int field)
{
    const auto behind = m_dati.upperBound(field);
    TypedLine* shown = (behind == m_dati.begin() ? behind : std::prev(behind)).value();
    ensureWidgetVisible(shown);
    shown->setFocus();
}

bool UnitDetail::eventFilter(QObject* watched, QEvent* event)
{
    const auto* key = dynamic_cast<QKeyEvent*>(event);
    const bool byKey = event->type() == QEvent::KeyPress && key != nullptr && opensList(*key);
    if (watched == &scala() && (byKey || event->type() == QEvent::MouseButtonDblClick)) {
        openScale();
        return true;
    }
    return QScrollArea::eventFilter(watched, event);
}

void UnitDetail::openScale()
{
    const Offer offer = offeredStaircases(m_model.lists(), scala().text());
    const QRect place(scala().mapTo(this, QPoint()), scala().size());
    m_combo1->open(offer.entries, offer.current, place, {});
}

} // namespace zelto::registro

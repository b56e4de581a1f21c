// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/ui/variabili.h"

#include "calc/figure_remarks.h"
#include "store/schema.h"
#include "widgets/keys.h"

#include <QPlainTextEdit>
#include <QTabBar>
#include <QVBoxLayout>

namespace zelto::coefficients {

namespace {

std::vector<widgets::GridColumn> groupColumns()
{
    return {{.header = u"Valore"_s,
             .alignment = Qt::AlignRight | Qt::AlignVCenter,
             .kind = widgets::FieldKind::FreeFigure,
             .maxLength = 10,
             .width = 1500,
             .remark = calc::osservaCifra},
            {.header = u"Variabile"_s, .maxLength = 10, .width = 1800},
            {.header = u"Descrizione"_s, .maxLength = 30, .width = 5000}};
}

} // namespace

Variabili::Variabili(store::Database& lavoro, const QStringList& descriptions,
                     widgets::Dialogs& dialogs, store::Settings& settings, QWidget* parent)
    : EditDialog({u"Variabili"_s, u"Dettaglio variabili"_s, groupColumns(), u"Colonna"_s}, dialogs,
                 settings, parent),
      m_lavoro(lavoro), m_descriptions(descriptions),
      m_loaded(loadTexts(lavoro, store::TabellaVariabili)), m_groups(m_loaded), m_tabs(new QTabBar),
      m_description(new QPlainTextEdit)
{
    resize(680, 520);
    grid().setAccessibleName(u"Valori del gruppo"_s);
    connect(&grid(), &widgets::Grid::rowAppended, this, &Variabili::remarkLength);
    setContents(buildContents());
    showGroup(m_group);
    grid().setFocus();
}

QWidget* Variabili::buildContents()
{
    m_tabs->setObjectName(u"TabStrip1"_s);
    m_tabs->setAccessibleName(u"Gruppi di coefficienti"_s);
    m_tabs->setExpanding(false);
    m_tabs->setUsesScrollButtons(true);
    for (const QStringView name : std::span(store::GroupNames).subspan(1))
        m_tabs->addTab(name.toString());
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int tab) {
        keepGroup();
        showGroup(tab + 1);
    });
    widgets::addTabKeys(*this, *m_tabs);

    m_description->setObjectName(u"Text1"_s);
    m_description->setAccessibleName(u"Descrizione del gruppo"_s);
    m_description->setReadOnly(true);
    m_description->setTabChangesFocus(true);
    m_description->setFixedHeight(m_description->fontMetrics().lineSpacing() * 3 + 14);

    auto* contents = new QWidget;
    auto* layout = new QVBoxLayout(contents);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tabs);
    layout->addWidget(m_description);
    layout->addWidget(&grid(), 1);
    return contents;
}

void Variabili::showGroup(int group)
{
    grid().cells().setTableText(m_groups.value(store::campoGruppo(group)));
    grid().setCurrentCell(0, 0);
    m_description->setPlainText(m_descriptions.value(group));
    m_group = group;
    remarkLength();
}

void Variabili::keepGroup()
{
    grid().commitEditor();
    m_groups[store::campoGruppo(m_group)] = grid().cells().tableText();
}

void Variabili::remarkLength()
{
    showRemark(grid().cells().rowCount() > store::MostGroupRows
                   ? u"Di un gruppo si usano solo le prime %1 righe."_s.arg(store::MostGroupRows)
                   : QString());
}

void Variabili::store()
{
    keepGroup();
    saveTexts(m_lavoro, store::TabellaVariabili, m_groups, m_loaded);
    m_loaded = m_groups;
}

} // namespace zelto::coefficients

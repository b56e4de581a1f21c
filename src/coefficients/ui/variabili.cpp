// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/ui/variabili.h"

#include "calc/figure_remarks.h"
#include "store/database.h"
#include "store/schema.h"
#include "store/settings.h"
#include "text/table_text.h"
#include "widgets/column_widths.h"
#include "widgets/dialogs.h"
#include "widgets/grid.h"
#include "widgets/keys.h"

#include <QPlainTextEdit>
#include <QTabBar>
#include <QVBoxLayout>

namespace zelto::coefficients {

using widgets::Grid;

namespace {

const QString Section = u"Variabili"_s;
const QString WidthKey = u"Colonna"_s;
constexpr int LeastWidth = 50; ///< of a column in the settings, in twips

std::vector<widgets::GridColumn> groupColumns()
{
    return {{.header = u"Valore"_s,
             .alignment = Qt::AlignRight | Qt::AlignVCenter,
             .holds = widgets::FieldTag::Holds::Figures,
             .maxLength = 10,
             .width = 1500,
             .remark = calc::osservaCifra},
            {.header = u"Variabile"_s, .maxLength = 10, .width = 1800},
            {.header = u"Descrizione"_s, .maxLength = 30, .width = 5000}};
}

} // namespace

Variabili::Variabili(store::Database& lavoro, const QStringList& descriptions,
                     widgets::Dialogs& dialogs, store::Settings& settings, QWidget* parent)
    : EditDialog(Section, u"Dettaglio variabili"_s, dialogs, settings, parent), m_lavoro(lavoro),
      m_descriptions(descriptions), m_loaded(loadGroups(lavoro)), m_groups(m_loaded),
      m_tabs(new QTabBar), m_text1(new QPlainTextEdit)
{
    resize(680, 520);
    buildGrid();
    setContents(buildContents());
    showGroup(m_group);
    widgets::restoreColumnWidths(*m_lavori, settings, Section, WidthKey);
    m_lavori->setFocus();
}

void Variabili::buildGrid()
{
    m_lavori = new Grid(u"n."_s, groupColumns(), Grid::AtEnd::AppendsRow);
    m_lavori->setObjectName(u"Lavori"_s);
    m_lavori->setAccessibleName(u"Valori del gruppo"_s);
    connect(m_lavori, &Grid::editorOpened, this, [this](bool byKey) {
        if (byKey)
            markChanged();
    });
    connect(m_lavori, &Grid::cellsChanged, this, &Variabili::markChanged);
    connect(m_lavori, &Grid::rowAppended, this, &Variabili::remarkLength);
    connect(m_lavori, &Grid::pasteRefused, this,
            [this](const QString& why) { dialogs().showMessage(why); });
}

QWidget* Variabili::buildContents()
{
    m_tabs->setObjectName(u"TabStrip1"_s);
    m_tabs->setAccessibleName(u"Gruppi di coefficienti"_s);
    m_tabs->setExpanding(false);
    m_tabs->setUsesScrollButtons(true);
    for (int group = 1; group < store::Groups; ++group)
        m_tabs->addTab(store::GroupNames.at(static_cast<std::size_t>(group)).toString());
    connect(m_tabs, &QTabBar::currentChanged, this, [this](int tab) { switchTo(tab + 1); });
    widgets::addTabKeys(*this, *m_tabs);

    m_text1->setObjectName(u"Text1"_s);
    m_text1->setAccessibleName(u"Descrizione del gruppo"_s);
    m_text1->setReadOnly(true);
    m_text1->setTabChangesFocus(true);
    m_text1->setFixedHeight(m_text1->fontMetrics().lineSpacing() * 3 + 14);

    auto* contents = new QWidget;
    auto* layout = new QVBoxLayout(contents);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(m_tabs);
    layout->addWidget(m_text1);
    layout->addWidget(m_lavori, 1);
    return contents;
}

void Variabili::switchTo(int group)
{
    keepGroup();
    showGroup(group);
}

void Variabili::showGroup(int group)
{
    const QString& text = m_groups.at(static_cast<std::size_t>(group));
    const int rows = text::rowCount(text);
    text::CellTable table(rows + 1, m_lavori->cells().columnCount() + 1);
    const text::CellRange range{.lastRow = rows, .lastColumn = table.columns() - 1};
    text::TextToGrid(text, table, range);
    m_lavori->cells().setRows(table, range);
    m_lavori->setCurrentCell(0, 0);
    m_text1->setPlainText(m_descriptions.value(group));
    m_group = group;
    remarkLength();
}

void Variabili::keepGroup()
{
    m_lavori->commitEditor();
    m_groups.at(static_cast<std::size_t>(m_group)) = m_lavori->cells().tableText();
}

void Variabili::remarkLength()
{
    showRemark(m_lavori->cells().rowCount() > store::MostGroupRows
                   ? u"Di un gruppo si usano solo le prime %1 righe."_s.arg(store::MostGroupRows)
                   : QString());
}

bool Variabili::finishTyping()
{
    m_lavori->commitEditor();
    return true;
}

void Variabili::store()
{
    GroupTexts groups = m_groups;
    groups.at(static_cast<std::size_t>(m_group)) = m_lavori->cells().tableText();
    saveGroups(m_lavoro, groups, m_loaded);
    m_groups = groups;
    m_loaded = groups;
}

void Variabili::saveSettings()
{
    widgets::saveColumnWidths(*m_lavori, settings(), Section, WidthKey, LeastWidth);
}

} // namespace zelto::coefficients

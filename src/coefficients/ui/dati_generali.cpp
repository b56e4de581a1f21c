// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/ui/dati_generali.h"

#include "calc/figure_remarks.h"
#include "store/database.h"
#include "store/schema.h"
#include "store/settings.h"
#include "text/table_text.h"
#include "widgets/column_widths.h"
#include "widgets/dialogs.h"
#include "widgets/grid.h"
#include "widgets/keys.h"
#include "widgets/typed_line.h"
#include "widgets/typed_text.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QTabBar>
#include <QTabWidget>

#include <algorithm>

namespace zelto::coefficients {

using widgets::Grid;
using widgets::TypedLine;
using widgets::TypedText;

namespace {

const QString Section = u"DatiGenerali"_s;
const QString WidthKey = u"colonna"_s;
constexpr int LeastWidth = 50; ///< of a column in the settings, in twips
constexpr int CodeRows = 99;
constexpr int CodeColumn = 0;

int longest(QStringView field)
{
    return store::longestText(store::TabellaDatiGenerali, field);
}

/// A unit stores one character of a staircase's code, so that longer ones cannot be chosen for it.
QString remarkOfCode(const QString& code)
{
    return code.size() > store::longestText(store::TabellaUnita, u"Codice scala")
               ? u"Il codice «%1» ha più di un carattere e non potrà "
                 u"essere scelto per un'unità."_s.arg(code)
               : QString();
}

std::vector<widgets::GridColumn> codeColumns()
{
    return {{.header = u"Cod."_s, .maxLength = 4, .width = 900, .remark = remarkOfCode},
            {.header = u"Descrizione"_s, .maxLength = 100, .width = 7400},
            {.header = u"%"_s,
             .alignment = Qt::AlignRight | Qt::AlignVCenter,
             .tag = u"DOL"_s,
             .maxLength = 10,
             .width = 1200,
             .remark = calc::osservaPercentuale}};
}

QLabel* labelOf(const QString& text, QWidget* buddy)
{
    auto* label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

} // namespace

DatiGenerali::DatiGenerali(store::Database& lavoro, widgets::Dialogs& dialogs,
                           store::Settings& settings, QWidget* parent)
    : EditDialog(Section, u"Dati generali"_s, dialogs, settings, parent), m_lavoro(lavoro),
      m_loaded(loadGeneralData(lavoro)), m_tabs(new QTabWidget),
      m_lavori(new Grid(u"n."_s, codeColumns(), Grid::AtEnd::AppendsRow))
{
    resize(760, 620);
    m_tabs->setObjectName(u"TabStrip1"_s);
    m_tabs->setAccessibleName(u"Parti dei dati generali"_s);
    m_tabs->addTab(buildGenerale(), u"Generale"_s);
    m_tabs->addTab(buildTabelle(), u"Tabelle"_s);
    m_tabs->addTab(buildScale(), u"Scale"_s);
    widgets::addTabKeys(*this, *m_tabs->tabBar());
    setContents(m_tabs);
    showTexts();
    connectGrid();
    m_dati.front().line->setFocus();
}

TypedLine* DatiGenerali::addLine(int text, const QString& tag, int maxLength, const QString& name)
{
    auto* line = new TypedLine(tag, maxLength);
    line->setObjectName(u"Dati%1"_s.arg(text));
    line->setAccessibleName(name);
    line->setMinimumWidth(line->fontMetrics().averageCharWidth() * (maxLength + 4));
    line->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    connect(line, &TypedLine::textEdited, this, &DatiGenerali::markChanged);
    connect(line, &TypedLine::changed, this, &DatiGenerali::markChanged);
    m_dati.push_back({.text = text, .line = line});
    return line;
}

TypedText* DatiGenerali::addText(int text, int maxLength, const QString& name)
{
    auto* lines = new TypedText(maxLength);
    lines->setObjectName(u"Dati%1"_s.arg(text));
    lines->setAccessibleName(name);
    connect(lines, &TypedText::edited, this, &DatiGenerali::markChanged);
    m_dati.push_back({.text = text, .lines = lines});
    return lines;
}

QWidget* DatiGenerali::buildGenerale()
{
    auto* page = new QWidget;
    auto* layout = new QGridLayout(page);
    const QString multiline = u"MOL"_s;
    TypedLine* first =
        addLine(TextDescrizione, multiline, longest(u"Descrizione"), u"Descrizione, prima riga"_s);
    layout->addWidget(labelOf(u" Descrizione"_s, first), 0, 0);
    layout->addWidget(first, 0, 1);
    layout->addWidget(addLine(TextDescrizionee, multiline, longest(u"Descrizionee"),
                              u"Descrizione, seconda riga"_s),
                      1, 1);

    TypedText* note = addText(TextNote, 400, u"Note"_s);
    layout->addWidget(labelOf(u" Note"_s, note), 2, 0, Qt::AlignTop);
    layout->addWidget(note, 2, 1);

    m_data = addLine(TextData, u"TOLD+"_s, 10, u"Data"_s);
    m_data->setPlaceholderText(u"gg/mm/aaaa"_s);
    connect(m_data, &TypedLine::held, this, &DatiGenerali::remarkDate);
    connect(m_data, &TypedLine::changed, this, &DatiGenerali::remarkCodes);
    layout->addWidget(labelOf(u" Data"_s, m_data), 3, 0);
    layout->addWidget(m_data, 3, 1);

    TypedText* relazione = addText(TextRelazione, 0, u"Relazione"_s);
    layout->addWidget(labelOf(u" Relazione"_s, relazione), 4, 0, Qt::AlignTop);
    layout->addWidget(relazione, 4, 1);
    layout->setRowStretch(2, 1);
    layout->setRowStretch(4, 3);
    return page;
}

QWidget* DatiGenerali::buildTabelle()
{
    auto* page = new QWidget;
    auto* layout = new QGridLayout(page);
    for (int table = 1; table <= store::SpecialTables; ++table) {
        const QString name = u"Tabella %1"_s.arg(table);
        TypedLine* line = addLine(TextFirstTable + table - 1, u"AOL"_s, longest(name), name);
        layout->addWidget(labelOf(u' ' + name, line), table - 1, 0);
        layout->addWidget(line, table - 1, 1);
    }
    layout->setRowStretch(store::SpecialTables, 1);
    layout->setColumnStretch(2, 1);
    return page;
}

QWidget* DatiGenerali::buildScale()
{
    m_lavori->setObjectName(u"Lavori"_s);
    m_lavori->setAccessibleName(u"Codici delle scale"_s);
    auto* page = new QWidget;
    auto* layout = new QGridLayout(page);
    layout->addWidget(m_lavori);
    return page;
}

void DatiGenerali::connectGrid()
{
    connect(m_lavori, &Grid::editorOpened, this, [this](bool byKey) {
        if (byKey)
            markChanged();
    });
    connect(m_lavori, &Grid::cellsChanged, this, [this] {
        markChanged();
        remarkCodes();
    });
    connect(m_lavori, &Grid::pasteRefused, this,
            [this](const QString& why) { dialogs().showMessage(why); });
}

void DatiGenerali::showTexts()
{
    for (const Input& input : m_dati) {
        const QString& text = m_loaded.at(static_cast<std::size_t>(input.text));
        if (input.line != nullptr)
            input.line->setText(text);
        else
            input.lines->setStoredText(text);
    }
    const QString& codes = m_loaded.at(TextTabellaCodici);
    // More rows than the usual ones are shown as well: storing what is shown must not lose them.
    const int rows = std::max(CodeRows, text::rowCount(codes));
    text::CellTable table(rows + 1, m_lavori->cells().columnCount() + 1);
    const text::CellRange range{.lastRow = rows, .lastColumn = table.columns() - 1};
    text::TextToGrid(codes, table, range);
    m_lavori->cells().setRows(table, range);
    m_lavori->setCurrentCell(0, 0);
    widgets::restoreColumnWidths(*m_lavori, settings(), Section, WidthKey);
    remarkCodes();
}

GeneralTexts DatiGenerali::shownTexts() const
{
    GeneralTexts texts;
    for (const Input& input : m_dati)
        texts.at(static_cast<std::size_t>(input.text)) =
            input.line != nullptr ? input.line->text() : input.lines->storedText();
    texts.at(TextTabellaCodici) = m_lavori->cells().tableText();
    return texts;
}

void DatiGenerali::remarkDate()
{
    showRemark(u"Data: «%1» non è una data del tipo gg/mm/aaaa."_s.arg(m_data->text()));
}

/// The first one that is odd.
void DatiGenerali::remarkCodes()
{
    const widgets::GridModel& cells = m_lavori->cells();
    for (int row = 0; row < cells.rowCount(); ++row)
        if (const QString remark = remarkOfCode(cells.text(row, CodeColumn)); !remark.isEmpty()) {
            showRemark(u"Riga %1. %2"_s.arg(QString::number(row + 1), remark));
            return;
        }
    showRemark({});
}

bool DatiGenerali::finishTyping()
{
    m_lavori->commitEditor();
    if (m_data->ValidateField())
        return true;
    QApplication::beep();
    m_tabs->setCurrentWidget(m_data->parentWidget());
    m_data->setFocus();
    remarkDate();
    return false;
}

void DatiGenerali::store()
{
    const GeneralTexts texts = shownTexts();
    saveGeneralData(m_lavoro, texts, m_loaded);
    m_loaded = loadGeneralData(m_lavoro);
}

void DatiGenerali::saveSettings()
{
    widgets::saveColumnWidths(*m_lavori, settings(), Section, WidthKey, LeastWidth);
}

} // namespace zelto::coefficients

// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/ui/dati_generali.h"

#include "calc/figure_remarks.h"
#include "store/database.h"
#include "store/main_window_services.h"
#include "store/settings.h"
#include "text/table_text.h"
#include "widgets/column_widths.h"
#include "widgets/grid.h"
#include "widgets/tab_keys.h"
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

const QString Section = QStringLiteral("DatiGenerali");
const QString WidthKey = QStringLiteral("colonna");
constexpr int LeastWidth = 50; ///< of a column in the settings, in twips
constexpr int CodeRows = 99;
constexpr int CodeColumn = 0;

/// A unit stores one character of a staircase's code, so that longer ones cannot be chosen for it.
QString remarkOfCode(const QString& code)
{
    return code.size() > 1 ? QStringLiteral("Il codice «%1» ha più di un carattere e non potrà "
                                            "essere scelto per un'unità.")
                                 .arg(code)
                           : QString();
}

std::vector<widgets::GridColumn> codeColumns()
{
    return {
        {.header = QStringLiteral("Cod."), .maxLength = 4, .width = 900, .remark = remarkOfCode},
        {.header = QStringLiteral("Descrizione"), .maxLength = 100, .width = 7400},
        {.header = QStringLiteral("%"),
         .alignment = Qt::AlignRight | Qt::AlignVCenter,
         .tag = QStringLiteral("DOL"),
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

DatiGenerali::DatiGenerali(store::Database& lavoro, store::MainWindowServices& services,
                           store::Settings& settings, QWidget* parent)
    : EditDialog(Section, QStringLiteral("Dati generali"), services, settings, parent),
      m_lavoro(lavoro), m_loaded(loadGeneralData(lavoro)), m_tabs(new QTabWidget),
      m_lavori(new Grid(QStringLiteral("n."), codeColumns(), Grid::AtEnd::AppendsRow))
{
    resize(760, 620);
    m_tabs->setObjectName(QStringLiteral("TabStrip1"));
    m_tabs->setAccessibleName(QStringLiteral("Parti dei dati generali"));
    m_tabs->addTab(buildGenerale(), QStringLiteral("Generale"));
    m_tabs->addTab(buildTabelle(), QStringLiteral("Tabelle"));
    m_tabs->addTab(buildScale(), QStringLiteral("Scale"));
    widgets::addTabKeys(*this, *m_tabs->tabBar());
    setContents(m_tabs);
    showTexts();
    connectGrid();
    m_dati.front().line->setFocus();
}

TypedLine* DatiGenerali::addLine(int text, const QString& tag, int maxLength, const QString& name)
{
    auto* line = new TypedLine(tag, maxLength);
    line->setObjectName(QStringLiteral("Dati%1").arg(text));
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
    lines->setObjectName(QStringLiteral("Dati%1").arg(text));
    lines->setAccessibleName(name);
    connect(lines, &TypedText::edited, this, &DatiGenerali::markChanged);
    m_dati.push_back({.text = text, .lines = lines});
    return lines;
}

QWidget* DatiGenerali::buildGenerale()
{
    auto* page = new QWidget;
    auto* layout = new QGridLayout(page);
    const QString multiline = QStringLiteral("MOL");
    TypedLine* first =
        addLine(TextDescrizione, multiline, 30, QStringLiteral("Descrizione, prima riga"));
    layout->addWidget(labelOf(QStringLiteral(" Descrizione"), first), 0, 0);
    layout->addWidget(first, 0, 1);
    layout->addWidget(
        addLine(TextDescrizionee, multiline, 30, QStringLiteral("Descrizione, seconda riga")), 1,
        1);

    TypedText* note = addText(TextNote, 400, QStringLiteral("Note"));
    layout->addWidget(labelOf(QStringLiteral(" Note"), note), 2, 0, Qt::AlignTop);
    layout->addWidget(note, 2, 1);

    m_data = addLine(TextData, QStringLiteral("TOLD+"), 10, QStringLiteral("Data"));
    m_data->setPlaceholderText(QStringLiteral("gg/mm/aaaa"));
    connect(m_data, &TypedLine::held, this, &DatiGenerali::remarkDate);
    connect(m_data, &TypedLine::changed, this, &DatiGenerali::remarkCodes);
    layout->addWidget(labelOf(QStringLiteral(" Data"), m_data), 3, 0);
    layout->addWidget(m_data, 3, 1);

    TypedText* relazione = addText(TextRelazione, 0, QStringLiteral("Relazione"));
    layout->addWidget(labelOf(QStringLiteral(" Relazione"), relazione), 4, 0, Qt::AlignTop);
    layout->addWidget(relazione, 4, 1);
    layout->setRowStretch(2, 1);
    layout->setRowStretch(4, 3);
    return page;
}

QWidget* DatiGenerali::buildTabelle()
{
    auto* page = new QWidget;
    auto* layout = new QGridLayout(page);
    for (int table = 1; table <= NumTables; ++table) {
        const QString name = QStringLiteral("Tabella %1").arg(table);
        TypedLine* line = addLine(TextFirstTable + table - 1, QStringLiteral("AOL"), 50, name);
        layout->addWidget(labelOf(u' ' + name, line), table - 1, 0);
        layout->addWidget(line, table - 1, 1);
    }
    layout->setRowStretch(NumTables, 1);
    layout->setColumnStretch(2, 1);
    return page;
}

QWidget* DatiGenerali::buildScale()
{
    m_lavori->setObjectName(QStringLiteral("Lavori"));
    m_lavori->setAccessibleName(QStringLiteral("Codici delle scale"));
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
            [this](const QString& why) { services().showMessage(why); });
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
    showRemark(
        QStringLiteral("Data: «%1» non è una data del tipo gg/mm/aaaa.").arg(m_data->text()));
}

/// The first one that is odd.
void DatiGenerali::remarkCodes()
{
    const widgets::GridModel& cells = m_lavori->cells();
    for (int row = 0; row < cells.rowCount(); ++row)
        if (const QString remark = remarkOfCode(cells.text(row, CodeColumn)); !remark.isEmpty()) {
            showRemark(QStringLiteral("Riga %1. %2").arg(QString::number(row + 1), remark));
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

// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/ui/dati_generali.h"

#include "calc/figure_remarks.h"
#include "store/schema.h"
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

using widgets::FieldKind;
using widgets::TypedLine;
using widgets::TypedText;

namespace {

constexpr int CodeRows = 99;
constexpr int CodeColumn = 0;

/// A field of general data as it stands on its page, from top to bottom.
struct GeneralField
{
    QString field;      ///< as the schema names it
    QString label = {}; ///< beside the input; none where it goes on with the one above
    QString name = {};  ///< for assistive technology, where the label does not say it
    QString page = u"Generale"_s;
    FieldKind kind = FieldKind::Words;
    int share = 0;   ///< of the page's height; an input with one has several lines
    int longest = 0; ///< in characters, where the schema sets no limit
};

std::vector<GeneralField> generalFields()
{
    std::vector<GeneralField> fields{
        {.field = u"Descrizione"_s,
         .label = u"Descrizione"_s,
         .name = u"Descrizione, prima riga"_s,
         .kind = FieldKind::RunningText},
        {.field = u"Descrizionee"_s,
         .name = u"Descrizione, seconda riga"_s,
         .kind = FieldKind::RunningText},
        {.field = u"Note"_s, .label = u"Note"_s, .share = 1, .longest = 400},
        {.field = u"Data"_s, .label = u"Data"_s, .kind = FieldKind::Date, .longest = 10},
        {.field = u"Relazione"_s, .label = u"Relazione"_s, .share = 3}};
    for (int table = 1; table <= store::SpecialTables; ++table) {
        const QString name = store::campoTabella(table);
        fields.push_back({.field = name, .label = name, .page = u"Tabelle"_s});
    }
    return fields;
}

int longestText(const GeneralField& field)
{
    const int stored = store::longestText(store::TabellaDatiGenerali, field.field);
    return stored > 0 ? stored : field.longest;
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
             .kind = FieldKind::DecimalNumber,
             .maxLength = 10,
             .width = 1200,
             .remark = calc::osservaPercentuale}};
}

} // namespace

DatiGenerali::DatiGenerali(store::Database& lavoro, widgets::Dialogs& dialogs,
                           store::Settings& settings, QWidget* parent)
    : EditDialog({u"DatiGenerali"_s, u"Dati generali"_s, codeColumns(), u"colonna"_s}, dialogs,
                 settings, parent),
      m_lavoro(lavoro), m_loaded(loadTexts(lavoro, store::TabellaDatiGenerali)),
      m_tabs(new QTabWidget)
{
    resize(760, 620);
    grid().setAccessibleName(u"Codici delle scale"_s);
    auto* codes = new QWidget;
    (new QGridLayout(codes))->addWidget(buildTable());
    m_tabs->setObjectName(u"TabStrip1"_s);
    m_tabs->setAccessibleName(u"Parti dei dati generali"_s);
    for (const QString& page : {u"Generale"_s, u"Tabelle"_s})
        m_tabs->addTab(buildPage(page), page);
    m_tabs->addTab(codes, u"Scale"_s);
    widgets::addTabKeys(*this, *m_tabs->tabBar());
    setContents(m_tabs);
    showTexts();
    connect(&grid(), &widgets::Grid::cellsChanged, this, &DatiGenerali::remarkCodes);
    m_inputs.front().line->setFocus();
}

QWidget* DatiGenerali::buildPage(const QString& page)
{
    auto* widget = new QWidget;
    auto* layout = new QGridLayout(widget);
    int row = 0;
    int shares = 0;
    for (int place = 0; const GeneralField& field : generalFields()) {
        const int number = place++;
        if (field.page != page)
            continue;
        QWidget* input = field.share > 0 ? addText(field.field, longestText(field))
                                         : addLine(field.field, field.kind, longestText(field));
        input->setObjectName(u"Dati%1"_s.arg(number));
        input->setAccessibleName(field.name.isEmpty() ? field.label : field.name);
        if (!field.label.isEmpty()) {
            auto* label = new QLabel(u' ' + field.label);
            label->setBuddy(input);
            layout->addWidget(label, row, 0, field.share > 0 ? Qt::AlignTop : Qt::Alignment());
        }
        layout->addWidget(input, row, 1);
        layout->setRowStretch(row++, field.share);
        shares += field.share;
    }
    if (shares == 0) {
        layout->setRowStretch(row, 1);
        layout->setColumnStretch(2, 1);
    }
    return widget;
}

QWidget* DatiGenerali::addLine(const QString& field, FieldKind kind, int longest)
{
    auto* line = new TypedLine(kind, longest);
    line->setMinimumWidth(line->fontMetrics().averageCharWidth() * (longest + 4));
    line->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    if (kind == FieldKind::Date)
        line->setPlaceholderText(u"gg/mm/aaaa"_s);
    connect(line, &TypedLine::textEdited, this, &DatiGenerali::markChanged);
    connect(line, &TypedLine::held, this, [this, line] { remarkDate(*line); });
    connect(line, &TypedLine::changed, this, [this] {
        markChanged();
        remarkCodes();
    });
    m_inputs.push_back({.field = field, .line = line});
    return line;
}

QWidget* DatiGenerali::addText(const QString& field, int longest)
{
    auto* lines = new TypedText(longest);
    connect(lines, &TypedText::edited, this, &DatiGenerali::markChanged);
    m_inputs.push_back({.field = field, .lines = lines});
    return lines;
}

void DatiGenerali::goTo(const calc::Posto& posto)
{
    if (posto.scheda == calc::Scheda::Scale) {
        m_tabs->setCurrentIndex(m_tabs->count() - 1);
        grid().setCurrentCell(std::clamp(posto.riga, 1, grid().cells().rowCount()) - 1,
                              posto.campo);
        grid().setFocus();
    } else if (posto.scheda == calc::Scheda::Tabelle) {
        goTo(store::campoTabella(posto.riga));
    } else {
        const auto& fields = store::jobTable(store::TabellaDatiGenerali).fields;
        goTo(fields.at(static_cast<std::size_t>(posto.campo)).name);
    }
}

void DatiGenerali::goTo(const QString& field)
{
    const auto input = std::ranges::find(m_inputs, field, &Input::field);
    if (input == m_inputs.end())
        return;
    QWidget* widget = input->line != nullptr ? static_cast<QWidget*>(input->line) : input->lines;
    m_tabs->setCurrentWidget(widget->parentWidget());
    widget->setFocus();
}

void DatiGenerali::showTexts()
{
    for (const Input& input : m_inputs) {
        const QString text = m_loaded.value(input.field);
        if (input.line != nullptr)
            input.line->setText(text);
        else
            input.lines->setStoredText(text);
    }
    // More rows than the usual ones are shown as well: storing what is shown must not lose them.
    grid().cells().setTableText(m_loaded.value(store::CampoCodici), CodeRows);
    grid().setCurrentCell(0, 0);
    remarkCodes();
}

/// Of a field whose text must not stay, which only a date's may not.
void DatiGenerali::remarkDate(const TypedLine& date)
{
    showRemark(u"Data: «%1» non è una data del tipo gg/mm/aaaa."_s.arg(date.text()));
}

/// The first one that is odd.
void DatiGenerali::remarkCodes()
{
    const widgets::GridModel& cells = grid().cells();
    for (int row = 0; row < cells.rowCount(); ++row)
        if (const QString remark = remarkOfCode(cells.text(row, CodeColumn)); !remark.isEmpty()) {
            showRemark(u"Riga %1. %2"_s.arg(QString::number(row + 1), remark));
            return;
        }
    showRemark({});
}

bool DatiGenerali::finishTyping()
{
    EditDialog::finishTyping();
    const auto wrong = std::ranges::find_if(m_inputs, [](const Input& input) {
        return input.line != nullptr && !input.line->ValidateField();
    });
    if (wrong == m_inputs.end())
        return true;
    QApplication::beep();
    m_tabs->setCurrentWidget(wrong->line->parentWidget());
    wrong->line->setFocus();
    remarkDate(*wrong->line);
    return false;
}

bool DatiGenerali::store()
{
    JobTexts texts{{store::CampoCodici, grid().cells().tableText()}};
    for (const Input& input : m_inputs)
        texts[input.field] = input.line != nullptr ? input.line->text() : input.lines->storedText();
    saveTexts(m_lavoro, store::TabellaDatiGenerali, texts, m_loaded);
    m_loaded = loadTexts(m_lavoro, store::TabellaDatiGenerali);
    return true;
}

} // namespace zelto::coefficients

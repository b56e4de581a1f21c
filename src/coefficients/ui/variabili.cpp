// SPDX-License-Identifier: GPL-3.0-or-later
#include "coefficients/ui/variabili.h"

#include "calc/figure_remarks.h"
#include "store/schema.h"
#include "text/table_text.h"
#include "widgets/dialogs.h"
#include "widgets/keys.h"

#include <QPlainTextEdit>
#include <QTabBar>
#include <QVBoxLayout>

#include <algorithm>
#include <numeric>
#include <utility>

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

Variabili::Variabili(store::Database& lavoro, QStringList descriptions, widgets::Dialogs& dialogs,
                     store::Settings& settings, QWidget* parent)
    : EditDialog({u"Variabili"_s, u"Dettaglio variabili"_s, groupColumns(), u"Colonna"_s}, dialogs,
                 settings, parent),
      m_lavoro(lavoro), m_descriptions(std::move(descriptions)),
      m_loaded(loadTexts(lavoro, store::TabellaVariabili)), m_groups(m_loaded), m_tabs(new QTabBar),
      m_description(new QPlainTextEdit)
{
    resize(680, 520);
    grid().setAccessibleName(u"Valori del gruppo"_s);
    connect(&grid(), &widgets::Grid::cellsChanged, this, &Variabili::remarkEnd);
    setContents(buildContents());
    countRows();
    showGroup(m_group);
    followRows();
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
    layout->addWidget(buildTable(), 1);
    return contents;
}

void Variabili::showGroup(int group)
{
    grid().cells().setTableText(m_groups.value(store::campoGruppo(group)));
    grid().setCurrentCell(0, 0);
    m_description->setPlainText(m_descriptions.value(group));
    m_group = group;
    remarkEnd();
}

void Variabili::keepGroup()
{
    grid().commitEditor();
    m_groups[store::campoGruppo(m_group)] = grid().cells().tableText();
}

/// Rows behind the end of the list are easily taken for a part of it.
void Variabili::remarkEnd()
{
    const widgets::GridModel& cells = grid().cells();
    int end = 0;
    int last = 0; // both count from 1
    for (int row = 0; row < cells.rowCount(); ++row)
        if (!cells.text(row, 0).isEmpty() || !cells.text(row, 1).isEmpty())
            last = row + 1;
    while (end < last && !cells.text(end, 0).isEmpty())
        ++end;
    if (end < last)
        showRemark(
            u"La riga %1 è senza valore: l'elenco finisce lì, e quelle che seguono non contano."_s
                .arg(end + 1));
    else if (cells.rowCount() > store::MostGroupRows)
        showRemark(u"Di un gruppo si usano solo le prime %1 righe."_s.arg(store::MostGroupRows));
    else
        showRemark({});
}

/// As the user inserts and deletes them.
void Variabili::followRows()
{
    const auto rows = [this]() -> std::vector<int>& {
        return m_formerRows[static_cast<std::size_t>(m_group)];
    };
    const widgets::GridModel& cells = grid().cells();
    connect(&cells, &QAbstractItemModel::rowsInserted, this,
            [this, rows](const QModelIndex& /*parent*/, int first, int last) {
                rows().insert(rows().begin() + first, static_cast<std::size_t>(last - first) + 1,
                              0);
                remarkEnd();
            });
    connect(&cells, &QAbstractItemModel::rowsRemoved, this,
            [this, rows](const QModelIndex& /*parent*/, int first, int last) {
                rows().erase(rows().begin() + first, rows().begin() + last + 1);
                remarkEnd();
            });
}

/// All rows are as they are stored.
void Variabili::countRows()
{
    for (int group = 1; group < store::Groups; ++group) {
        std::vector<int>& rows = m_formerRows[static_cast<std::size_t>(group)];
        rows.resize(static_cast<std::size_t>(
            std::max(1, text::rowCount(m_groups.value(store::campoGruppo(group))))));
        std::iota(rows.begin(), rows.end(), 1);
    }
}

/// Whether the rooms are to follow; nothing when the user gives up. They cannot where they would
/// become another row's.
std::optional<bool> Variabili::askWhetherToFollow(const Renames& renames)
{
    const int rooms = roomsUsing(m_lavoro, renames);
    if (rooms == 0)
        return false;
    QStringList codes;
    for (const CodeRename& rename : renames)
        codes << u'[' + rename.before + u']';
    const QString use = (rooms == 1 ? u"1 vano usa %1"_s : u"%1 vani usano %2"_s.arg(rooms))
                            .arg(codes.join(u", "_s));
    const auto taken = std::ranges::find_if(renames, &CodeRename::isTaken);
    if (taken == renames.end()) {
        const std::optional<int> answer =
            dialogs().choose(use + u": rinominare?"_s, {u"&Sì"_s, u"&No"_s});
        return answer ? std::optional(*answer == 0) : std::nullopt;
    }
    const QString question =
        u"%1, e restano come sono, perché il codice [%2] è anche di un'altra "
        "riga: valgono 0 finché non si scelgono di nuovo."_s.arg(use, taken->after);
    return dialogs().choose(question, {u"&Memorizza"_s}) ? std::optional(false) : std::nullopt;
}

std::optional<Renames> Variabili::askForRenames()
{
    Renames made;
    for (int group = 1; group < store::Groups; ++group)
        for (const Renames& renames : renamedCodes(group, m_loaded.value(store::campoGruppo(group)),
                                                   m_groups.value(store::campoGruppo(group)),
                                                   m_formerRows[static_cast<std::size_t>(group)])) {
            const std::optional<bool> follow = askWhetherToFollow(renames);
            if (!follow)
                return std::nullopt;
            if (*follow)
                made.insert(made.end(), renames.begin(), renames.end());
        }
    return made;
}

void Variabili::goTo(const calc::Posto& posto)
{
    m_tabs->setCurrentIndex(posto.elenco - 1);
    grid().setCurrentCell(std::clamp(posto.riga, 1, grid().cells().rowCount()) - 1, posto.campo);
}

bool Variabili::store()
{
    keepGroup();
    const std::optional<Renames> renames = askForRenames();
    if (!renames)
        return false;
    RoomTexts texts;
    saveTexts(m_lavoro, store::TabellaVariabili, m_groups, m_loaded,
              [&] { texts = renameCodes(m_lavoro, *renames); });
    m_loaded = m_groups;
    countRows();
    emit roomsRenamed(texts);
    return true;
}

} // namespace zelto::coefficients

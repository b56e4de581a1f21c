// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/unit_list.h"

#include "widgets/keys.h"
#include "widgets/marks.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QScopedValueRollback>
#include <QSignalBlocker>
#include <QVBoxLayout>

#include <algorithm>

namespace zelto::registro {

using widgets::Grid;

namespace {

/// The entry that was chosen stays so, wherever it stands now.
void refill(QComboBox& list, const QStringList& entries)
{
    const QSignalBlocker quiet(&list);
    const QString chosen = list.currentText();
    list.clear();
    list.addItem(u" "_s);
    list.addItems(entries);
    list.setCurrentIndex(std::max(list.findText(chosen), 0));
}

/// The entry chosen, untrimmed as it was listed; empty for the blank first one.
QString chosen(const QComboBox& list)
{
    return list.currentIndex() > 0 && !list.currentText().trimmed().isEmpty() ? list.currentText()
                                                                              : QString();
}

} // namespace

UnitList::UnitList(RegisterModel& model, widgets::ContextMenu& menu)
    : RegisterGrid(model, menu,
                   {.table = Table::Units,
                    .toAdd = u"Aggiungi singola U.I."_s,
                    .one = u"U.I."_s,
                    .several = u"U.I."_s,
                    .add = &Register::AggiungiUI,
                    .remove = &Register::EliminaUI,
                    .duplicate = &Register::DuplicaUI,
                    .exchange = &Register::ScambiaUI,
                    .store = &Register::MemorizzaUI}),
      m_livello(addFilter(u"Livello"_s)), m_scala(addFilter(u"CodScala"_s)),
      m_search(new QLineEdit(this))
{
    grid().setObjectName(u"UI"_s);
    grid().setAccessibleName(u"Unità immobiliari"_s);
    grid().setMostRows(
        [&model] { return static_cast<int>(model.listed().size()) + model.freeUnits(); });
    picker().setObjectName(u"Combo2"_s);
    picker().setAccessibleName(u"Codici scala"_s);
    m_search->setObjectName(u"Cerca"_s);
    m_search->setClearButtonEnabled(true);
    m_search->setToolTip(u"Una parte del riferimento (Ctrl+F); F3 va alla seguente"_s);
    m_search->installEventFilter(this);
    widgets::keepRedoKey(*m_search);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(filterRow());
    layout->addWidget(&grid());

    connect(m_search, &QLineEdit::textEdited, this,
            [this] { search(std::max(grid().currentRow(), 0), 1); });
    // A click on the row that is current already goes to its unit as well.
    const auto goToRow = [this](const QModelIndex& cell) {
        if (!m_following && cell.isValid())
            emit unitChosen(numberIn(cell.row()));
    };
    connect(grid().selectionModel(), &QItemSelectionModel::currentRowChanged, this, goToRow);
    connect(&grid(), &Grid::clicked, this, goToRow);
    connect(this, &UnitList::added, this, &UnitList::unitChosen);
    connect(&model, &RegisterModel::reloaded, this, &UnitList::showLists);
    connect(&model, &RegisterModel::unitsListed, this, &UnitList::showUnits);
    connect(&model, &RegisterModel::unitShown, this, &UnitList::showCurrent);
}

QComboBox* UnitList::addFilter(const QString& name)
{
    auto* list = new QComboBox(this);
    list->setObjectName(name);
    list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    list->setMinimumContentsLength(8);
    connect(list, &QComboBox::currentIndexChanged, this, [this] { model().ElencoUI(filter()); });
    return list;
}

QLayout* UnitList::filterRow()
{
    auto* row = new QHBoxLayout;
    const std::array<std::pair<QString, QWidget*>, 3> fields{
        {{u" Livello"_s, m_livello}, {u" Scala"_s, m_scala}, {u" Cerca"_s, m_search}}};
    for (const auto& [text, field] : fields) {
        auto* label = new QLabel(text, this);
        label->setBuddy(field);
        row->addWidget(label);
        row->addWidget(field);
        row->addSpacing(fontMetrics().averageCharWidth() * 2);
    }
    row->setStretchFactor(m_search, 1);
    return row;
}

/// In filters and headers. What the filters chose may be gone.
void UnitList::showLists()
{
    const RegisterLists& lists = model().lists();
    refill(*m_scala, lists.scale);
    refill(*m_livello, lists.livelli);
    int at = 0;
    for (const Column& column : columnsOf(Table::Units)) {
        if (column.holds == Holds::Flag) {
            const QString& name = lists.tabelle.at(static_cast<std::size_t>(column.index));
            grid().setHint(at, name, name.isEmpty());
        }
        ++at;
    }
    if (filter() != model().filter())
        model().ElencoUI(filter());
}

void UnitList::showUnits()
{
    const QScopedValueRollback following(m_following, true);
    followModel();
    showCurrent();
    // Where a row was taken away, nothing may be selected any more.
    const QModelIndex current = grid().currentIndex();
    if (current.isValid() && !grid().selectionModel()->isSelected(current))
        grid().setCurrentCell(current.row(), current.column());
}

/// Where the current unit is not listed, no row is current. The empty row is, if there is no unit.
void UnitList::showCurrent()
{
    const QScopedValueRollback following(m_following, true);
    const int unit = model().current();
    const int row = unit == 0 && model().listed().empty() ? 0 : grid().cells().rowOf(unit);
    if (row < 0)
        grid().leaveCells();
    else if (row != grid().currentRow())
        grid().setCurrentCell(row, std::max(0, grid().currentColumn()));
}

/// The entries chosen in the filters.
UnitFilter UnitList::filter() const
{
    return {.scala = chosen(*m_scala), .livello = chosen(*m_livello)};
}

void UnitList::showUnit(int unit)
{
    if (grid().cells().rowOf(unit) >= 0)
        return;
    for (QComboBox* list : {m_livello, m_scala})
        list->setCurrentIndex(0);
}

void UnitList::beginSearch()
{
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

void UnitList::searchOn(bool forward)
{
    const int step = forward ? 1 : -1;
    search(grid().currentRow() + step, step);
}

/// From a row on, round the end of the list.
void UnitList::search(int from, int step)
{
    const int rows = static_cast<int>(model().listed().size());
    const QString wanted = m_search->text().trimmed();
    if (wanted.isEmpty())
        return;
    for (int tried = 0; tried < rows; ++tried) {
        const int row = ((from + tried * step) % rows + rows) % rows;
        const QString name =
            textOf(model().listed()[static_cast<std::size_t>(row)], UnitRiferimento);
        if (name.contains(wanted, Qt::CaseInsensitive)) {
            emit unitChosen(numberIn(row));
            return;
        }
    }
    widgets::refuse(*m_search);
    emit said(u"Nessuna unità dell'elenco ha «%1» nel riferimento."_s.arg(wanted));
}

/// From the search field, Enter goes on searching; Esc and Down go to the list.
bool UnitList::eventFilter(QObject* watched, QEvent* event)
{
    const int key =
        event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : Qt::Key_unknown;
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        searchOn(true);
    else if (key == Qt::Key_Escape || key == Qt::Key_Down)
        grid().setFocus();
    else
        return QWidget::eventFilter(watched, event);
    return true;
}

} // namespace zelto::registro

// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/unit_list.h"

#include "register/ui/register_columns.h"
#include "widgets/marks.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
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

widgets::GridRow rowFor(const UnitRow& unit)
{
    widgets::GridRow row{.number = QString::number(unit.number),
                         .cells = QStringList(unit.texts.begin(), unit.texts.end())};
    for (const QChar flag : unit.flags.left(NumTables))
        row.cells << QString(flag).trimmed();
    return row;
}

} // namespace

UnitList::UnitList(const RegisterGridContext& context, QWidget* parent)
    : RegisterGrid(context, {u"Aggiungi singola U.I."_s, u"U.I."_s, u"U.I."_s},
                   unitColumns(context.model.lists()), parent),
      m_livello(addFilter(u"Livello"_s)), m_scala(addFilter(u"CodScala"_s)),
      m_search(new QLineEdit(this))
{
    grid().setObjectName(u"UI"_s);
    grid().setAccessibleName(u"Unità immobiliari"_s);
    grid().setMostRows(
        [this] { return static_cast<int>(model().listed().size()) + model().freeUnits(); });
    picker().setObjectName(u"Combo2"_s);
    picker().setAccessibleName(u"Codici scala"_s);
    m_search->setObjectName(u"Cerca"_s);
    m_search->setClearButtonEnabled(true);
    m_search->setToolTip(u"Una parte del riferimento (Ctrl+F); F3 va alla seguente"_s);
    m_search->installEventFilter(this);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(filterRow());
    layout->addWidget(&grid());

    connect(m_search, &QLineEdit::textEdited, this,
            [this] { search(std::max(grid().currentRow(), 0), 1); });
    connect(&grid(), &Grid::cellRequested, this, &UnitList::openCell);
}

QComboBox* UnitList::addFilter(const QString& name)
{
    auto* list = new QComboBox(this);
    list->setObjectName(name);
    list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    list->setMinimumContentsLength(8);
    connect(list, &QComboBox::currentIndexChanged, this, &UnitList::filterChanged);
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

void UnitList::showLists()
{
    refill(*m_scala, model().lists().scale);
    refill(*m_livello, model().lists().livelli);
    for (int table = 0; table < NumTables; ++table) {
        const QString& name = model().lists().tabelle.at(static_cast<std::size_t>(table));
        grid().setHint(ColumnFirstTable + table, name, name.isEmpty());
    }
}

void UnitList::showRows()
{
    std::vector<widgets::GridRow> rows;
    rows.reserve(model().listed().size());
    std::transform(model().listed().begin(), model().listed().end(), std::back_inserter(rows),
                   rowFor);
    grid().cells().followRows(std::move(rows));
    showCurrent();
    // Where a row was taken away, nothing may be selected any more.
    const QModelIndex current = grid().currentIndex();
    if (current.isValid() && !grid().selectionModel()->isSelected(current))
        grid().setCurrentCell(current.row(), current.column());
}

/// Where the current unit is not listed, no row is current. The empty row is, if there is no unit.
void UnitList::showCurrent()
{
    const int unit = model().unit().number;
    const int row = unit == 0 && model().listed().empty() ? 0 : grid().cells().rowOf(unit);
    if (row < 0)
        grid().leaveCells();
    else if (row != grid().currentRow())
        grid().setCurrentCell(row, std::max(0, grid().currentColumn()));
}

UnitFilter UnitList::filter() const
{
    return {.scala = chosen(*m_scala), .livello = chosen(*m_livello)};
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
        if (grid().cells().text(row, ColumnRiferimento).contains(wanted, Qt::CaseInsensitive)) {
            emit unitFound(numberIn(row));
            return;
        }
    }
    widgets::refuse(*m_search);
    context().say(u"Nessuna unità dell'elenco ha «%1» nel riferimento."_s.arg(wanted));
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

void UnitList::openCell(int row, int column, const QString& typed)
{
    if (numberIn(row) == 0)
        return;
    const QStringList& scale = model().lists().scale;
    if (column == ColumnScala)
        openPicker(row, column, scalaEntries(scale),
                   scalaEntry(scale, grid().cells().text(row, column)), typed);
    else
        turnFlag(row, column - ColumnFirstTable + 1);
}

/// A table without a name has no members.
void UnitList::turnFlag(int row, int table)
{
    if (model().lists().tabelle.at(static_cast<std::size_t>(table - 1)).isEmpty())
        return;
    const bool on = grid().cells().text(row, ColumnFirstTable + table - 1) != u"X";
    context().perform([unit = numberIn(row), table, on](Register& registro) {
        return registro.MemorizzaFlag(unit, table, on);
    });
}

void UnitList::choose(int row, int column, int entry)
{
    const QString code = model().lists().scale.value(entry - 1).trimmed();
    context().perform([edit = FieldEdit{numberIn(row), fieldOf(column), code}](Register& registro) {
        return registro.MemorizzaUI({edit});
    });
}

bool UnitList::concerns(const RecordChange& change) const
{
    return change.table == RecordChange::Table::Units;
}

int UnitList::numberOf(const RecordChange& change) const
{
    return change.unit();
}

int UnitList::fieldOf(int column) const
{
    return std::min(column + UnitRiferimento, static_cast<int>(UnitFlags));
}

/// Flags are one field.
QString UnitList::textOf(const widgets::CellChange& change, const QString& soFar) const
{
    if (change.column < ColumnFirstTable)
        return change.after;
    if (numberIn(change.row) == 0)
        return withFlag(soFar, change.column - ColumnFirstTable + 1, change.after == u"X");
    QString flags;
    for (int table = 1; table <= NumTables; ++table)
        flags = withFlag(flags, table,
                         grid().cells().text(change.row, ColumnFirstTable + table - 1) == u"X");
    return flags;
}

RegisterChange UnitList::store(Register& registro, const QList<FieldEdit>& edits,
                               const QList<NewTexts>& added)
{
    return registro.MemorizzaUI(edits, added);
}

RegisterChange UnitList::add(Register& registro)
{
    return registro.AggiungiUI();
}

RegisterChange UnitList::remove(Register& registro, const QList<int>& numbers)
{
    return registro.EliminaUI(numbers);
}

RegisterChange UnitList::duplicate(Register& registro, const QList<int>& numbers)
{
    return registro.DuplicaUI(numbers);
}

RegisterChange UnitList::exchange(Register& registro, const QList<std::pair<int, int>>& pairs)
{
    return registro.ScambiaUI(pairs);
}

} // namespace zelto::registro

// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/unit_list.h"

#include "register/register_model.h"
#include "widgets/grid.h"
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

using widgets::CellPicker;
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

UnitList::UnitList(RegisterModel& model, QWidget* parent)
    : QWidget(parent), m_model(model), m_livello(addFilter(u"Livello"_s)),
      m_scala(addFilter(u"CodScala"_s)), m_search(new QLineEdit(this)),
      m_grid(new Grid({}, unitColumns(model.lists()), Grid::AtEnd::Stays, this)),
      m_picker(new CellPicker(this))
{
    m_grid->setObjectName(u"UI"_s);
    m_grid->setAccessibleName(u"Unità immobiliari"_s);
    m_grid->setContextMenuPolicy(Qt::CustomContextMenu);
    m_grid->setMostRows(
        [this] { return static_cast<int>(m_model.listed().size()) + m_model.freeUnits(); });
    m_picker->setObjectName(u"Combo2"_s);
    m_picker->setAccessibleName(u"Codici scala"_s);
    m_search->setObjectName(u"Cerca"_s);
    m_search->setClearButtonEnabled(true);
    m_search->setToolTip(u"Una parte del riferimento (Ctrl+F); F3 va alla seguente"_s);
    m_search->installEventFilter(this);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(filterRow());
    layout->addWidget(m_grid);

    connect(m_search, &QLineEdit::textEdited, this,
            [this] { search(std::max(m_grid->currentRow(), 0), 1); });
    connect(m_grid, &Grid::cellRequested, this, &UnitList::openCell);
    connect(m_picker, &CellPicker::chosen, this, &UnitList::chooseScala);
    connect(m_picker, &CellPicker::dismissed, m_grid, [this] { m_grid->setFocus(); });
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
    refill(*m_scala, m_model.lists().scale);
    refill(*m_livello, m_model.lists().livelli);
    for (int table = 0; table < NumTables; ++table) {
        const QString& name = m_model.lists().tabelle.at(static_cast<std::size_t>(table));
        m_grid->setHint(ColumnFirstTable + table, name, name.isEmpty());
    }
}

void UnitList::showUnits()
{
    std::vector<widgets::GridRow> rows;
    rows.reserve(m_model.listed().size());
    std::transform(m_model.listed().begin(), m_model.listed().end(), std::back_inserter(rows),
                   rowFor);
    m_grid->cells().followRows(std::move(rows));
    showCurrent();
    // Where a row was taken away, nothing may be selected any more.
    const QModelIndex current = m_grid->currentIndex();
    if (current.isValid() && !m_grid->selectionModel()->isSelected(current))
        m_grid->setCurrentCell(current.row(), current.column());
}

/// Where the current unit is not listed, no row is current. The empty row is, if there is no unit.
void UnitList::showCurrent()
{
    const int unit = m_model.unit().number;
    const int row = unit == 0 && m_model.listed().empty() ? 0 : rowOf(unit);
    if (row < 0)
        m_grid->leaveCells();
    else if (row != m_grid->currentRow())
        m_grid->setCurrentCell(row, std::max(0, m_grid->currentColumn()));
}

UnitFilter UnitList::filter() const
{
    return {.scala = chosen(*m_scala), .livello = chosen(*m_livello)};
}

int UnitList::rowOf(int unit) const
{
    return m_grid->cells().rowOf(unit);
}

int UnitList::unitIn(int row) const
{
    return row < 0 || row >= m_grid->cells().rowCount() ? 0 : m_grid->cells().number(row).toInt();
}

void UnitList::beginSearch()
{
    m_search->setFocus(Qt::ShortcutFocusReason);
    m_search->selectAll();
}

void UnitList::searchOn(bool forward)
{
    const int step = forward ? 1 : -1;
    search(m_grid->currentRow() + step, step);
}

/// From a row on, round the end of the list.
void UnitList::search(int from, int step)
{
    const int rows = static_cast<int>(m_model.listed().size());
    const QString wanted = m_search->text().trimmed();
    if (wanted.isEmpty())
        return;
    for (int tried = 0; tried < rows; ++tried) {
        const int row = ((from + tried * step) % rows + rows) % rows;
        if (m_grid->cells().text(row, ColumnRiferimento).contains(wanted, Qt::CaseInsensitive)) {
            emit unitFound(unitIn(row));
            return;
        }
    }
    widgets::refuse(*m_search);
    emit nothingFound(wanted);
}

/// From the search field, Enter goes on searching; Esc and Down go to the list.
bool UnitList::eventFilter(QObject* watched, QEvent* event)
{
    const int key =
        event->type() == QEvent::KeyPress ? static_cast<QKeyEvent*>(event)->key() : Qt::Key_unknown;
    if (key == Qt::Key_Return || key == Qt::Key_Enter)
        searchOn(true);
    else if (key == Qt::Key_Escape || key == Qt::Key_Down)
        m_grid->setFocus();
    else
        return QWidget::eventFilter(watched, event);
    return true;
}

void UnitList::openCell(int row, int column, int keyCode)
{
    if (unitIn(row) == 0)
        return;
    if (column == ColumnScala)
        openScale(row, keyCode);
    else
        emit flagToggled(row, column - ColumnFirstTable + 1);
}

void UnitList::openScale(int row, int keyCode)
{
    m_picked = m_grid->cells().index(row, ColumnScala);
    const QRect inside = m_grid->visualRect(m_picked);
    const QRect place(m_grid->viewport()->mapTo(this, inside.topLeft()), inside.size());
    const QStringList& scale = m_model.lists().scale;
    m_picker->open(scalaEntries(scale), scalaEntry(scale, m_grid->cells().text(row, ColumnScala)),
                   place, keyCode);
}

void UnitList::chooseScala(int entry, CellPicker::Then then)
{
    m_grid->setFocus();
    if (!m_picked.isValid())
        return;
    emit scalaChosen(m_picked.row(), m_model.lists().scale.value(entry - 1).trimmed());
    if (then != CellPicker::Then::Stays)
        m_grid->step(then == CellPicker::Then::Next);
}

} // namespace zelto::registro

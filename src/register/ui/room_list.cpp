// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/room_list.h"

#include "register/ui/register_columns.h"

#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace zelto::registro {

using widgets::Grid;

RoomList::RoomList(const RegisterGridContext& context, QWidget* parent)
    : RegisterGrid(context, {u"Aggiungi vano"_s, u"vano"_s, u"vani"_s},
                   roomColumns(context.model.coefficients()), parent),
      m_title(new QLabel(this))
{
    m_title->setObjectName(u"TitoloVani"_s);
    m_title->setTextFormat(Qt::PlainText);
    grid().setObjectName(u"TabFlex"_s);
    grid().setAccessibleName(u"Vani"_s);
    grid().setMostRows([] { return calc::MaxVani; });
    picker().setObjectName(u"Coeff"_s);
    picker().setAccessibleName(u"Coefficienti"_s);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_title);
    layout->addWidget(&grid());
    connect(&grid(), &Grid::cellRequested, this, &RoomList::openEntries);
}

QString RoomList::title() const
{
    const UnitRow& unit = model().unit();
    if (unit.number == 0)
        return u"Nessuna unità"_s;
    const QString& name = unit.texts.at(UnitTextRiferimento);
    const QString& level = unit.texts.at(UnitTextLivello);
    return u"Vani di %1%2"_s.arg(name.trimmed().isEmpty() ? u"U.I. %1"_s.arg(unit.number) : name,
                                 level.trimmed().isEmpty() ? QString() : u", "_s + level);
}

void RoomList::showRows()
{
    std::vector<widgets::GridRow> rows;
    for (const RoomRow& room : model().rooms())
        rows.push_back({.number = QString::number(room.position),
                        .cells = QStringList(room.texts.begin(), room.texts.end())});
    m_title->setText(title());
    const bool another = std::exchange(m_shown, unit()) != m_shown;
    const int row = another ? 0 : grid().currentRow();
    const int column = another ? 0 : grid().currentColumn();
    grid().cells().followRows(std::move(rows));
    const int last = grid().cells().rowCount() - 1;
    // Where a row was taken away, nothing may be selected any more.
    if (another || !grid().currentIndex().isValid() ||
        !grid().selectionModel()->isSelected(grid().currentIndex()))
        grid().setCurrentCell(std::clamp(row, 0, last), std::max(column, 0));
}

const std::vector<CoefficientEntry>& RoomList::entriesOf(int column) const
{
    return model().lists().coefficienti.at(
        static_cast<std::size_t>(column - ColumnFirstCoefficient));
}

/// In the order of the list, the blank entry behind.
void RoomList::openEntries(int row, int column, const QString& typed)
{
    if (numberIn(row) == 0)
        return;
    const QString& text = grid().cells().text(row, column);
    std::vector<widgets::PickerEntry> entries;
    int current = -1;
    for (const CoefficientEntry& entry : entriesOf(column)) {
        if (current < 0 && entry.text().startsWith(text))
            current = static_cast<int>(entries.size());
        entries.push_back(
            {.code = entry.code, .value = entry.value, .description = entry.description});
    }
    if (entries.empty()) {
        context().say(
            u"L'elenco «%1» è vuoto: si compila nella finestra «Variabili» (Ctrl+2)."_s.arg(
                grid().cells().column(column).header));
        return;
    }
    entries.emplace_back();
    openPicker(row, column, entries, std::max(current, 0), typed);
}

void RoomList::choose(int row, int column, int entry)
{
    const auto& entries = entriesOf(column);
    const auto index = static_cast<std::size_t>(entry);
    const QString& before = grid().cells().text(row, column);
    const QString after =
        index < entries.size() ? chosenCoefficient(entries[index].text(), before) : QString();
    if (after != before)
        context().perform([&](Register& registro) {
            return store(registro, {{numberIn(row), fieldOf(column), after}}, {});
        });
}

bool RoomList::concerns(const RecordChange& change) const
{
    return change.table == RecordChange::Table::Rooms;
}

int RoomList::numberOf(const RecordChange& change) const
{
    return registro::numberOf(change.record(), RoomPosition);
}

int RoomList::fieldOf(int column) const
{
    return column + RoomAmbiente;
}

bool RoomList::canAdd() const
{
    return unit() > 0;
}

RegisterChange RoomList::store(Register& registro, const QList<FieldEdit>& edits,
                               const QList<NewTexts>& added)
{
    RegisterChange change = registro.MemorizzaVano(unit(), edits, added);
    if (change.missing)
        QApplication::beep();
    return change;
}

RegisterChange RoomList::add(Register& registro)
{
    return registro.AggiungiVano(unit());
}

RegisterChange RoomList::remove(Register& registro, const QList<int>& numbers)
{
    return registro.EliminaVano(unit(), numbers);
}

RegisterChange RoomList::duplicate(Register& registro, const QList<int>& numbers)
{
    return registro.DuplicaVano(unit(), numbers);
}

RegisterChange RoomList::exchange(Register& registro, const QList<std::pair<int, int>>& pairs)
{
    return registro.ScambiaVani(unit(), pairs);
}

} // namespace zelto::registro

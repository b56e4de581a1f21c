// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/room_list.h"

#include <QApplication>
#include <QLabel>
#include <QVBoxLayout>

#include <algorithm>

namespace zelto::registro {

RegisterGrid::Rows RoomList::roomsOf(RegisterModel& model)
{
    const auto ofUnit = [&model](auto change) {
        return [&model, change](Register& registro, const auto&... what) {
            return (registro.*change)(model.current(), what...);
        };
    };
    const auto store = ofUnit(&Register::MemorizzaVano);
    return {.table = Table::Rooms,
            .toAdd = u"Aggiungi vano"_s,
            .one = u"vano"_s,
            .several = u"vani"_s,
            .add = ofUnit(&Register::AggiungiVano),
            .remove = ofUnit(&Register::EliminaVano),
            .duplicate = ofUnit(&Register::DuplicaVano),
            .exchange = ofUnit(&Register::ScambiaVani),
            .store = [store](Register& registro, const auto& edits, const auto& added) {
                RegisterChange change = store(registro, edits, added);
                if (change.missing)
                    QApplication::beep();
                return change;
            }};
}

RoomList::RoomList(RegisterModel& model, widgets::ContextMenu& menu)
    : RegisterGrid(model, menu, roomsOf(model)), m_title(new QLabel(this))
{
    m_title->setObjectName(u"TitoloVani"_s);
    m_title->setTextFormat(Qt::PlainText);
    grid().setObjectName(u"TabFlex"_s);
    grid().setAccessibleName(u"Vani"_s);
    grid().setMostRows([] { return store::MostRooms; });
    picker().setObjectName(u"Coeff"_s);
    picker().setAccessibleName(u"Coefficienti"_s);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_title);
    layout->addWidget(&grid());
    connect(&model, &RegisterModel::unitShown, this, &RoomList::showRooms);
}

QString RoomList::title() const
{
    if (model().current() == 0)
        return u"Nessuna unità"_s;
    const QString name = textOf(model().unit(), UnitRiferimento);
    const QString level = textOf(model().unit(), UnitLivello);
    return u"Vani di %1%2"_s.arg(name.trimmed().isEmpty() ? u"U.I. %1"_s.arg(model().current())
                                                          : name,
                                 level.trimmed().isEmpty() ? QString() : u", "_s + level);
}

/// The rooms of another unit are shown from the first on.
void RoomList::showRooms()
{
    m_title->setText(title());
    const int unit = model().current();
    const bool another = std::exchange(m_shown, unit) != unit;
    const int row = another ? 0 : grid().currentRow();
    const int column = another ? 0 : grid().currentColumn();
    followModel();
    const int last = grid().cells().rowCount() - 1;
    // Where a row was taken away, nothing may be selected any more.
    if (another || !grid().currentIndex().isValid() ||
        !grid().selectionModel()->isSelected(grid().currentIndex()))
        grid().setCurrentCell(std::clamp(row, 0, last), std::max(column, 0));
}

} // namespace zelto::registro

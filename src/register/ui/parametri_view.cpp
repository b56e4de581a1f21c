// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the parameters screen that follows the model and goes where the user wants.
#include "register/ui/parametri.h"
#include "register/ui/room_list.h"
#include "register/ui/unit_detail.h"
#include "register/ui/unit_list.h"
#include "register/unit_figures.h"
#include "store/database_error.h"
#include "store/user_interface.h"
#include "widgets/grid.h"

#include <QEvent>
#include <QLabel>
#include <QScopedValueRollback>
#include <QStatusBar>
#include <QTabWidget>

#include <algorithm>

namespace zelto::registro {

using widgets::Grid;

// Showing what the model says

void Parametri::showUnit()
{
    showPlace();
    m_dettaglio->showUnit(m_model.unit());
    m_vani->showRooms();
    showFigures();
}

/// Where the user is, in tree and list.
void Parametri::showPlace()
{
    m_elenco->showCurrent();
    m_navig->select(m_model.unit().number);
}

/// The figures are a service: the screen works without them.
void Parametri::showFigures()
{
    if (!m_loaded)
        return;
    try {
        m_figures->setText(m_calculation->describe(m_model.unit().number));
    } catch (const store::DatabaseError& error) {
        m_figures->setText(error.description());
    }
}

void Parametri::refreshLists()
{
    reading([this] {
        m_model.reload();
        const UnitFilter filter = m_elenco->filter(); // what was chosen may be gone
        if (filter.scala != m_model.filter().scala || filter.livello != m_model.filter().livello)
            m_model.ElencoUI(filter);
    });
}

/// Back from another window, which may have changed the job.
bool Parametri::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate && !m_elenco->grid().isEditing() &&
        !m_vani->grid().isEditing())
        reading([this] {
            if (m_model.isStale())
                m_model.reload();
        });
    return QWidget::event(event);
}

void Parametri::say(const QString& text)
{
    constexpr int Shown = 8000; // milliseconds
    m_status->showMessage(text, Shown);
}

// Where the user goes

void Parametri::reading(const std::function<void()>& read)
{
    try {
        read();
    } catch (const store::DatabaseError& error) {
        m_context.user.ReportError(error);
    }
}

void Parametri::goToUnit(int unit)
{
    const bool there = unit == m_model.unit().number;
    if (unit > 0 && !there && finishTyping()) {
        m_status->clearMessage();
        reading([=, this] { m_model.DatiVani(unit); });
    }
    const QScopedValueRollback following(m_following, true);
    showPlace();
}

void Parametri::goToRoom(int unit, int position)
{
    goToUnit(unit);
    m_tabs->setCurrentIndex(Vani);
    if (const int row = gridOf(Vani).cells().rowOf(position); row >= 0)
        gridOf(Vani).setCurrentCell(row, 0);
    focusTab();
}

void Parametri::goToNeighbour(int places)
{
    if (const int unit = m_model.neighbour(m_model.unit().number, places); unit > 0)
        goToUnit(unit);
}

/// In the view that shows it, and that the user knows: "Dettaglio" for a unit that is not listed.
void Parametri::goTo(const Place& place)
{
    if (!place.gone)
        goToUnit(place.unit);
    const bool listed = m_elenco->rowOf(m_model.unit().number) >= 0;
    if (place.position > 0)
        m_tabs->setCurrentIndex(Vani);
    else if (tab() != Dettaglio)
        m_tabs->setCurrentIndex(listed ? Elenco : Dettaglio);
    if (tab() == Dettaglio) {
        m_dettaglio->goToField(place.field - UnitRiferimento);
        return;
    }
    Grid& grid = gridOf(tab());
    const int column = place.field - (tab() == Vani ? static_cast<int>(RoomAmbiente)
                                                    : static_cast<int>(UnitRiferimento));
    const int row = grid.cells().rowOf(tab() == Vani ? place.position : place.unit);
    if (row >= 0)
        grid.setCurrentCell(row, std::max(column, 0));
    focusTab();
}

widgets::Grid& Parametri::gridOf(Tab tab) const
{
    return tab == Vani ? m_vani->grid() : m_elenco->grid();
}

Parametri::Tab Parametri::tab() const
{
    return static_cast<Tab>(m_tabs->currentIndex());
}

void Parametri::focusTab()
{
    if (tab() != Dettaglio)
        gridOf(tab()).setFocus();
}

} // namespace zelto::registro

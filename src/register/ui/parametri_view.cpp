// SPDX-License-Identifier: GPL-3.0-or-later
// The part of the parameters screen that shows, goes and stores.
#include "register/ui/parametri.h"
#include "register/ui/room_list.h"
#include "register/ui/unit_detail.h"
#include "register/ui/unit_list.h"
#include "store/database_error.h"
#include "store/user_interface.h"

#include <QAction>
#include <QEvent>
#include <QLabel>
#include <QScopedValueRollback>
#include <QStatusBar>
#include <QTabWidget>

namespace zelto::registro {

// Showing what the model says

void Parametri::showUnit()
{
    showPlace();
    m_dettaglio->showUnit(m_model.unit());
    m_vani->showRows();
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
        m_figures->setText(m_calculation.describe(m_model.unit().number));
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
    m_vani->goTo(position, RoomAmbiente);
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
    const bool listed = m_elenco->grid().cells().rowOf(m_model.unit().number) >= 0;
    if (place.position > 0)
        m_tabs->setCurrentIndex(Vani);
    else if (tab() != Dettaglio)
        m_tabs->setCurrentIndex(listed ? Elenco : Dettaglio);
    if (tab() == Dettaglio)
        m_dettaglio->goToField(place.field - UnitRiferimento);
    else if (tab() == Vani)
        m_vani->goTo(place.position, place.field);
    else
        m_elenco->goTo(place.unit, place.field);
}

Parametri::Tab Parametri::tab() const
{
    return static_cast<Tab>(m_tabs->currentIndex());
}

// Storing what the user does

RegisterChange Parametri::perform(const Operation& operation)
{
    RegisterChange change;
    m_status->clearMessage();
    try {
        change = m_model.perform(operation);
    } catch (const store::DatabaseError& error) {
        m_context.user.ReportError(error);
        try {
            m_model.reload();
        } catch (const store::DatabaseError&) {
            // What went wrong has been said; the screen shows the last that could be read.
        }
    }
    updateHistory();
    if (change.missing)
        m_context.user.showMessage(
            u"Un altro programma ha cambiato o eliminato ciò che si voleva cambiare. Nulla è stato "
            "memorizzato: la finestra mostra ora quello che c'è, e si può ripetere."_s);
    return change;
}

/// Goes to what is changed, and says what it was.
void Parametri::replay(const QAction& button, RegisterChange (Register::*replayed)())
{
    if (!finishTyping())
        return;
    const QScopedValueRollback names(m_names, Navig::EmptyNames::Number);
    const RegisterChange change =
        perform([replayed](Register& registro) { return (registro.*replayed)(); });
    if (change.isEmpty())
        return;
    goTo(placeOf(change));
    say(u"%1: %2"_s.arg(button.text(), change.caption));
}

void Parametri::updateHistory()
{
    const auto show = [](QAction& action, const QString& caption) {
        action.setEnabled(!caption.isEmpty());
        action.setToolTip(caption.isEmpty() ? action.text()
                                            : u"%1: %2"_s.arg(action.text(), caption));
        action.setStatusTip(action.toolTip());
    };
    show(*m_undo, m_model.changes().undoCaption());
    show(*m_redo, m_model.changes().redoCaption());
}

} // namespace zelto::registro

// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/parametri.h"

#include "register/ui/navig.h"
#include "register/ui/register_status.h"
#include "register/ui/room_list.h"
#include "register/ui/unit_detail.h"
#include "register/ui/unit_list.h"
#include "store/settings.h"
#include "widgets/column_widths.h"
#include "widgets/dialogs.h"
#include "widgets/icons.h"
#include "widgets/keys.h"
#include "widgets/typed_line.h"

#include <QAction>
#include <QCloseEvent>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

namespace zelto::registro {

using widgets::addKey;
using widgets::Grid;

namespace {

const QString Section = u"Parametri"_s;
const QString UnitWidths = u"TabUI"_s;
const QString RoomWidths = u"TabFlex"_s;

} // namespace

Parametri::Parametri(const ParametriContext& context, QWidget* parent)
    : QWidget(parent), m_context(context), m_model(context.lavoro, context.dialogs),
      m_toolbar(new QToolBar(this)), m_navig(new Navig(m_model)), m_tabs(new QTabWidget),
      m_elenco(new UnitList(m_model, context.menu)), m_dettaglio(new UnitDetail(m_model)),
      m_vani(new RoomList(m_model, context.menu)),
      m_status(new RegisterStatus(context.lavoro, m_model, context.sullaCarta))
{
    setObjectName(Section);
    setWindowTitle(u"Parametri per millesimi"_s);
    buildToolbar();
    buildPanels();
    addKeys();
    connect(&m_model, &RegisterModel::performed, this, &Parametri::updateHistory);
    followUser();
    m_model.load();
    m_elenco->grid().setFocus();
    // The window comes first: loading a big job for the figures takes longer than all the rest. A
    // timer of its own waits until the window is painted, QTimer::singleShot would not.
    auto* idle = new QTimer(this);
    idle->setSingleShot(true);
    connect(idle, &QTimer::timeout, m_status, &RegisterStatus::start);
    idle->start();
}

/// A screen that goes without having been closed stores nothing any more, though its editor, hidden
/// with it, has something to say.
Parametri::~Parametri()
{
    for (const Grid* grid : findChildren<Grid*>())
        disconnect(grid, &Grid::cellsChanged, nullptr, nullptr);
}

// Building

QAction* Parametri::addButton(const QString& key, const QString& caption, const QString& hint)
{
    QAction* button = m_toolbar->addAction(widgets::icon(caption.toLower()), caption);
    button->setObjectName(key);
    button->setToolTip(hint);
    button->setStatusTip(hint);
    return button;
}

void Parametri::addScreen(const QString& key, const QString& caption, const QString& hint,
                          const QString& shortcut, void (Parametri::*request)())
{
    QAction* button = addButton(key, caption, u"%1 (%2)"_s.arg(hint, shortcut));
    button->setShortcut(QKeySequence(shortcut));
    connect(button, &QAction::triggered, this, [this, request] {
        if (finishTyping())
            emit(this->*request)();
    });
}

QAction* Parametri::addHistory(const QString& caption, const QList<QKeySequence>& keys,
                               RegisterChange (RegisterModel::*replayed)())
{
    QAction* button = addButton(caption, caption, {});
    button->setShortcuts(keys);
    button->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(button);
    connect(button, &QAction::triggered, this,
            [this, button, replayed] { replay(*button, replayed); });
    return button;
}

void Parametri::buildToolbar()
{
    m_toolbar->setObjectName(u"Toolbar1"_s);
    m_toolbar->setAccessibleName(u"Comandi dei parametri"_s);
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    connect(addButton(u"Calc"_s, u"Calcolatrice"_s, u"Calcolatrice"_s), &QAction::triggered, this,
            &Parametri::calculatorRequested);
    addScreen(u"Mill"_s, u"Millesimi"_s, u"Calcolo millesimi"_s, u"Ctrl+M"_s,
              &Parametri::millesimiRequested);
    addScreen(u"Rip"_s, u"Riparto"_s, u"Riparto importo"_s, u"Ctrl+R"_s,
              &Parametri::ripartoRequested);
    addScreen(u"Controllo"_s, u"Controllo"_s, u"Controllo del lavoro"_s, u"F7"_s,
              &Parametri::controlloRequested);
    m_toolbar->addSeparator();
    m_undo = addHistory(u"Annulla"_s, QKeySequence::keyBindings(QKeySequence::Undo),
                        &RegisterModel::undo);
    m_redo = addHistory(u"Ripeti"_s, {Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z},
                        &RegisterModel::redo);
    updateHistory();
}

const JobRemarks& Parametri::remarks() const
{
    return m_status->remarks();
}

QList<QAction*> Parametri::commands() const
{
    return m_toolbar->actions();
}

void Parametri::buildPanels()
{
    m_tabs->setObjectName(u"tbsOptions"_s);
    m_tabs->setAccessibleName(u"Parti del registro"_s);
    m_tabs->addTab(m_elenco, u"Elenco"_s);
    m_tabs->addTab(m_dettaglio, u"Dettaglio"_s);
    m_tabs->addTab(m_vani, u"Vani"_s);
    auto* splitter = new QSplitter(this);
    splitter->setObjectName(u"FR"_s);
    splitter->setChildrenCollapsible(false);
    splitter->addWidget(m_navig);
    splitter->addWidget(m_tabs);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({200, 800});
    widgets::restoreColumnWidths(m_elenco->grid(), m_context.settings, Section, UnitWidths);
    widgets::restoreColumnWidths(m_vani->grid(), m_context.settings, Section, RoomWidths);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_toolbar);
    layout->addWidget(splitter, 1);
    layout->addWidget(m_status);
}

void Parametri::addKeys()
{
    widgets::addTabKeys(*this, *m_tabs->tabBar());
    for (QWidget* panel : std::initializer_list<QWidget*>{m_dettaglio, m_vani}) {
        addKey(*panel, Qt::ALT | Qt::Key_Up, [this] { goToNeighbour(-1); });
        addKey(*panel, Qt::ALT | Qt::Key_Down, [this] { goToNeighbour(1); });
    }
    addKey(*this, QKeySequence::Find, [this] {
        m_tabs->setCurrentIndex(Elenco);
        m_elenco->beginSearch();
    });
    addKey(*this, Qt::Key_F3, [this] { m_elenco->searchOn(true); });
    addKey(*this, Qt::SHIFT | Qt::Key_F3, [this] { m_elenco->searchOn(false); });
}

void Parametri::followUser()
{
    connect(m_status, &RegisterStatus::controlloRequested, this, &Parametri::controlloRequested);
    connect(m_navig, &Navig::unitSelected, this, &Parametri::goToUnit);
    connect(m_navig, &Navig::roomSelected, this, &Parametri::goToRoom);
    connect(m_elenco, &UnitList::unitChosen, this, &Parametri::goToUnit);
    for (RegisterGrid* list : std::initializer_list<RegisterGrid*>{m_elenco, m_vani}) {
        connect(list, &RegisterGrid::said, m_status, &RegisterStatus::say);
        connect(&list->grid(), &Grid::pasteRefused, this,
                [this](const QString& why) { m_context.dialogs.showMessage(why); });
    }
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

/// Back from another window, which may have changed the job.
bool Parametri::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate && !m_elenco->grid().isEditing() &&
        !m_vani->grid().isEditing())
        m_model.reloadIfStale();
    return QWidget::event(event);
}

// Where the user goes

/// When the unit cannot be left or shown, tree and list go back to the current one.
void Parametri::goToUnit(int unit)
{
    if (unit > 0 && unit != m_model.current() && finishTyping()) {
        m_status->clearMessage();
        m_model.DatiVani(unit);
    }
    m_elenco->showCurrent();
    m_navig->showCurrent();
}

void Parametri::goToRoom(int unit, int position)
{
    goToUnit(unit);
    m_tabs->setCurrentIndex(Vani);
    m_vani->goTo(position, RoomAmbiente);
}

void Parametri::goToNeighbour(int places)
{
    if (const int unit = m_model.neighbour(places); unit > 0)
        goToUnit(unit);
}

/// In the view that shows it, and that the user knows: "Dettaglio" for a unit that is not listed.
void Parametri::goTo(const Place& place)
{
    if (!place.gone)
        goToUnit(place.unit);
    const bool listed = m_elenco->grid().cells().rowOf(m_model.current()) >= 0;
    if (place.position > 0)
        m_tabs->setCurrentIndex(Vani);
    else if (tab() != Dettaglio)
        m_tabs->setCurrentIndex(listed ? Elenco : Dettaglio);
    if (tab() == Dettaglio)
        m_dettaglio->goTo(place.field);
    else if (tab() == Vani)
        m_vani->goTo(place.position, place.field);
    else
        m_elenco->goTo(place.unit, place.field, place.table);
}

void Parametri::offerToDelete(const calc::Posto& orphan)
{
    if (m_context.dialogs.confirmLoss(
            u"L'unità %1 non c'è più, e il suo vano %2 non si vede in alcuna scheda.\n\nEliminarlo?"_s
                .arg(QString::number(orphan.unita), QString::number(orphan.vano))))
        m_model.perform(
            [&](Register& registro) { return registro.EliminaVano(orphan.unita, {orphan.vano}); });
}

void Parametri::goTo(const calc::Posto& posto)
{
    if (!finishTyping())
        return;
    if (posto.unita > 0 && readUnit(m_context.lavoro, posto.unita).empty())
        return offerToDelete(posto);
    if (posto.vano == 0 && posto.unita > 0) {
        m_elenco->showUnit(posto.unita);
        m_tabs->setCurrentIndex(Elenco);
    }
    goTo({.unit = posto.unita,
          .position = posto.vano,
          .field = posto.campo,
          .gone = posto.unita == 0,
          .table = posto.riga});
}

Parametri::Tab Parametri::tab() const
{
    return static_cast<Tab>(m_tabs->currentIndex());
}

/// Goes to what is changed, and says what it was.
void Parametri::replay(const QAction& button, RegisterChange (RegisterModel::*replayed)())
{
    if (!finishTyping())
        return;
    const RegisterChange change = (m_model.*replayed)();
    if (change.isEmpty())
        return;
    goTo(placeOf(change));
    m_status->say(u"%1: %2"_s.arg(button.text(), change.caption));
}

bool Parametri::finishTyping()
{
    for (widgets::CellPicker* picker : findChildren<widgets::CellPicker*>())
        picker->dismiss();
    m_elenco->grid().commitEditor();
    m_vani->grid().commitEditor();
    auto* line = qobject_cast<widgets::TypedLine*>(focusWidget());
    if (line == nullptr || !line->hasFocus())
        return true;
    if (!line->ValidateField())
        return false;
    line->clearFocus();
    line->setFocus();
    return true;
}

void Parametri::closeEvent(QCloseEvent* event)
{
    (void)finishTyping();
    widgets::saveColumnWidths(m_vani->grid(), m_context.settings, Section, RoomWidths);
    widgets::saveColumnWidths(m_elenco->grid(), m_context.settings, Section, UnitWidths);
    QWidget::closeEvent(event);
}

} // namespace zelto::registro

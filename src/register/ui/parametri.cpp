// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/parametri.h"

#include "register/ui/navig.h"
#include "register/ui/room_list.h"
#include "register/ui/unit_detail.h"
#include "register/ui/unit_list.h"
#include "register/unit_figures.h"
#include "store/settings.h"
#include "store/user_interface.h"
#include "widgets/column_widths.h"
#include "widgets/grid.h"
#include "widgets/tab_keys.h"
#include "widgets/typed_line.h"

#include <QAction>
#include <QCloseEvent>
#include <QIcon>
#include <QLabel>
#include <QScopedValueRollback>
#include <QShortcut>
#include <QSplitter>
#include <QStatusBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTimer>
#include <QToolBar>
#include <QVBoxLayout>

namespace zelto::registro {

using widgets::Grid;

namespace {

const QString Section = u"Parametri"_s;
const QString UnitWidths = u"TabUI"_s;
const QString RoomWidths = u"TabFlex"_s;

void addKey(QWidget& where, const QKeySequence& key, const std::function<void()>& command,
            Qt::ShortcutContext context = Qt::WidgetWithChildrenShortcut)
{
    auto* shortcut = new QShortcut(key, &where);
    shortcut->setContext(context);
    QObject::connect(shortcut, &QShortcut::activated, &where, command);
}

} // namespace

Parametri::Parametri(const ParametriContext& context, std::unique_ptr<UnitFigures> figures,
                     QWidget* parent)
    : QWidget(parent), m_context(context), m_calculation(std::move(figures)),
      m_model(context.lavoro), m_toolbar(new QToolBar(this)), m_splitter(new QSplitter(this)),
      m_navig(new Navig(this)), m_tabs(new QTabWidget(this)), m_elenco(new UnitList(m_model)),
      m_dettaglio(new UnitDetail), m_vani(new RoomList(m_model)), m_status(new QStatusBar(this)),
      m_figures(new QLabel(this))
{
    setObjectName(Section);
    setWindowTitle(u"Parametri per millesimi"_s);
    buildToolbar();
    buildPanels();
    buildStatusBar();
    connectModel();
    m_model.reload();
    connectNavigation();
    connectUnits();
    connectRooms();
    addKeys();
    m_elenco->grid().setFocus();
    // The window comes first: loading a big job for the figures takes longer than all the rest.
    auto* idle = new QTimer(this);
    idle->setSingleShot(true);
    connect(idle, &QTimer::timeout, this, [this] {
        m_loaded = true;
        showFigures();
    });
    idle->start();
}

/// A screen that goes without having been closed stores nothing any more, though its editor, hidden
/// with it, has something to say.
Parametri::~Parametri()
{
    for (const Grid* grid : findChildren<Grid*>())
        disconnect(grid, nullptr, this, nullptr);
}

QAction* Parametri::addButton(const QString& key, const QString& iconName, const QString& caption,
                              const QString& hint)
{
    QAction* button = m_toolbar->addAction(QIcon(u":/zelto/icons/%1.svg"_s.arg(iconName)), caption);
    button->setObjectName(key);
    button->setToolTip(hint);
    button->setStatusTip(hint);
    return button;
}

void Parametri::addScreen(const QString& key, const QString& iconName, const QString& caption,
                          const QString& hint, const QString& shortcut,
                          void (Parametri::*request)())
{
    QAction* button = addButton(key, iconName, caption, u"%1 (%2)"_s.arg(hint, shortcut));
    button->setShortcut(QKeySequence(shortcut));
    connect(button, &QAction::triggered, this, [this, request] {
        if (finishTyping())
            emit(this->*request)();
    });
}

void Parametri::buildToolbar()
{
    m_toolbar->setObjectName(u"Toolbar1"_s);
    m_toolbar->setAccessibleName(u"Comandi dei parametri"_s);
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    connect(addButton(u"Calc"_s, u"calcolatrice"_s, u"Calcolatrice"_s, u"Calcolatrice"_s),
            &QAction::triggered, this, &Parametri::calculatorRequested);
    addScreen(u"Mill"_s, u"millesimi"_s, u"Millesimi"_s, u"Calcolo millesimi"_s, u"Ctrl+M"_s,
              &Parametri::millesimiRequested);
    addScreen(u"Rip"_s, u"riparto"_s, u"Riparto"_s, u"Riparto importo"_s, u"Ctrl+R"_s,
              &Parametri::ripartoRequested);
    m_toolbar->addSeparator();
    m_undo = addButton(u"Annulla"_s, u"annulla"_s, u"Annulla"_s, {});
    m_undo->setShortcuts(QKeySequence::Undo);
    connect(m_undo, &QAction::triggered, this, &Parametri::undo);
    m_redo = addButton(u"Ripeti"_s, u"ripeti"_s, u"Ripeti"_s, {});
    m_redo->setShortcuts({Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z});
    connect(m_redo, &QAction::triggered, this, &Parametri::redo);
    for (QAction* action : {m_undo, m_redo})
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addActions({m_undo, m_redo});
    updateUndo();
}

void Parametri::buildPanels()
{
    m_tabs->setObjectName(u"tbsOptions"_s);
    m_tabs->setAccessibleName(u"Parti del registro"_s);
    m_tabs->addTab(m_elenco, u"Elenco"_s);
    m_tabs->addTab(m_dettaglio, u"Dettaglio"_s);
    m_tabs->addTab(m_vani, u"Vani"_s);
    widgets::addTabKeys(*this, *m_tabs->tabBar());
    m_splitter->setObjectName(u"FR"_s);
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(m_navig);
    m_splitter->addWidget(m_tabs);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes({200, 800});
    widgets::restoreColumnWidths(m_elenco->grid(), m_context.settings, Section, UnitWidths);
    widgets::restoreColumnWidths(m_vani->grid(), m_context.settings, Section, RoomWidths);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(2);
    layout->addWidget(m_toolbar);
    layout->addWidget(m_splitter, 1);
}

void Parametri::buildStatusBar()
{
    m_status->setObjectName(u"StatusBar"_s);
    m_status->setSizeGripEnabled(false);
    m_figures->setObjectName(u"Stato"_s);
    m_status->addWidget(m_figures, 1);
    layout()->addWidget(m_status);
}

void Parametri::connectModel()
{
    // Whatever a view reports while it follows the model was not done by the user.
    const auto follow = [this](const std::function<void()>& views) {
        const QScopedValueRollback following(m_following, true);
        views();
    };
    connect(&m_model, &RegisterModel::listsRead, this, [this, follow] {
        follow([this] {
            m_elenco->showLists();
            m_dettaglio->showLists(m_model.lists());
            m_elenco->grid().cells().remarksChanged();
            m_vani->grid().cells().remarksChanged();
        });
    });
    connect(&m_model, &RegisterModel::unitsListed, this,
            [this, follow] { follow([this] { m_elenco->showUnits(); }); });
    connect(&m_model, &RegisterModel::unitChanged, m_navig,
            [this](const UnitRow& unit, const std::vector<RoomRow>& rooms) {
                m_navig->showUnit(unit, rooms, m_names);
            });
    connect(&m_model, &RegisterModel::unitRemoved, m_navig, &Navig::removeUnit);
    connect(&m_model, &RegisterModel::unitsChanged, this, [this](const QList<int>& units) {
        m_calculation->unitsChanged(units);
        showFigures();
    });
    connect(&m_model, &RegisterModel::reloaded, this, [this](const std::vector<TreeScala>& tree) {
        m_navig->build(tree);
        m_calculation->reload();
    });
    connect(&m_model, &RegisterModel::unitShown, this,
            [this, follow] { follow([this] { showUnit(); }); });
}

/// Changing the current row is going to its unit, and so is a click on it when it is current
/// already.
void Parametri::connectNavigation()
{
    Grid& grid = m_elenco->grid();
    const auto goToRow = [this](const QModelIndex& cell) {
        if (!m_following && cell.isValid())
            goToUnit(m_elenco->unitIn(cell.row()));
    };
    connect(grid.selectionModel(), &QItemSelectionModel::currentRowChanged, this, goToRow);
    connect(&grid, &Grid::clicked, this, goToRow);
    connect(m_navig, &Navig::unitSelected, this, &Parametri::goToUnit);
    connect(m_navig, &Navig::roomSelected, this, &Parametri::goToRoom);
    connect(m_elenco, &UnitList::unitFound, this, &Parametri::goToUnit);
    connect(m_elenco, &UnitList::nothingFound, this, [this](const QString& wanted) {
        say(u"Nessuna unità dell'elenco ha «%1» nel riferimento."_s.arg(wanted));
    });
    connect(m_elenco, &UnitList::filterChanged, this,
            [this] { reading([this] { m_model.ElencoUI(m_elenco->filter()); }); });
}

void Parametri::connectUnits()
{
    Grid& grid = m_elenco->grid();
    connect(&grid, &Grid::cellsChanged, this, &Parametri::storeUnitCells);
    connect(m_elenco, &UnitList::scalaChosen, this, [this](int row, const QString& code) {
        storeUnitText(m_elenco->unitIn(row), ColumnScala, code);
    });
    connect(m_elenco, &UnitList::flagToggled, this, [this](int row, int table) {
        if (m_dettaglio->hasTable(table))
            storeFlag(m_elenco->unitIn(row), table,
                      m_elenco->grid().cells().text(row, ColumnFirstTable + table - 1) != u"X");
    });
    connect(m_dettaglio, &UnitDetail::fieldChanged, this, [this](int field, const QString& text) {
        storeUnitText(m_model.unit().number, field, text);
    });
    connect(m_dettaglio, &UnitDetail::scalaChosen, this, [this](const QString& code) {
        storeUnitText(m_model.unit().number, ColumnScala, code);
    });
    connect(m_dettaglio, &UnitDetail::tableToggled, this,
            [this](int table, bool on) { storeFlag(m_model.unit().number, table, on); });
}

void Parametri::connectRooms()
{
    connect(&m_vani->grid(), &Grid::cellsChanged, this, &Parametri::storeRoomCells);
    connect(m_vani, &RoomList::coefficientChosen, this,
            [this](int row, int column, const QString& text) {
                storeRoomCells({{.row = row, .column = column, .before = {}, .after = text}});
            });
    connect(m_vani, &RoomList::listEmpty, this, [this](const QString& coefficient) {
        say(u"L'elenco «%1» è vuoto: si compila nella finestra «Variabili» (Ctrl+2)."_s.arg(
            coefficient));
    });
}

void Parametri::addKeys()
{
    for (QWidget* panel : {static_cast<QWidget*>(m_dettaglio), static_cast<QWidget*>(m_vani)}) {
        addKey(*panel, Qt::ALT | Qt::Key_Up, [this] { goToNeighbour(-1); });
        addKey(*panel, Qt::ALT | Qt::Key_Down, [this] { goToNeighbour(1); });
    }
    addKey(*this, QKeySequence::Find, [this] {
        m_tabs->setCurrentIndex(Elenco);
        m_elenco->beginSearch();
    });
    addKey(*this, Qt::Key_F3, [this] { m_elenco->searchOn(true); });
    addKey(*this, Qt::SHIFT | Qt::Key_F3, [this] { m_elenco->searchOn(false); });
    for (const Tab tab : {Elenco, Vani})
        addGridKeys(tab);
}

void Parametri::addGridKeys(Tab tab)
{
    Grid& grid = gridOf(tab);
    connect(&grid, &Grid::pasteRefused, this,
            [this](const QString& why) { m_context.user.showMessage(why); });
    connect(&grid, &Grid::customContextMenuRequested, this, [this, tab] { showMenu(tab); });
    addKey(grid, Qt::CTRL | Qt::SHIFT | Qt::Key_Up, [this, tab] { move(tab, -1); });
    addKey(grid, Qt::CTRL | Qt::SHIFT | Qt::Key_Down, [this, tab] { move(tab, 1); });
    // The in-grid editor keeps these.
    constexpr auto GridAlone = Qt::WidgetShortcut;
    addKey(
        grid, Qt::SHIFT | Qt::Key_F10, [this, tab] { showMenu(tab); }, GridAlone);
    addKey(
        grid, Qt::Key_Insert, [this, tab] { add(tab); }, GridAlone);
    addKey(
        grid, Qt::CTRL | Qt::Key_D, [this, tab] { duplicate(tab); }, GridAlone);
    addKey(
        grid, Qt::CTRL | Qt::Key_Delete, [this, tab] { remove(tab); }, GridAlone);
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

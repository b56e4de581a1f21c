// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/parametri.h"

#include "register/ui/navig.h"
#include "register/ui/register_columns.h"
#include "register/ui/room_list.h"
#include "register/ui/unit_detail.h"
#include "register/ui/unit_list.h"
#include "register/unit_figures.h"
#include "store/database.h"
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

const QString Section = QStringLiteral("Parametri");
const QString UnitWidths = QStringLiteral("TabUI");
const QString RoomWidths = QStringLiteral("TabFlex");

/// A key of a grid alone, so that fields and editors keep theirs.
template <typename Receiver, typename Slot>
void addKey(Grid& grid, const QKeySequence& key, Receiver* receiver, Slot slot)
{
    auto* shortcut = new QShortcut(key, &grid);
    shortcut->setContext(Qt::WidgetShortcut);
    QObject::connect(shortcut, &QShortcut::activated, receiver, slot);
}

} // namespace

Parametri::Parametri(const ParametriContext& context, std::unique_ptr<UnitFigures> figures,
                     QWidget* parent)
    : QWidget(parent), m_context(context), m_calculation(std::move(figures)),
      m_register(context.lavoro), m_lists(LeggiDatiGenerali(context.lavoro)),
      m_toolbar(new QToolBar(this)), m_splitter(new QSplitter(this)), m_navig(new Navig(this)),
      m_tabs(new QTabWidget(this)), m_elenco(new UnitList), m_dettaglio(new UnitDetail),
      m_vani(new RoomList), m_status(new QStatusBar(this)), m_figures(new QLabel(this))
{
    setObjectName(Section);
    setWindowTitle(QStringLiteral("Parametri per millesimi"));
    buildToolbar();
    buildPanels();
    buildStatusBar();
    m_elenco->setLists(m_lists.scale, m_lists.livelli);
    m_dettaglio->setScale(m_lists.scale);
    m_dettaglio->setTables(m_lists.tabelle);
    m_vani->setEntries(m_lists.coefficienti);
    ElencoUI();
    AggiornaAlbero2();
    connectUnits();
    connectRooms();
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

Parametri::~Parametri() = default;

// Building

QAction* Parametri::addButton(const QString& key, const QString& iconName, const QString& caption,
                              const QString& hint)
{
    QAction* button =
        m_toolbar->addAction(QIcon(QStringLiteral(":/zelto/icons/%1.svg").arg(iconName)), caption);
    button->setObjectName(key);
    button->setToolTip(hint);
    button->setStatusTip(hint);
    return button;
}

void Parametri::addScreen(const QString& key, const QString& iconName, const QString& caption,
                          const QString& hint, const QString& shortcut,
                          void (Parametri::*request)())
{
    QAction* button =
        addButton(key, iconName, caption, QStringLiteral("%1 (%2)").arg(hint, shortcut));
    button->setShortcut(QKeySequence(shortcut));
    connect(button, &QAction::triggered, this, [this, request] {
        if (finishTyping())
            emit(this->*request)();
    });
}

void Parametri::buildToolbar()
{
    m_toolbar->setObjectName(QStringLiteral("Toolbar1"));
    m_toolbar->setAccessibleName(QStringLiteral("Comandi dei parametri"));
    m_toolbar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    connect(addButton(QStringLiteral("Calc"), QStringLiteral("calcolatrice"),
                      QStringLiteral("Calcolatrice"), QStringLiteral("Calcolatrice")),
            &QAction::triggered, this, &Parametri::calculatorRequested);
    addScreen(QStringLiteral("Mill"), QStringLiteral("millesimi"), QStringLiteral("Millesimi"),
              QStringLiteral("Calcolo millesimi"), QStringLiteral("Ctrl+M"),
              &Parametri::millesimiRequested);
    addScreen(QStringLiteral("Rip"), QStringLiteral("riparto"), QStringLiteral("Riparto"),
              QStringLiteral("Riparto importo"), QStringLiteral("Ctrl+R"),
              &Parametri::ripartoRequested);
    m_toolbar->addSeparator();
    m_undo = addButton(QStringLiteral("Annulla"), QStringLiteral("annulla"),
                       QStringLiteral("Annulla"), {});
    m_undo->setShortcuts(QKeySequence::Undo);
    connect(m_undo, &QAction::triggered, this, &Parametri::undo);
    m_redo =
        addButton(QStringLiteral("Ripeti"), QStringLiteral("ripeti"), QStringLiteral("Ripeti"), {});
    m_redo->setShortcuts({Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z});
    connect(m_redo, &QAction::triggered, this, &Parametri::redo);
    for (QAction* action : {m_undo, m_redo})
        action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addActions({m_undo, m_redo});
    updateUndo();
}

void Parametri::buildPanels()
{
    m_tabs->setObjectName(QStringLiteral("tbsOptions"));
    m_tabs->setAccessibleName(QStringLiteral("Parti del registro"));
    m_tabs->addTab(m_elenco, QStringLiteral("Elenco"));
    m_tabs->addTab(m_dettaglio, QStringLiteral("Dettaglio"));
    m_tabs->addTab(m_vani, QStringLiteral("Vani"));
    widgets::addTabKeys(*this, *m_tabs->tabBar());
    m_splitter->setObjectName(QStringLiteral("FR"));
    m_splitter->setChildrenCollapsible(false);
    m_splitter->addWidget(m_navig);
    m_splitter->addWidget(m_tabs);
    m_splitter->setStretchFactor(1, 1);
    m_splitter->setSizes({220, 700});
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
    m_status->setObjectName(QStringLiteral("StatusBar"));
    m_status->setSizeGripEnabled(false);
    m_figures->setObjectName(QStringLiteral("Stato"));
    m_status->addWidget(m_figures, 1);
    layout()->addWidget(m_status);
}

void Parametri::connectUnits()
{
    Grid& grid = m_elenco->grid();
    connect(&grid, &Grid::cellsChanged, this, &Parametri::storeUnitCells);
    connect(&grid, &Grid::pasteRefused, this,
            [this](const QString& why) { m_context.user.showMessage(why); });
    connect(&grid, &Grid::customContextMenuRequested, this, &Parametri::unitMenu);
    connect(grid.selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            [this](const QModelIndex& current) {
                reading([&] { showUnit(m_elenco->unitIn(current.row())); });
            });
    connect(m_navig, &Navig::unitSelected, this,
            [this](int unit) { reading([&] { DatiVani(unit); }); });
    connect(m_elenco, &UnitList::filterChanged, this, [this] {
        reading([this] { ElencoUI(); });
        m_elenco->grid().setCurrentCell(std::max(0, m_elenco->rowOf(m_unit)), 0);
    });
    connect(m_elenco, &UnitList::scalaChosen, this, [this](int row, const QString& code) {
        storeUnitText(m_elenco->unitIn(row), ColumnScala, code);
    });
    connect(m_elenco, &UnitList::flagToggled, this, [this](int row, int table) {
        if (m_dettaglio->hasTable(table))
            storeFlag(m_elenco->unitIn(row), table,
                      m_elenco->grid().cells().text(row, ColumnFirstTable + table - 1) != u"X");
    });
    connect(m_dettaglio, &UnitDetail::fieldChanged, this,
            [this](int field, const QString& text) { storeUnitText(m_unit, field, text); });
    connect(m_dettaglio, &UnitDetail::scalaChosen, this,
            [this](const QString& code) { storeUnitText(m_unit, ColumnScala, code); });
    connect(m_dettaglio, &UnitDetail::tableToggled, this,
            [this](int table, bool on) { storeFlag(m_unit, table, on); });
    addKey(grid, Qt::SHIFT | Qt::Key_F10, this, &Parametri::unitMenu);
    addKey(grid, Qt::Key_Insert, this, &Parametri::addUnit);
    addKey(grid, Qt::CTRL | Qt::Key_D, this, &Parametri::duplicateUnits);
    addKey(grid, Qt::CTRL | Qt::Key_Delete, this, &Parametri::deleteUnits);
}

void Parametri::connectRooms()
{
    Grid& grid = m_vani->grid();
    connect(&grid, &Grid::cellsChanged, this, &Parametri::storeRoomCells);
    connect(&grid, &Grid::pasteRefused, this,
            [this](const QString& why) { m_context.user.showMessage(why); });
    connect(&grid, &Grid::customContextMenuRequested, this, &Parametri::roomMenu);
    connect(m_vani, &RoomList::coefficientChosen, this,
            [this](int row, int column, const QString& text) {
                perform([=, this] {
                    return m_register.MemorizzaVano(
                        m_unit, {{m_vani->positionIn(row), column + RoomAmbiente, text}});
                });
            });
    connect(m_vani, &RoomList::listEmpty, this, [this](const QString& coefficient) {
        constexpr int Shown = 8000; // milliseconds
        m_status->showMessage(
            QStringLiteral("L'elenco «%1» è vuoto: si compila nella finestra «Variabili».")
                .arg(coefficient),
            Shown);
    });
    addKey(grid, Qt::SHIFT | Qt::Key_F10, this, &Parametri::roomMenu);
    addKey(grid, Qt::Key_Insert, this, &Parametri::addRoom);
    addKey(grid, Qt::CTRL | Qt::Key_D, this, &Parametri::duplicateRooms);
    addKey(grid, Qt::CTRL | Qt::Key_Delete, this, &Parametri::deleteRooms);
}

bool Parametri::finishTyping()
{
    m_elenco->grid().commitEditor();
    m_vani->grid().commitEditor();
    auto* line = qobject_cast<widgets::TypedLine*>(focusWidget());
    if (line == nullptr)
        return true;
    if (!line->ValidateField())
        return false;
    line->clearFocus();
    line->setFocus();
    return true;
}

void Parametri::closeEvent(QCloseEvent* event)
{
    m_elenco->grid().commitEditor();
    m_vani->grid().commitEditor();
    widgets::saveColumnWidths(m_vani->grid(), m_context.settings, Section, RoomWidths);
    widgets::saveColumnWidths(m_elenco->grid(), m_context.settings, Section, UnitWidths);
    QWidget::closeEvent(event);
}

// Showing what is stored

void Parametri::reading(const std::function<void()>& read)
{
    try {
        read();
    } catch (const store::DatabaseError& error) {
        m_context.user.ReportError(error);
    }
}

void Parametri::ElencoUI()
{
    std::vector<widgets::GridRow> rows;
    for (const UnitRow& unit : readUnits(m_context.lavoro, {.scala = m_elenco->filterScala(),
                                                           .livello = m_elenco->filterLivello()}))
        rows.push_back(UnitList::rowFor(unit));
    if (rows.empty())
        rows.emplace_back();
    m_elenco->grid().cells().setRows(rows);
    for (int row = 0; row < static_cast<int>(rows.size()); ++row)
        markUnit(row);
}

void Parametri::AggiornaAlbero2()
{
    m_navig->build(readTree(m_context.lavoro, m_lists.scale));
    m_elenco->grid().setCurrentCell(0, 0);
    showUnit(m_elenco->unitIn(0));
}

void Parametri::showUnit(int unit)
{
    if (unit == m_unit || m_busy)
        return;
    m_navig->select(unit);
    DatiVani(unit);
}

void Parametri::DatiVani(int unit)
{
    m_unit = unit;
    m_dettaglio->setUnit(unit);
    if (const int row = m_elenco->rowOf(unit); row >= 0 && row != m_elenco->grid().currentRow())
        m_elenco->grid().setCurrentCell(row, std::max(0, m_elenco->grid().currentColumn()));
    if (const UnitRow stored = readUnit(m_context.lavoro, unit); stored.number == unit) {
        m_dettaglio->showFields(stored.texts);
        m_dettaglio->showFlags(stored.flags);
    }
    showRooms();
    showFigures();
}

void Parametri::showRooms()
{
    std::vector<widgets::GridRow> rows;
    for (const RoomRow& room : readRooms(m_context.lavoro, m_unit))
        rows.push_back({.number = QString::number(room.position),
                        .cells = QStringList(room.texts.begin(), room.texts.end())});
    if (rows.empty())
        rows.emplace_back();
    m_vani->grid().cells().setRows(rows);
    m_vani->grid().setCurrentCell(0, 0);
    markRooms();
}

/// The figures are a service: the screen works without them.
void Parametri::showFigures()
{
    if (!m_loaded)
        return;
    try {
        m_figures->setText(m_calculation->describe(m_unit));
    } catch (const store::DatabaseError& error) {
        m_figures->setText(error.description());
    }
}

void Parametri::refreshFigures()
{
    m_calculation->reload();
    reading([this] { markRooms(); });
    showFigures();
}

void Parametri::markUnit(int row)
{
    widgets::GridModel& cells = m_elenco->grid().cells();
    cells.setMark(row, ColumnHPiano, m_calculation->heightRemark(cells.text(row, ColumnHPiano)));
}

void Parametri::markRooms()
{
    widgets::GridModel& cells = m_vani->grid().cells();
    for (int row = 0; row < cells.rowCount(); ++row)
        for (int column = ColumnConsistenza; column < cells.columnCount(); ++column)
            cells.setMark(
                row, column,
                m_calculation->roomRemark(column - ColumnConsistenza, cells.text(row, column)));
}

} // namespace zelto::registro

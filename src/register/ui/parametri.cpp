// SPDX-License-Identifier: GPL-3.0-or-later
#include "register/ui/parametri.h"

#include "register/ui/room_list.h"
#include "register/ui/unit_detail.h"
#include "register/ui/unit_list.h"
#include "store/settings.h"
#include "store/user_interface.h"
#include "widgets/column_widths.h"
#include "widgets/keys.h"
#include "widgets/typed_line.h"

#include <QAction>
#include <QCloseEvent>
#include <QIcon>
#include <QLabel>
#include <QScopedValueRollback>
#include <QSplitter>
#include <QStatusBar>
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
    : QWidget(parent), m_context(context), m_model(context.lavoro), m_calculation(context.lavoro),
      m_toolbar(new QToolBar(this)), m_navig(new Navig(this)), m_tabs(new QTabWidget(this)),
      m_status(new QStatusBar(this)), m_figures(new QLabel(this))
{
    setObjectName(Section);
    setWindowTitle(u"Parametri per millesimi"_s);
    const RegisterGridContext lists{
        .model = m_model,
        .menu = context.menu,
        .perform = [this](const Operation& operation) { return perform(operation); },
        .say = [this](const QString& remark) { say(remark); }};
    m_elenco = new UnitList(lists);
    m_dettaglio = new UnitDetail;
    m_vani = new RoomList(lists);
    buildToolbar();
    buildPanels();
    followModel();
    m_model.reload();
    followUser();
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
        disconnect(grid, &Grid::cellsChanged, nullptr, nullptr);
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

QAction* Parametri::addHistory(const QString& key, const QString& iconName, const QString& caption,
                               const QList<QKeySequence>& keys,
                               RegisterChange (Register::*replayed)())
{
    QAction* button = addButton(key, iconName, caption, {});
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
    connect(addButton(u"Calc"_s, u"calcolatrice"_s, u"Calcolatrice"_s, u"Calcolatrice"_s),
            &QAction::triggered, this, &Parametri::calculatorRequested);
    addScreen(u"Mill"_s, u"millesimi"_s, u"Millesimi"_s, u"Calcolo millesimi"_s, u"Ctrl+M"_s,
              &Parametri::millesimiRequested);
    addScreen(u"Rip"_s, u"riparto"_s, u"Riparto"_s, u"Riparto importo"_s, u"Ctrl+R"_s,
              &Parametri::ripartoRequested);
    m_toolbar->addSeparator();
    m_undo = addHistory(u"Annulla"_s, u"annulla"_s, u"Annulla"_s,
                        QKeySequence::keyBindings(QKeySequence::Undo), &Register::undo);
    m_redo = addHistory(u"Ripeti"_s, u"ripeti"_s, u"Ripeti"_s,
                        {Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z}, &Register::redo);
    updateHistory();
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
    m_status->setObjectName(u"StatusBar"_s);
    m_status->setSizeGripEnabled(false);
    m_figures->setObjectName(u"Stato"_s);
    m_status->addWidget(m_figures, 1);
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
}

/// Whatever a view reports while it follows the model was not done by the user.
void Parametri::followModel()
{
    const auto follow = [this](const std::function<void()>& views) {
        return [this, views] {
            const QScopedValueRollback following(m_following, true);
            views();
        };
    };
    connect(&m_model, &RegisterModel::listsRead, this, follow([this] {
        m_elenco->showLists();
        m_dettaglio->showLists(m_model.lists());
        m_elenco->grid().cells().remarksChanged();
        m_vani->grid().cells().remarksChanged();
    }));
    connect(&m_model, &RegisterModel::unitsListed, this, follow([this] { m_elenco->showRows(); }));
    connect(&m_model, &RegisterModel::unitShown, this, follow([this] { showUnit(); }));
    connect(&m_model, &RegisterModel::unitChanged, m_navig,
            [this](const UnitRow& unit, const std::vector<RoomRow>& rooms) {
                m_navig->showUnit(unit, rooms, m_names);
            });
    connect(&m_model, &RegisterModel::unitRemoved, m_navig, &Navig::removeUnit);
    connect(&m_model, &RegisterModel::unitsChanged, this, [this](const QList<int>& units) {
        m_calculation.unitsChanged(units);
        showFigures();
    });
    connect(&m_model, &RegisterModel::reloaded, this, [this](const std::vector<TreeScala>& tree) {
        m_navig->build(tree);
        m_calculation.reload();
    });
}

/// Changing the current row is going to its unit, and so is a click on it when it is current
/// already.
void Parametri::followUser()
{
    Grid& units = m_elenco->grid();
    const auto goToRow = [this](const QModelIndex& cell) {
        if (!m_following && cell.isValid())
            goToUnit(m_elenco->numberIn(cell.row()));
    };
    connect(units.selectionModel(), &QItemSelectionModel::currentRowChanged, this, goToRow);
    connect(&units, &Grid::clicked, this, goToRow);
    connect(m_navig, &Navig::unitSelected, this, &Parametri::goToUnit);
    connect(m_navig, &Navig::roomSelected, this, &Parametri::goToRoom);
    connect(m_elenco, &UnitList::unitFound, this, &Parametri::goToUnit);
    connect(m_elenco, &UnitList::added, this, &Parametri::goToUnit);
    connect(m_elenco, &UnitList::filterChanged, this,
            [this] { reading([this] { m_model.ElencoUI(m_elenco->filter()); }); });
    for (const Grid* grid : {&units, &m_vani->grid()})
        connect(grid, &Grid::pasteRefused, this,
                [this](const QString& why) { m_context.user.showMessage(why); });
    connect(m_dettaglio, &UnitDetail::fieldChanged, this, [this](int field, const QString& text) {
        perform([&](Register& registro) {
            return registro.MemorizzaUI({{m_model.unit().number, field + UnitRiferimento, text}});
        });
    });
    connect(m_dettaglio, &UnitDetail::tableToggled, this, [this](int table, bool on) {
        perform([&](Register& registro) {
            return registro.MemorizzaFlag(m_model.unit().number, table, on);
        });
    });
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

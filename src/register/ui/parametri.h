// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "register/register_model.h"
#include "register/ui/navig.h"

#include <QWidget>

#include <functional>
#include <memory>

class QAction;
class QLabel;
class QSplitter;
class QStatusBar;
class QTabWidget;
class QToolBar;

namespace zelto::store {
class Settings;
class UserInterface;
} // namespace zelto::store

namespace zelto::widgets {
class ContextMenu;
class Grid;
struct CellChange;
} // namespace zelto::widgets

namespace zelto::registro {

class RoomList;
class UnitDetail;
class UnitFigures;
class UnitList;
enum class RangeCommand;

/// What the parameters screen works with; all of it outlives the screen.
struct ParametriContext
{
    store::Database& lavoro;
    store::Settings& settings;
    store::UserInterface& user;
    widgets::ContextMenu& menu;
};

/// The parameters screen "Parametri per millesimi": tree, unit grid, unit fields and room grid over
/// the open job. Every change is stored at once and can be undone while the screen is open. What is
/// shown follows the model; what the user does goes to the model.
class Parametri : public QWidget
{
    Q_OBJECT

public:
    /// Throws DatabaseError when the job cannot be read.
    Parametri(const ParametriContext& context, std::unique_ptr<UnitFigures> figures,
              QWidget* parent = nullptr);
    ~Parametri() override;

    /// Stores what is still being typed; false, with the focus on the field, when a text must not
    /// stay as it is.
    bool finishTyping();

    /// The job's coefficients or general data may have changed: lists, tree, marks and figures
    /// follow, while unit, tab, filters and what can be undone stay.
    void refreshLists();

signals:
    void calculatorRequested();
    // Everything typed has been stored.
    void millesimiRequested();
    void ripartoRequested();

protected:
    bool event(QEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    enum Tab { Elenco, Dettaglio, Vani };

    // Building
    void buildToolbar();
    void addScreen(const QString& key, const QString& iconName, const QString& caption,
                   const QString& hint, const QString& shortcut, void (Parametri::*request)());
    QAction* addButton(const QString& key, const QString& iconName, const QString& caption,
                       const QString& hint);
    void buildPanels();
    void buildStatusBar();
    void addKeys();
    void addGridKeys(Tab tab);
    void connectModel();
    void connectNavigation();
    void connectUnits();
    void connectRooms();

    // Showing what the model says
    void showUnit();
    void showPlace();
    void showFigures();
    void updateUndo();
    void say(const QString& text);

    // Where the user goes
    /// What cannot be read is reported, and the views stay as they are.
    void reading(const std::function<void()>& read);
    void goToUnit(int unit);
    void goToRoom(int unit, int position);
    void goToNeighbour(int places);
    void goTo(const Place& place);
    [[nodiscard]] widgets::Grid& gridOf(Tab tab) const;
    [[nodiscard]] Tab tab() const;
    void focusTab();

    // Storing what the user does
    using Operation = std::function<RegisterChange(Register&)>;
    /// Stores and shows; what the job refuses is reported, and the screen shows what is stored. The
    /// change is empty when nothing was stored.
    RegisterChange perform(const Operation& operation);
    bool isIntoNothing(const QList<widgets::CellChange>& changes, Tab tab);
    void storeUnitCells(const QList<widgets::CellChange>& changes);
    void storeRoomCells(const QList<widgets::CellChange>& changes);
    void storeUnitText(int unit, int field, const QString& text);
    void storeFlag(int unit, int table, bool on);
    void undo();
    void redo();
    void replay(const QString& verb, const QString& caption, const Operation& operation);

    // The commands of the two grids; on the other tabs than theirs they do nothing
    void showMenu(Tab tab);
    void carryOut(RangeCommand command, Tab tab);
    void add(Tab tab);
    void remove(Tab tab);
    void duplicate(Tab tab);
    void move(Tab tab, int places);
    void showAdded(const RegisterChange& change, Tab tab);
    /// The numbers of the selected units, or the positions of the selected rooms.
    [[nodiscard]] QList<int> selected(Tab tab) const;

    ParametriContext m_context;
    std::unique_ptr<UnitFigures> m_calculation;
    RegisterModel m_model;
    bool m_loaded = false;    ///< the figures may be shown
    bool m_following = false; ///< views follow the model: what they report is no wish of the user
    Navig::EmptyNames m_names = Navig::EmptyNames::Dash;
    QToolBar* m_toolbar;
    QAction* m_undo = nullptr;
    QAction* m_redo = nullptr;
    QSplitter* m_splitter;
    Navig* m_navig;
    QTabWidget* m_tabs;
    UnitList* m_elenco;
    UnitDetail* m_dettaglio;
    RoomList* m_vani;
    QStatusBar* m_status;
    QLabel* m_figures;
};

} // namespace zelto::registro
